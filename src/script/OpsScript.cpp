#include "script/OpsScript.h"

#include "image/CUndoHistory.h"
#include "ops/OpsCommandTable.h"
#include "platform/StringTable.h"

#include <charconv>
#include <cstring>

namespace {

bool ParseWhole(std::string_view text, int& value) {
    const char* end = text.data() + text.size();
    const auto [next, error] = std::from_chars(text.data(), end, value);
    return !text.empty() && error == std::errc{} && next == end;
}

// A value given as one of the parameter's words ("cw", "ccw", ...).
bool ParseWord(const OpsParameter& parameter, std::string_view text, int& value) {
    if (parameter.words == nullptr) {
        return false;
    }
    std::string_view words = parameter.words;
    for (int index = 0; !words.empty(); ++index) {
        const auto comma = words.find(',');
        if (words.substr(0, comma) == text) {
            value = parameter.minimum + index;
            return true;
        }
        words = comma == std::string_view::npos ? std::string_view{} : words.substr(comma + 1);
    }
    return false;
}

std::vector<std::string_view> SplitValues(std::string_view text) {
    std::vector<std::string_view> parts;
    while (true) {
        const auto comma = text.find(',');
        parts.push_back(text.substr(0, comma));
        if (comma == std::string_view::npos) {
            return parts;
        }
        text = text.substr(comma + 1);
    }
}

} // namespace

bool OpsScript::Fail(std::string message) {
    m_error = std::move(message);
    return false;
}

bool OpsScript::Add(const std::string& word) {
    const auto equals = word.find('=');
    const std::string name = word.substr(0, equals);
    if (name == "undo" || name == "redo") {
        if (equals != std::string::npos) {
            return Fail("'" + name + "' takes no values");
        }
        m_steps.push_back(Step{nullptr, name == "redo", {}, 0});
        return true;
    }
    const OpsCommand* command = FindOpsCommandByName(name);
    if (command == nullptr) {
        return Fail("unknown operation '" + name + "'");
    }
    Step step{command, false, {}, 0};
    for (const OpsParameter& parameter : command->parameters) {
        step.values.push_back(parameter.defaultValue);
    }
    const std::vector<std::string_view> texts = equals == std::string::npos
                                                    ? std::vector<std::string_view>{}
                                                    : SplitValues(std::string_view(word).substr(equals + 1));
    step.given = static_cast<int>(texts.size());
    if (step.given >= 32 || (command->acceptedCounts & (1u << step.given)) == 0) {
        return Fail("'" + name + "' does not take " + std::to_string(step.given) + " values");
    }
    for (int i = 0; i < step.given; ++i) {
        const OpsParameter& parameter = command->parameters[static_cast<std::size_t>(i)];
        int value = 0;
        if (!ParseWhole(texts[i], value) && !ParseWord(parameter, texts[i], value)) {
            return Fail("'" + name + "': '" + std::string(texts[i]) + "' is not a valid " + parameter.name);
        }
        if (value < parameter.minimum || value > parameter.maximum) {
            if (parameter.rangeMessage != 0) {
                return Fail(std::string(platform::LoadString(parameter.rangeMessage)));
            }
            return Fail("'" + name + "': the " + parameter.name + " is out of the range (" +
                        std::to_string(parameter.minimum) + ".." + std::to_string(parameter.maximum) + ").");
        }
        step.values[static_cast<std::size_t>(i)] = value;
    }
    m_steps.push_back(std::move(step));
    return true;
}

int OpsScript::Run(CommandContext& ctx) const {
    for (std::size_t i = 0; i < m_steps.size(); ++i) {
        const Step& step = m_steps[i];
        bool done;
        ctx.undo.BeginCommand(ctx.doc, step.command != nullptr ? step.command->label : step.redo ? "Redo" : "Undo");
        if (step.command == nullptr) {
            done = step.redo ? ctx.undo.Redo(ctx.doc) : ctx.undo.Undo(ctx.doc);
        } else {
            done = step.command->run(ctx, step.values, step.given) == 1;
        }
        if (!done) {
            return static_cast<int>(i);
        }
    }
    return -1;
}

bool ParseHexColor(const std::string& text, ColorWord& color) {
    unsigned value = 0;
    const char* end = text.data() + text.size();
    const auto [next, error] = std::from_chars(text.data(), end, value, 16);
    if (text.size() != 6 || error != std::errc{} || next != end) {
        return false;
    }
    color = MakeColorWord(static_cast<int>(value >> 16), static_cast<int>((value >> 8) & 0xFF),
                          static_cast<int>(value & 0xFF));
    return true;
}
