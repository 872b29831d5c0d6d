#include "cli/CliCommand.h"

namespace {
// Commands are added here as they are built: {name, synopsis, summary, handler}.
const std::vector<CliCommand> kCommands = {};
} // namespace

std::span<const CliCommand> CliCommands() {
    return kCommands;
}
