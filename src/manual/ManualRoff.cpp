#include "manual/ManualPage.h"

namespace {

// Escapes text for roff: backslashes print as themselves, hyphens as the
// minus signs that options are typed with, and a line starting with a dot or
// quote is not taken as a request.
std::string Escape(const std::string& text) {
    std::string out;
    bool lineStart = true;
    for (const char c : text) {
        if (lineStart && (c == '.' || c == '\'')) {
            out += "\\&";
        }
        if (c == '\\') {
            out += "\\e";
        } else if (c == '-') {
            out += "\\-";
        } else {
            out += c;
        }
        lineStart = c == '\n';
    }
    return out;
}

std::string Upper(std::string text) {
    for (char& c : text) {
        if (c >= 'a' && c <= 'z') {
            c = static_cast<char>(c - 'a' + 'A');
        }
    }
    return text;
}

// A command line or term may break after its commas and bars, so that long
// value lists fit the page.
std::string Breakable(const std::string& text) {
    std::string out;
    for (const char c : Escape(text)) {
        out += c;
        if (c == ',' || c == '|') {
            out += "\\:";
        }
    }
    return out;
}

void AppendSection(std::string& out, const ManualSection& section) {
    out += ".SH " + Escape(section.title) + "\n";
    bool first = true;
    for (const std::string& paragraph : section.paragraphs) {
        out += first ? "" : ".PP\n";
        out += Escape(paragraph) + "\n";
        first = false;
    }
    for (const ManualEntry& entry : section.entries) {
        out += ".TP\n\\fB" + Breakable(entry.term) + "\\fR\n" + Escape(entry.text) + "\n";
    }
}

} // namespace

std::string RenderRoff(const ManualPage& page) {
    std::string out = ".TH " + Upper(Escape(page.name)) + " 1 \"" + page.date + "\" \"" + Escape(page.name) +
                      " " + page.version + "\" \"User Commands\"\n";
    out += ".SH NAME\n" + Escape(page.name) + " \\- " + Escape(page.summary) + "\n";
    // Each usage line is a paragraph with a hanging indent, so a long one
    // wraps instead of running off the page.
    out += ".SH SYNOPSIS\n";
    for (const std::string& line : page.synopsis) {
        out += ".HP 4\n" + Breakable(line) + "\n";
    }
    for (const ManualSection& section : page.sections) {
        AppendSection(out, section);
    }
    return out;
}
