#include "cli/CliManual.h"

#include "cli/CliCommand.h"
#include "ops/OpsCommandTable.h"
#include "script/EngineOperations.h"

#include <algorithm>
#include <sstream>

namespace {

struct OptionText {
    const char* name;
    const char* value;
    const char* text;
};

// What each option of the commands means; the synopses in the command table
// say which command takes it.
const OptionText kOptions[] = {
    {"--max-size", "W,H",
     "load as if the load limits were W x H pixels (each 1..30000) instead of the limits found at start; a "
     "larger picture loads reduced, as in Tamrick"},
    {"--quality", "N", "JPEG quality 1..100 for a JPEG output (default: the JPGQuality setting, else 80)"},
    {"--foreground", "RRGGBB", "foreground colour as six hexadecimal digits (default 0000FF)"},
    {"--background", "RRGGBB", "background colour as six hexadecimal digits (default FFFFFF)"},
    {"--seed", "N", "start value 0.. of the random numbers (Diffuse), for repeatable results"},
    {"--pen", "SIZE,SHAPE",
     "pen size 1..32 and shape 1 Rect, 2 Oval, 3 HLine, 4 VLine, 5 Slash, 6 BSlash (default 8,2)"},
    {"--tolerance", "N", "colour tolerance 0..255 of fill, wand and brush (default 32)"},
    {"--erase-similar", "N",
     "eraser strokes erase only colours within N (0..255) of the foreground colour in each channel, as the "
     "eraser's \"Erase foreground color only\" does (default: every colour)"},
    {"--continuous", "0|1", "1: the wand selects connected pixels only, 0: every similar pixel (default 1)"},
    {"--gradient", "SHAPE,MODE",
     "gradient shape linear, radial, rectangle or cone and colour mode rgb, hue-cw or hue-ccw (default "
     "linear,rgb)"},
};

const OptionText* FindOption(const std::string& name) {
    for (const OptionText& option : kOptions) {
        if (name == option.name) {
            return &option;
        }
    }
    return nullptr;
}

std::string Join(const std::vector<std::string>& parts, const char* separator) {
    std::string out;
    for (const std::string& part : parts) {
        out += (out.empty() ? "" : separator) + part;
    }
    return out;
}

// "2, 3 or 6"
std::string Alternatives(const std::vector<int>& counts) {
    std::string out;
    for (std::size_t i = 0; i < counts.size(); ++i) {
        out += (i == 0 ? "" : i + 1 == counts.size() ? " or " : ", ") + std::to_string(counts[i]);
    }
    return out;
}

std::string MenuPath(const OpsCommand& command) {
    std::string where = command.menu;
    for (std::size_t at = where.find('/'); at != std::string::npos; at = where.find('/', at)) {
        where.replace(at, 1, " > ");
    }
    std::string label = command.label;
    std::erase(label, '&');
    return where + " > " + label;
}

// "rotate[=degrees[,direction]]" and its value ranges. Values that may be
// left out one by one are in brackets; other choices ("2 or 6 values") are
// said in the text.
ManualEntry ImageOperationEntry(const OpsCommand& command) {
    std::vector<int> counts;
    for (int n = 0; n < 32; ++n) {
        if (command.acceptedCounts & (1u << n)) {
            counts.push_back(n);
        }
    }
    const int fewest = counts.front();
    const int most = counts.back();
    const bool stepwise = most - fewest + 1 == static_cast<int>(counts.size());
    std::string term = command.cliName;
    std::vector<std::string> ranges;
    for (int i = 0; i < most; ++i) {
        const OpsParameter& p = command.parameters[static_cast<std::size_t>(i)];
        std::string name = p.name;
        std::replace(name.begin(), name.end(), ' ', '-');
        const bool optional = stepwise && i >= fewest;
        term += std::string(optional ? "[" : "") + (i == 0 ? "=" : ",") + name;
        std::string values = std::to_string(p.minimum) + ".." + std::to_string(p.maximum);
        std::string fallback = std::to_string(p.defaultValue);
        if (p.words != nullptr) {
            values = p.words;
            std::istringstream words(values);
            for (int v = p.minimum; std::getline(words, fallback, ',') && v < p.defaultValue; ++v) {
            }
            std::replace(values.begin(), values.end(), ',', '|');
        }
        ranges.push_back(name + " " + values + " (default " + fallback + ")");
    }
    term += std::string(stepwise ? static_cast<std::size_t>(most - fewest) : 0, ']');
    std::string text = MenuPath(command);
    if (!ranges.empty()) {
        text += "; " + Join(ranges, ", ") + "; takes " + Alternatives(counts) + " values";
    }
    return {term, text};
}

ManualSection Commands() {
    ManualSection section{"COMMANDS", {}, {}};
    for (const CliCommand& command : CliCommands()) {
        section.entries.push_back({std::string(command.name) + " " + command.synopsis, command.summary});
    }
    return section;
}

ManualSection Options() {
    ManualSection section{"OPTIONS", {}, {}};
    section.entries.push_back({"-h, --help", "show this help and exit"});
    section.entries.push_back({"--version", "show the version and exit"});
    for (const OptionText& option : kOptions) {
        std::vector<std::string> takers;
        for (const CliCommand& command : CliCommands()) {
            const auto names = OptionsOfCommand(command.synopsis);
            if (std::find(names.begin(), names.end(), option.name) != names.end()) {
                takers.push_back(command.name);
            }
        }
        section.entries.push_back({std::string(option.name) + " " + option.value,
                                   std::string(option.text) + " [" + Join(takers, ", ") + "]"});
    }
    return section;
}

ManualSection ImageOperations() {
    ManualSection section{
        "IMAGE OPERATIONS",
        {"The Image and Filter menu commands, for apply. Values are whole numbers separated "
         "by commas; values left out take the defaults the dialogs start with."},
        {}};
    for (const OpsCommand& command : OpsCommands()) {
        section.entries.push_back(ImageOperationEntry(command));
    }
    section.entries.push_back({"undo", "Edit > Undo: takes back the last operation"});
    section.entries.push_back({"redo", "Edit > Redo: does it again"});
    return section;
}

ManualSection PaintingOperations() {
    ManualSection section{"PAINTING, SELECTION AND EDIT OPERATIONS",
                          {"The tools and Edit menu commands, for apply. X and Y are picture pixels from the "
                           "top left; quote point lists, whose ';' the shell would take."},
                          {}};
    for (const EngineOperationDoc& doc : EngineOperationDocs()) {
        const std::string values = *doc.values == '\0' ? "" : std::string("=") + doc.values;
        section.entries.push_back({doc.name + values, doc.summary});
    }
    return section;
}

ManualSection ExitStatus() {
    return {"EXIT STATUS",
            {},
            {{std::to_string(kExitSuccess), "the command did what was asked"},
             {std::to_string(kExitFailure),
              "loading, an operation or saving failed; the output file is unchanged"},
             {std::to_string(kExitUsage), "the command line is wrong; nothing was read or written"}}};
}

ManualSection Examples() {
    return {
        "EXAMPLES",
        {},
        {{"tamrick-cli info photo.jpg", "prints the picture's type, size, resolution and whether it would "
                                        "load reduced"},
         {"tamrick-cli convert scan.bmp scan.jpg --quality 90", "saves a BMP as a JPEG of quality 90"},
         {"tamrick-cli apply in.bmp out.jpg gray emboss=3,4 rotate=30,ccw undo",
          "runs Gray, Emboss and Rotate, takes the rotation back and saves the result"},
         {"tamrick-cli apply in.bmp out.png --foreground FF0000 --pen 4,2 \"pen=5,5;60,40\" "
          "select-rect=0,0,99,49 crop",
          "draws a red stroke, then crops the picture to its top 50 rows"}}};
}

} // namespace

