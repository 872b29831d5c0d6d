#pragma once

#include "manual/ManualPage.h"

// The manual of the `tamrick` program: its command line, and the keyboard
// shortcuts read from the command table and the tool palette. `tamrick
// --help` prints it as text and `tamrick --man` as the installed man page.
ManualPage BuildAppManual();

// Handles --help, --man and --version before any window exists (they need no
// display); returns the exit status, or -1 when the arguments are for the
// window program.
int RunManualOption(int argc, char* argv[]);
