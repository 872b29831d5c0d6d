#pragma once

#include <string>

// The bash completion script of tamrick-cli, made from the same tables as the
// manual: sub-commands, each command's options, file names where a command
// reads or writes a file, and the operation names of apply.
std::string BashCompletionScript();
