#pragma once

#include "image/CommandContext.h"

#include <array>
#include <string>
#include <vector>

// The painting, selection and edit operations as words for the command line
// ("fill=10,20", "pen=1,1;30,40", "select-rect=0,0,9,9,add", "crop"), run on
// a document exactly as the tools and menus run them, each leaving its undo
// step. The options hold the tool settings a command line gives.
struct EngineOptions {
    int penSize = 8;
    int penShape = 2;
    int tolerance = 32;
    bool continuous = true;
    int gradientShape = 0; // linear, radial, rectangle, cone
    int gradientMode = 0;  // rgb, hue-cw, hue-ccw
    // -1: the eraser paints the background colour; 0..255: it erases only
    // colours within this distance of the foreground colour in each channel.
    int eraseSimilar = -1;
};

// Reads "--pen SIZE,SHAPE", "--tolerance N", "--continuous 0|1",
// "--gradient SHAPE,MODE" and "--erase-similar N" (name without the dashes); false with `error` set
// for a bad value. Returns false with an empty error for another name.
bool ParseEngineOption(const std::string& name, const std::string& value, EngineOptions& options,
                       std::string& error);

struct EngineOperation;

// One parsed word: the operation, its numbers and its point list.
struct EngineStep {
    const EngineOperation* operation = nullptr;
    std::vector<int> numbers;
    std::vector<std::array<int, 2>> points;
};

// An operation as the help text and the manual show it: "rect" with values
// "X1,Y1,X2,Y2[,STYLE]" (empty when it takes none) and what it does.
struct EngineOperationDoc {
    const char* name;
    const char* values;
    const char* summary;
};
std::vector<EngineOperationDoc> EngineOperationDocs();

// True when the word's name (before '=') is one of these operations.
bool IsEngineOperation(const std::string& word);
// Parses a word; false with `error` saying why.
bool ParseEngineStep(const std::string& word, EngineStep& step, std::string& error);
// Runs a parsed step: 1 done, 0 failed or not possible (no selection, a point
// outside the picture where the tool needs one inside).
int RunEngineStep(CommandContext& context, const EngineOptions& options, const EngineStep& step);
