#include "script/EngineOperations.h"

#include "image/CUndoHistory.h"

#include "image/CBriselDoc.h"
#include "image/ImageCoordinates.h"
#include "paint/BrushEngine.h"
#include "script/EngineOperationHandlers.h"

#include <charconv>
#include <string_view>

namespace {

using Handler = int (*)(CommandContext&, const EngineOptions&, const EngineStep&);

// Values after '=': none, whole numbers (optionally ending in one of a word
// list), or a point list "X,Y;X,Y;..." (optionally led by one number).
enum class Arguments { None, Numbers, Points, NumberAndPoints };

} // namespace

struct EngineOperation {
    const char* name;
    Arguments arguments;
    int minimum; // numbers (for Numbers), or points
    int maximum;
    // Numbers: the first `coordinates` are coordinates (kept within the
    // coordinate limit); each one after them is a code, written as one of
    // `words` (standing for `wordBase`, `wordBase + 1`, ...) when there are
    // words, else as a number of codeLow..codeHigh.
    int coordinates;
    const char* words;
    int wordBase;
    int codeLow;
    int codeHigh;
    Handler run;
    const char* values;  // how the values after '=' are written, for the help text
    const char* summary; // what the operation does, for the help text
};

namespace {

bool ParseWhole(std::string_view text, int& value) {
    const char* end = text.data() + text.size();
    const auto [next, error] = std::from_chars(text.data(), end, value);
    return !text.empty() && error == std::errc{} && next == end;
}

std::vector<std::string_view> Split(std::string_view text, char separator) {
    std::vector<std::string_view> parts;
    for (;;) {
        const auto at = text.find(separator);
        parts.push_back(text.substr(0, at));
        if (at == std::string_view::npos) {
            return parts;
        }
        text = text.substr(at + 1);
    }
}

bool ParseWordValue(const EngineOperation& op, std::string_view text, int& value) {
    if (op.words == nullptr) {
        return false;
    }
    const auto words = Split(op.words, ',');
    for (std::size_t i = 0; i < words.size(); ++i) {
        if (words[i] == text) {
            value = op.wordBase + static_cast<int>(i);
            return true;
        }
    }
    return false;
}

template <int kId>
int RunEditCommandById(CommandContext& context, const EngineOptions& options, const EngineStep& step) {
    return RunEditCommand(kId, context, options, step);
}

constexpr const char* kCombineWords = "add,sub";
constexpr const char* kFillWords = "fore,back,white,black";

const EngineOperation kOperations[] = {
    {"fill", Arguments::Numbers, 2, 2, 2, nullptr, 0, 0, 0, &RunFill, "X,Y",
     "flood-fills from the point with the foreground colour, within --tolerance, as the fill tool does"},
    {"gradient", Arguments::Numbers, 4, 4, 4, nullptr, 0, 0, 0, &RunGradient, "X1,Y1,X2,Y2",
     "draws a gradient from the foreground to the background colour between the two points; --gradient sets "
     "its shape and colour mode"},
    {"pen", Arguments::Points, 1, 100000, 0, nullptr, 0, 0, 0, &RunPen, "X,Y;X,Y;...",
     "a pen stroke in the foreground colour through the points, with the --pen size and shape"},
    {"eraser", Arguments::Points, 1, 100000, 0, nullptr, 0, 0, 0, &RunEraser, "X,Y;X,Y;...",
     "an eraser stroke in the background colour through the points; with --erase-similar only colours near "
     "the foreground colour are erased"},
    {"line", Arguments::Numbers, 4, 4, 4, nullptr, 0, 0, 0, &RunLine, "X1,Y1,X2,Y2",
     "a straight line in the foreground colour; the end point is kept inside the picture"},
    {"rect", Arguments::Numbers, 4, 5, 4, nullptr, 0, 0, 2, &RunRect, "X1,Y1,X2,Y2[,STYLE]",
     "a rectangle between the corners; STYLE 0 outline (default), 1 outline filled with the background "
     "colour, 2 filled"},
    {"ellipse", Arguments::Numbers, 4, 5, 4, nullptr, 0, 0, 2, &RunEllipse, "X1,Y1,X2,Y2[,STYLE]",
     "an ellipse in the box between the corners; STYLE as for rect"},
    {"brush", Arguments::NumberAndPoints, 1, 100000, 0, nullptr, 0, 1, 12, &RunBrush, "MODE,X,Y;X,Y;...",
     "a stroke in draw mode MODE: 1 solid, 2 lighten, 3 darken, 4 and 5 hue, 6 colour replace, 7 wash, 8 and "
     "11 grain, 12 speckle"},
    {"tablet", Arguments::NumberAndPoints, 1, 100000, 0, nullptr, 0, 2, 12, &RunTablet, "KIND,X,Y;X,Y;...",
     "a stroke of the artistic pen KIND (2, 3 or 7..12)"},
    {"clone", Arguments::Points, 2, 100001, 0, nullptr, 0, 0, 0, &RunClone, "SX,SY;X,Y;X,Y;...",
     "a clone stamp stroke through the points after the first, with the --pen size and shape, copying the "
     "picture as it was before the stroke from the source point SX,SY on, as the clone stamp tool does"},
    {"select-all", Arguments::None, 0, 0, 0, nullptr, 0, 0, 0, &RunEditCommandById<57642>, "",
     "selects the whole picture"},
    {"select-none", Arguments::None, 0, 0, 0, nullptr, 0, 0, 0, &RunEditCommandById<32859>, "",
     "ends the selection, putting the floating pixels down"},
    {"invert-selection", Arguments::None, 0, 0, 0, nullptr, 0, 0, 0, &RunEditCommandById<32860>, "",
     "selects what was not selected"},
    {"select-rect", Arguments::Numbers, 4, 5, 4, kCombineWords, 2, 0, 0, &RunSelectRect, "X1,Y1,X2,Y2[,add|sub]",
     "selects the rectangle, or adds it to or takes it from the selection"},
    {"select-ellipse", Arguments::Numbers, 4, 5, 4, kCombineWords, 2, 0, 0, &RunSelectEllipse, "X1,Y1,X2,Y2[,add|sub]",
     "selects the ellipse in the box, or adds it to or takes it from the selection"},
    {"wand", Arguments::Numbers, 2, 3, 2, kCombineWords, 2, 0, 0, &RunWand, "X,Y[,add|sub]",
     "selects the colour at the point within --tolerance (connected pixels only with --continuous 1), or "
     "adds or takes it"},
    {"move-floating", Arguments::Numbers, 2, 2, 2, nullptr, 0, 0, 0, &RunMoveFloating, "DX,DY",
     "moves the floating selection by DX, DY pixels"},
    {"put-floating", Arguments::None, 0, 0, 0, nullptr, 0, 0, 0, &RunEditCommandById<32861>, "",
     "puts the floating selection down"},
    {"discard-floating", Arguments::None, 0, 0, 0, nullptr, 0, 0, 0, &RunEditCommandById<32862>, "",
     "throws the floating selection away"},
    {"crop", Arguments::None, 0, 0, 0, nullptr, 0, 0, 0, &RunEditCommandById<32857>, "",
     "crops the picture to the selection"},
    {"clear", Arguments::None, 0, 0, 0, nullptr, 0, 0, 0, &RunEditCommandById<57632>, "",
     "clears the selection to the background colour"},
    {"fill-selection", Arguments::Numbers, 1, 1, 0, kFillWords, 0, 0, 0, &RunFillSelection, "fore|back|white|black",
     "fills the selection, or the picture, with that colour as Edit > Fill does"},
};

const EngineOperation* FindOperation(std::string_view name) {
    for (const EngineOperation& op : kOperations) {
        if (name == op.name) {
            return &op;
        }
    }
    return nullptr;
}

// A coordinate, kept within the coordinate limit; numbers beyond an int are
// refused.
bool ParseCoordinate(std::string_view text, int& value) {
    if (!ParseWhole(text, value)) {
        return false;
    }
    value = ClampCoordinate(value);
    return true;
}

// A code: one of the operation's words, or without words a number in its range.
bool ParseCode(const EngineOperation& op, std::string_view text, int& value) {
    if (op.words != nullptr) {
        return ParseWordValue(op, text, value);
    }
    return ParseWhole(text, value) && value >= op.codeLow && value <= op.codeHigh;
}

bool ParseNumbers(const EngineOperation& op, std::string_view text, std::vector<int>& numbers) {
    for (const std::string_view token : Split(text, ',')) {
        const bool coordinate = static_cast<int>(numbers.size()) < op.coordinates;
        int value = 0;
        if (!(coordinate ? ParseCoordinate(token, value) : ParseCode(op, token, value))) {
            return false;
        }
        numbers.push_back(value);
    }
    return true;
}

// "X,Y;X,Y;...", the first pair led by a code for NumberAndPoints.
bool ParsePoints(const EngineOperation& op, std::string_view text, EngineStep& step) {
    bool first = true;
    for (const std::string_view pair : Split(text, ';')) {
        auto values = Split(pair, ',');
        const bool leading = first && op.arguments == Arguments::NumberAndPoints;
        if (values.size() != (leading ? 3u : 2u)) {
            return false;
        }
        if (leading) {
            int code = 0;
            if (!ParseCode(op, values[0], code)) {
                return false;
            }
            step.numbers.push_back(code);
            values.erase(values.begin());
        }
        std::array<int, 2> point{};
        if (!ParseCoordinate(values[0], point[0]) || !ParseCoordinate(values[1], point[1])) {
            return false;
        }
        step.points.push_back(point);
        first = false;
    }
    return true;
}

} // namespace

