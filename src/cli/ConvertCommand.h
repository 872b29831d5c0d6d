#pragma once

#include <string>
#include <vector>

// tamrick-cli convert IN OUT [--quality N] [--max-size W,H]: loads IN as the
// application opens a file (its first bytes decide the format) and saves OUT
// as the application saves (its extension decides). OUT is replaced only by
// a complete file.
int RunConvertCommand(const std::vector<std::string>& args);
