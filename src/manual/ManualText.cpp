#include "manual/ManualPage.h"

#include <cctype>
#include <sstream>

namespace {

// Fills words into lines of at most `width` columns: the first led by
// `first`, the others by `indent`; a word longer than a line stands alone.
std::string Wrap(const std::string& text, const std::string& first, std::size_t indent, std::size_t width) {
    std::istringstream words(text);
    std::string word;
    std::string out;
    std::string lead = first;
    std::string line;
    while (words >> word) {
        if (!line.empty() && lead.size() + line.size() + 1 + word.size() > width) {
            out += lead + line + "\n";
            lead = std::string(indent, ' ');
            line.clear();
        }
        line += (line.empty() ? "" : " ") + word;
    }
    if (!line.empty()) {
        out += lead + line + "\n";
    }
    return out;
}

std::string Wrap(const std::string& text, std::size_t indent, std::size_t width) {
    return Wrap(text, std::string(indent, ' '), indent, width);
}

// "IMAGE OPERATIONS" -> "Image operations:"
std::string Heading(const std::string& title) {
    std::string out = title;
    for (std::size_t i = 1; i < out.size(); ++i) {
        if (out[i] >= 'A' && out[i] <= 'Z') {
            out[i] = static_cast<char>(out[i] - 'A' + 'a');
        }
    }
    return out + ":";
}

} // namespace

std::string RenderHelpText(const ManualPage& page, std::size_t width) {
    std::string out;
    for (std::size_t i = 0; i < page.synopsis.size(); ++i) {
        out += Wrap(page.synopsis[i], i == 0 ? "Usage: " : "       ", 11, width);
    }
    if (!page.summary.empty()) {
        std::string sentence = page.summary + ".";
        sentence[0] = static_cast<char>(std::toupper(static_cast<unsigned char>(sentence[0])));
        out += "\n" + Wrap(sentence, 0, width);
    }
    for (const ManualSection& section : page.sections) {
        if (!section.inHelp) {
            continue;
        }
        out += "\n" + Heading(section.title) + "\n";
        for (const std::string& paragraph : section.paragraphs) {
            out += Wrap(paragraph, 2, width);
        }
        for (const ManualEntry& entry : section.entries) {
            out += Wrap(entry.term, "  ", 4, width) + Wrap(entry.text, 6, width);
        }
    }
    return out;
}
