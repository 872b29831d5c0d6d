#pragma once

#include <string>
#include <vector>

// tamrick-cli apply IN OUT [options] OP [OP ...]: opens IN as the application
// does, runs each image operation in order exactly as its menu command would
// (undo steps included), and saves OUT as the application saves.
int RunApplyCommand(const std::vector<std::string>& args);
