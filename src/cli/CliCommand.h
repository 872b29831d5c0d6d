#pragma once

#include <span>
#include <string>
#include <vector>

// Exit codes of tamrick-cli.
constexpr int kExitSuccess = 0;
constexpr int kExitFailure = 1; // loading, processing or saving failed
constexpr int kExitUsage = 2;   // bad command line; nothing was written

// One sub-command of tamrick-cli. Every command is listed once in
// CliCommandTable.cpp; the help text and the dispatcher read that table.
struct CliCommand {
    const char* name;
    const char* synopsis;                             // arguments after the name, for the usage text
    const char* summary;                              // one line for the help text
    int (*run)(const std::vector<std::string>& args); // args after the name
};

std::span<const CliCommand> CliCommands();
