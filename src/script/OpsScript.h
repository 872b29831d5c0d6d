#pragma once

#include "image/CommandContext.h"

#include <string>
#include <vector>

struct OpsCommand;

// A list of image operations written as text, one word each: a command's
// name on the command line ("blur-small"), optionally with values
// ("emboss=3,4", "rotate=30,ccw"), or "undo" / "redo". The command table
// supplies the names, how many values each takes, their ranges and defaults.
class OpsScript {
public:
    struct Step {
        const OpsCommand* command = nullptr; // null for undo and redo
        bool redo = false;
        std::vector<int> values; // every value, defaults filled in
        int given = 0;
    };

    // Reads one word; false (with `Error()` saying why) for an unknown name, a
    // malformed value, a wrong number of values or a value out of range.
    bool Add(const std::string& word);
    const std::vector<Step>& Steps() const { return m_steps; }
    const std::string& Error() const { return m_error; }

    // Runs the steps in order as the menus would, each leaving its undo step.
    // Stops at the first step that fails and returns its index; -1 when all
    // went through.
    int Run(CommandContext& ctx) const;

private:
    bool Fail(std::string message);

    std::vector<Step> m_steps;
    std::string m_error;
};

// "RRGGBB" (hex) as a colour word; false when malformed.
bool ParseHexColor(const std::string& text, ColorWord& color);