std::vector<std::string> OptionsOfCommand(const char* synopsis) {
    std::istringstream words(synopsis);
    std::vector<std::string> names;
    std::string word;
    while (words >> word) {
        word.erase(0, word.find_first_not_of('['));
        if (word.starts_with("--")) {
            names.push_back(word.substr(0, word.find(']')));
        }
    }
    return names;
}

std::vector<std::string> UndocumentedOptions() {
    std::vector<std::string> named;
    std::vector<std::string> wrong;
    for (const CliCommand& command : CliCommands()) {
        for (const std::string& name : OptionsOfCommand(command.synopsis)) {
            named.push_back(name);
            if (FindOption(name) == nullptr) {
                wrong.push_back(name);
            }
        }
    }
    for (const OptionText& option : kOptions) {
        if (std::find(named.begin(), named.end(), option.name) == named.end()) {
            wrong.push_back(option.name);
        }
    }
    return wrong;
}

ManualPage BuildCliManual() {
    ManualPage page;
    page.name = "tamrick-cli";
    page.summary = "Tamrick's picture engine without a window, for batch work";
    page.synopsis.push_back("tamrick-cli [--help] [--version] COMMAND [ARGS...]");
    for (const CliCommand& command : CliCommands()) {
        page.synopsis.push_back(std::string("tamrick-cli ") + command.name + " " + command.synopsis);
    }
    page.sections.push_back(
        {"DESCRIPTION",
         {"tamrick-cli reads pictures as Tamrick opens them (BMP, GIF, JPEG, PNG and what Qt's image readers "
          "know), runs Tamrick's image, painting, selection and edit operations on them exactly as the menus "
          "and "
          "tools do, and saves them as Tamrick saves: the output's extension picks BMP, GIF, PNG or JPEG, "
          "and a "
          "file is replaced only once it has been written in full."},
         {},
         false});
    page.sections.push_back(Commands());
    page.sections.push_back(Options());
    page.sections.push_back(ImageOperations());
    page.sections.push_back(PaintingOperations());
    page.sections.push_back(ExitStatus());
    page.sections.push_back(Examples());
    page.sections.push_back({"SEE ALSO", {"tamrick(1)"}, {}, false});
    return page;
}
