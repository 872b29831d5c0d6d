#include "cli/ApplyCommand.h"
#include "cli/CliCommand.h"
#include "cli/ConvertCommand.h"
#include "cli/InfoCommand.h"

namespace {
// Commands are added here as they are built: {name, synopsis, summary, handler}.
const std::vector<CliCommand> kCommands = {
    {"info", "FILE [--max-size W,H]", "print a picture file's type, size, resolution, reduced flag and whether it has transparent pixels (alpha), and the load limits in force",
     RunInfoCommand},
    {"convert", "IN OUT [--quality N] [--max-size W,H]",
     "load IN by its contents and save OUT in the format its extension names", RunConvertCommand},
    {"apply",
     "IN OUT [--foreground RRGGBB] [--background RRGGBB] [--quality N] [--max-size W,H] [--seed N] [--pen "
     "SIZE,SHAPE] "
     "[--tolerance N] [--continuous 0|1] [--gradient SHAPE,MODE] [--erase-similar N] OP...",
     "open IN, run the image, painting, selection and edit operations OP in order as the menus and tools do, "
     "save OUT",
     RunApplyCommand},
};
} // namespace

std::span<const CliCommand> CliCommands() {
    return kCommands;
}
