#include "cli/CliCommand.h"
#include "cli/ConvertCommand.h"
#include "cli/InfoCommand.h"

namespace {
// Commands are added here as they are built: {name, synopsis, summary, handler}.
const std::vector<CliCommand> kCommands = {
    {"info", "FILE [--max-size W,H]", "print a picture file's type, size, resolution and reduced flag",
     RunInfoCommand},
    {"convert", "IN OUT [--quality N] [--max-size W,H]",
     "load IN by its contents and save OUT in the format its extension names", RunConvertCommand},
};
} // namespace

std::span<const CliCommand> CliCommands() {
    return kCommands;
}
