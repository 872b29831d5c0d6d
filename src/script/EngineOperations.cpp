#include "script/EngineOperations.h"

#include "image/CUndoHistory.h"

#include "image/CBriselDoc.h"
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
    const char* words; // comma-separated words standing for numbers `wordBase`, `wordBase + 1`, ...
    int wordBase;
    Handler run;
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
    {"fill", Arguments::Numbers, 2, 2, nullptr, 0, &RunFill},
    {"gradient", Arguments::Numbers, 4, 4, nullptr, 0, &RunGradient},
    {"pen", Arguments::Points, 1, 100000, nullptr, 0, &RunPen},
    {"eraser", Arguments::Points, 1, 100000, nullptr, 0, &RunEraser},
    {"line", Arguments::Numbers, 4, 4, nullptr, 0, &RunLine},
    {"rect", Arguments::Numbers, 4, 5, nullptr, 0, &RunRect},
    {"ellipse", Arguments::Numbers, 4, 5, nullptr, 0, &RunEllipse},
    {"brush", Arguments::NumberAndPoints, 1, 100000, nullptr, 0, &RunBrush},
    {"tablet", Arguments::NumberAndPoints, 1, 100000, nullptr, 0, &RunTablet},
    {"select-all", Arguments::None, 0, 0, nullptr, 0, &RunEditCommandById<57642>},
    {"select-none", Arguments::None, 0, 0, nullptr, 0, &RunEditCommandById<32859>},
    {"invert-selection", Arguments::None, 0, 0, nullptr, 0, &RunEditCommandById<32860>},
    {"select-rect", Arguments::Numbers, 4, 5, kCombineWords, 2, &RunSelectRect},
    {"select-ellipse", Arguments::Numbers, 4, 5, kCombineWords, 2, &RunSelectEllipse},
    {"wand", Arguments::Numbers, 2, 3, kCombineWords, 2, &RunWand},
    {"move-floating", Arguments::Numbers, 2, 2, nullptr, 0, &RunMoveFloating},
    {"put-floating", Arguments::None, 0, 0, nullptr, 0, &RunEditCommandById<32861>},
    {"discard-floating", Arguments::None, 0, 0, nullptr, 0, &RunEditCommandById<32862>},
    {"crop", Arguments::None, 0, 0, nullptr, 0, &RunEditCommandById<32857>},
    {"clear", Arguments::None, 0, 0, nullptr, 0, &RunEditCommandById<57632>},
    {"fill-selection", Arguments::Numbers, 1, 1, kFillWords, 0, &RunFillSelection},
};

const EngineOperation* FindOperation(std::string_view name) {
    for (const EngineOperation& op : kOperations) {
        if (name == op.name) {
            return &op;
        }
    }
    return nullptr;
}

bool ParseNumbers(const EngineOperation& op, std::string_view text, std::vector<int>& numbers) {
    for (const std::string_view token : Split(text, ',')) {
        int value = 0;
        if (!ParseWhole(token, value) && !ParseWordValue(op, token, value)) {
            return false;
        }
        numbers.push_back(value);
    }
    return true;
}

bool ParsePoints(const EngineOperation& op, std::string_view text, EngineStep& step) {
    bool first = true;
    for (const std::string_view pair : Split(text, ';')) {
        std::vector<int> values;
        if (!ParseNumbers(op, pair, values)) {
            return false;
        }
        const bool leading = first && op.arguments == Arguments::NumberAndPoints;
        if (values.size() != (leading ? 3u : 2u)) {
            return false;
        }
        if (leading) {
            step.numbers.push_back(values[0]);
            values.erase(values.begin());
        }
        step.points.push_back({values[0], values[1]});
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
    if (name == "tolerance" || name == "continuous") {
        const int limit = name == "tolerance" ? 255 : 1;
        if (!numbersOf(1) || numbers[0] < 0 || numbers[0] > limit) {
            error = "--" + name + " takes a whole number of 0.." + std::to_string(limit);
            return false;
        }
        if (name == "tolerance") {
            options.tolerance = numbers[0];
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
