#pragma once

#include <string>
#include <vector>

// tamrick-cli info FILE [--max-size W,H]: loads FILE as the application opens
// it and prints its type, the loaded and the file's own size, the loaded
// picture's resolution and whether it was reduced.
int RunInfoCommand(const std::vector<std::string>& args);
