#include "cli/CliCommand.h"

#include <cstdio>
#include <cstring>
#include <string>
#include <vector>

namespace {

void PrintUsage(FILE* out) {
    std::fputs("Usage: tamrick-cli [--help] [--version] COMMAND [ARGS...]\n"
               "\n"
               "Tamrick's picture engine without a window, for batch work.\n"
               "\n"
               "Options:\n"
               "  -h, --help     show this help and exit\n"
               "  --version      show the version and exit\n",
               out);
    if (CliCommands().empty()) {
        return;
    }
    std::fputs("\nCommands:\n", out);
    for (const CliCommand& command : CliCommands()) {
        std::fprintf(out, "  %s %s\n      %s\n", command.name, command.synopsis, command.summary);
    }
}

const CliCommand* FindCommand(const char* name) {
    for (const CliCommand& command : CliCommands()) {
        if (std::strcmp(command.name, name) == 0) {
            return &command;
        }
    }
    return nullptr;
}

} // namespace

int main(int argc, char* argv[]) {
    if (argc < 2) {
        PrintUsage(stderr);
        return kExitUsage;
    }
    const char* first = argv[1];
    if (std::strcmp(first, "--help") == 0 || std::strcmp(first, "-h") == 0) {
        PrintUsage(stdout);
        return kExitSuccess;
    }
    if (std::strcmp(first, "--version") == 0) {
        std::puts("tamrick-cli 0.1");
        return kExitSuccess;
    }
    const CliCommand* command = FindCommand(first);
    if (command == nullptr) {
        std::fprintf(stderr, "tamrick-cli: unknown command '%s'\n", first);
        PrintUsage(stderr);
        return kExitUsage;
    }
    return command->run(std::vector<std::string>(argv + 2, argv + argc));
}