bool ParseEngineOption(const std::string& name, const std::string& value, EngineOptions& options,
                       std::string& error) {
    error.clear();
    std::vector<int> numbers;
    const auto numbersOf = [&](std::size_t count) {
        numbers.clear();
        for (const std::string_view token : Split(value, ',')) {
            int v = 0;
            if (!ParseWhole(token, v)) {
                return false;
            }
            numbers.push_back(v);
        }
        return numbers.size() == count;
    };
    if (name == "pen") {
        if (!numbersOf(2) || numbers[0] < 1 || numbers[0] > BrushEngine::kMaxPenSize || numbers[1] < 1 ||
            numbers[1] > 6) {
            error = "--pen takes SIZE,SHAPE with a size of 1..32 and a shape of 1..6";
            return false;
        }
        options.penSize = numbers[0];
        options.penShape = numbers[1];
        return true;
    }
    if (name == "tolerance" || name == "continuous" || name == "erase-similar") {
        const int limit = name == "continuous" ? 1 : 255;
        if (!numbersOf(1) || numbers[0] < 0 || numbers[0] > limit) {
            error = "--" + name + " takes a whole number of 0.." + std::to_string(limit);
            return false;
        }
        if (name == "tolerance") {
            options.tolerance = numbers[0];
        } else if (name == "erase-similar") {
            options.eraseSimilar = numbers[0];
        } else {
            options.continuous = numbers[0] != 0;
        }
        return true;
    }
    if (name == "gradient") {
        const auto parts = Split(value, ',');
        const char* shapes[] = {"linear", "radial", "rectangle", "cone"};
        const char* modes[] = {"rgb", "hue-cw", "hue-ccw"};
        int shape = -1;
        int mode = -1;
        for (int i = 0; parts.size() == 2 && i < 4; ++i) {
            shape = parts[0] == shapes[i] ? i : shape;
            mode = i < 3 && parts[1] == modes[i] ? i : mode;
        }
        if (shape < 0 || mode < 0) {
            error = "--gradient takes SHAPE,MODE: linear|radial|rectangle|cone and rgb|hue-cw|hue-ccw";
            return false;
        }
        options.gradientShape = shape;
        options.gradientMode = mode;
        return true;
    }
    return false;
}

