#pragma once

#include "platform/AppIdentity.h"

#include <string>
#include <vector>

// A manual page as data: the programs build theirs from their own command
// tables, and the same page is printed as `--help` text and as a man(7) page,
// so the two cannot say different things.
struct ManualEntry {
    std::string term; // a command line, option or operation as it is typed
    std::string text; // what it does
};

struct ManualSection {
    std::string title; // upper case, as man pages have them: "OPTIONS"
    std::vector<std::string> paragraphs;
    std::vector<ManualEntry> entries;
    bool inHelp = true; // false: only in the man page (SEE ALSO, FILES, ...)
};

struct ManualPage {
    std::string name;    // "tamrick-cli"
    std::string summary; // the NAME line after the dash
    std::string version;
    std::string date;                  // YYYY-MM-DD
    std::vector<std::string> synopsis; // one usage line each, without "Usage:"
    std::vector<ManualSection> sections;
};

// man(7) source for section 1.
std::string RenderRoff(const ManualPage& page);
// Plain text for `--help`, wrapped to `width` columns.
std::string RenderHelpText(const ManualPage& page, std::size_t width = 79);
