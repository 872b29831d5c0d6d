#include "cli/CliCommand.h"
#include "cli/CliCompletion.h"
#include "cli/CliManual.h"
#include "platform/AppIdentity.h"

#include <cstdio>
#include <cstring>
#include <string>
#include <vector>

namespace {

// A wrong command line shows the usage lines only; --help shows the manual.
void PrintUsage(FILE* out) {
    const ManualPage manual = BuildCliManual();
    std::fputs(RenderHelpText({manual.name, "", "", "", manual.synopsis, {}}).c_str(), out);
    std::fputs("Try 'tamrick-cli --help' for the commands, options and operations.\n", out);
}

// The man page; refuses (exit 1) while an option lacks its description, so
// the build that makes the page stops instead of shipping a stale manual.
int PrintManualPage() {
    const std::vector<std::string> missing = UndocumentedOptions();
    for (const std::string& option : missing) {
        std::fprintf(
            stderr,
            "tamrick-cli: option %s is named by a command but not described, or the other way round\n",
            option.c_str());
    }
    if (!missing.empty()) {
        return kExitFailure;
    }
    std::fputs(RenderRoff(BuildCliManual()).c_str(), stdout);
    return kExitSuccess;
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
        std::fputs(RenderHelpText(BuildCliManual()).c_str(), stdout);
        return kExitSuccess;
    }
    // Used by the build to make the installed manual page and completion.
    if (std::strcmp(first, "--man") == 0) {
        return PrintManualPage();
    }
    if (std::strcmp(first, "--bash-completion") == 0) {
        std::fputs(BashCompletionScript().c_str(), stdout);
        return kExitSuccess;
    }
    if (std::strcmp(first, "--version") == 0) {
        std::printf("tamrick-cli %s\n", identity::kVersion);
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