std::vector<EngineOperationDoc> EngineOperationDocs() {
    std::vector<EngineOperationDoc> docs;
    for (const EngineOperation& op : kOperations) {
        docs.push_back({op.name, op.values, op.summary});
    }
    return docs;
}

bool IsEngineOperation(const std::string& word) {
    return FindOperation(std::string_view(word).substr(0, word.find('='))) != nullptr;
}

bool ParseEngineStep(const std::string& word, EngineStep& step, std::string& error) {
    step = EngineStep{};
    const auto equals = word.find('=');
    const std::string name = word.substr(0, equals);
    const EngineOperation* op = FindOperation(name);
    if (op == nullptr) {
        error = "unknown operation '" + name + "'";
        return false;
    }
    step.operation = op;
    const std::string_view values =
        equals == std::string::npos ? std::string_view{} : std::string_view(word).substr(equals + 1);
    bool ok = true;
    int count = 0;
    if (op->arguments == Arguments::None) {
        ok = equals == std::string::npos;
    } else if (op->arguments == Arguments::Numbers) {
        ok = ParseNumbers(*op, values, step.numbers);
        count = static_cast<int>(step.numbers.size());
    } else {
        ok = ParsePoints(*op, values, step);
        count = static_cast<int>(step.points.size());
    }
    if (!ok || count < op->minimum || count > op->maximum) {
        error = "'" + word + "' is not a valid " + name + " operation";
        return false;
    }
    return true;
}

int RunEngineStep(CommandContext& context, const EngineOptions& options, const EngineStep& step) {
    if (step.operation == nullptr || context.doc.GetPicture() == nullptr) {
        return 0;
    }
    context.undo.BeginCommand(context.doc, step.operation->name);
    return step.operation->run(context, options, step);
}
