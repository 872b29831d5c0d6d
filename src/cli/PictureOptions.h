#pragma once

#include "formats/LoadLimits.h"

#include <optional>
#include <string>

// Option values shared by the picture commands of tamrick-cli.

// "W,H" with both sides 1..30000; nothing when malformed.
std::optional<LoadLimitSize> ParseMaxSize(const std::string& text);
// A whole number; nothing when the text is not one.
std::optional<int> ParseInt(const std::string& text);
// Prints the message of a failed load or save (the program's own text) to
// standard error.
void PrintFileError(int result, const std::string& fallback);
