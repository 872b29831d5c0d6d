#pragma once

#include "manual/ManualPage.h"

#include <string>
#include <vector>

// The manual of tamrick-cli, built from the command table, the image
// operation table and the painting operation table. `--help` prints it as
// text, `--man` as a man page, so neither can miss a command or operation.
ManualPage BuildCliManual();

// The options one command's synopsis names ("--max-size W,H" gives
// "--max-size"), in their order.
std::vector<std::string> OptionsOfCommand(const char* synopsis);

// Options a synopsis names without a description, or described but named by
// no synopsis; empty when the manual covers exactly what the commands take.
std::vector<std::string> UndocumentedOptions();
