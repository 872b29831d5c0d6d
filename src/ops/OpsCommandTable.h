#pragma once

#include "image/CommandContext.h"

#include <span>
#include <string_view>

// One numeric value a command takes (what its dialog asks for). `words`, when
// set, names the values minimum, minimum + 1, ... ("cw,ccw"). `rangeMessage`
// is the string the dialog shows for a value out of range, 0 when the dialog
// clamps instead.
struct OpsParameter {
    const char* name;
    int minimum;
    int maximum;
    int defaultValue;
    int rangeMessage = 0;
    const char* words = nullptr;
};

// One command of the Image and Filter menus: its menu id, where it sits in the
// menus, its name on tamrick-cli, the dialog template that asks for its values
// (0 when none), the values, and the core function that runs it. Menus,
// tamrick-cli and tests all read this one table.
struct OpsCommand {
    int id;
    const char* menu;  // "Image", "Image/Color Level", "Filter/Blur", ...
    const char* label; // the menu text
    const char* cliName;
    int dialog;
    std::span<const OpsParameter> parameters;
    // Bit n set: n values may be given; the rest take their defaults.
    unsigned acceptedCounts;
    // Runs the command with all values (defaults filled in) and how many were
    // given; returns 1 on success.
    int (*run)(CommandContext& ctx, std::span<const int> values, int given);
};

// Every command, in menu order.
std::span<const OpsCommand> OpsCommands();
const OpsCommand* FindOpsCommand(int id);
const OpsCommand* FindOpsCommandByName(std::string_view cliName);
// Runs a command with its defaults (what OK in an untouched dialog does).
int RunOpsCommand(CommandContext& ctx, const OpsCommand& command);
