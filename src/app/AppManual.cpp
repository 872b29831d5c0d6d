#include "app/AppManual.h"

#include "app/CommandTable.h"
#include "app/ToolPalette.h"
#include "platform/AppIdentity.h"

#include <QGuiApplication>
#include <QKeySequence>
#include <QStringList>
#include <cstdio>
#include <cstring>

namespace {

std::string WithoutMnemonic(std::string label) {
    std::erase(label, '&');
    return label;
}

ManualSection Keyboard() {
    ManualSection section{"KEYBOARD",
                          {"Every menu and menu entry has an underlined letter: Alt and the menu's letter "
                           "open it, then the entry's letter runs it. Dialogs are completed with Tab, Enter "
                           "(OK) and Esc (Cancel)."},
                          {}};
    for (const CommandEntry& entry : CommandTable()) {
        QStringList keys;
        for (const QKeySequence& key : entry.accelerator.Sequences()) {
            keys << key.toString(QKeySequence::PortableText);
        }
        if (keys.isEmpty()) {
            continue;
        }
        const std::string where = entry.menu != nullptr ? std::string(entry.menu) + " > " : std::string();
        section.entries.push_back({keys.join(QStringLiteral(", ")).toStdString(), where + WithoutMnemonic(entry.label)});
    }
    section.entries.push_back(
        {ToolPalette::ButtonShortcut(0) + " .. " + ToolPalette::ButtonShortcut(tools::kPaletteButtons - 1),
         "the tool palette's buttons from the first; the key of the highlighted group button again lists the "
         "group's tools"});
    section.entries.push_back({ToolPalette::ColorShortcut(0) + ", " + ToolPalette::ColorShortcut(1),
                               "change the foreground or the background colour"});
    section.entries.push_back({"Ctrl+wheel", "zooms around the pointer"});
    section.entries.push_back({"Arrow keys, wheel", "scroll the picture"});
    section.entries.push_back({"Esc", "leaves Full Screen"});
    return section;
}

} // namespace

ManualPage BuildAppManual() {
    ManualPage page;
    page.name = "tamrick";
    page.summary = "paint and retouch raster pictures";
    page.synopsis = {"tamrick [FILE]", "tamrick --screenshot OUT.png [FILE]", "tamrick --help | --version"};
    page.sections.push_back(
        {"DESCRIPTION",
         {"Tamrick opens a picture (BMP, GIF, JPEG, PNG and the other formats Qt's image readers know) or "
          "starts a new one, paints on it with brush, shape and touch-up tools, selects parts of it, applies "
          "colour adjustments and filters with live preview, and saves it as BMP, GIF, JPEG or PNG. Every "
          "change can be undone and redone, many steps back. Its picture engine also runs without a window as tamrick-cli(1)."},
         {},
         false});
    page.sections.push_back({"OPTIONS",
                             {},
                             {{"FILE", "the picture to open at start"},
                              {"--screenshot OUT.png", "once the window has settled, save a picture of the "
                                                       "screen to OUT.png and quit"},
                              {"-h, --help", "show this help and exit"},
                              {"--version", "show the version and exit"}}});
    page.sections.push_back(Keyboard());
    page.sections.push_back(
        {"FILES",
         {},
         {{std::string("~/.config/") + identity::kCompany + "/" + identity::kProgram + ".conf",
           "the settings. Pictures larger than the load limits open reduced; MaxLoadWidth and MaxLoadHeight "
           "(up to 30000) in the [MainSection] group raise the limits."}},
         false});
    page.sections.push_back(
        {"EXIT STATUS", {}, {{"0", "normal end"}, {"1", "the window could not be made"}}});
    page.sections.push_back({"EXAMPLES", {}, {{"tamrick photo.jpg", "opens photo.jpg"}}});
    page.sections.push_back({"SEE ALSO", {"tamrick-cli(1)"}, {}, false});
    return page;
}

int RunManualOption(int argc, char* argv[]) {
    if (argc < 2) {
        return -1;
    }
    const char* first = argv[1];
    const bool help = std::strcmp(first, "--help") == 0 || std::strcmp(first, "-h") == 0;
    if (help || std::strcmp(first, "--man") == 0) {
        // The desktop's standard keys are known only to a GUI application;
        // the offscreen platform needs no display.
        qputenv("QT_QPA_PLATFORM", "offscreen");
        QGuiApplication keys(argc, argv);
        const ManualPage manual = BuildAppManual();
        std::fputs((help ? RenderHelpText(manual) : RenderRoff(manual)).c_str(), stdout);
        return 0;
    }
    if (std::strcmp(first, "--version") == 0) {
        std::printf("tamrick %s\n", identity::kVersion);
        return 0;
    }
    return -1;
}
