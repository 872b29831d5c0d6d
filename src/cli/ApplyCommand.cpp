#include "cli/ApplyCommand.h"

#include "cli/CliCommand.h"
#include "cli/PictureOptions.h"
#include "formats/CDocumentFiles.h"
#include "formats/JpegQuality.h"
#include "formats/PictureSaver.h"
#include "image/CBriselDoc.h"
#include "image/CUndoHistory.h"
#include "image/UndoLimits.h"
#include "script/OpsScript.h"
#include "script/EngineOperations.h"
#include "platform/MessagePresenter.h"
#include "platform/StringTable.h"

#include <cstdio>
#include <cstdlib>
#include <optional>

namespace {

struct ApplyOptions {
    std::string input;
    std::string output;
    ColorWord foreground = MakeColorWord(0, 0, 255);
    ColorWord background = MakeColorWord(255, 255, 255);
    int quality = JpegQuality::kDefault;
    std::optional<LoadLimitSize> limits;
    std::optional<unsigned> seed;
    EngineOptions tools;
    // The operations in their order: a painting, selection or edit word, or
    // an image operation (a script of one step).
    struct Step {
        EngineStep engine;
        OpsScript image;
    };
    std::vector<Step> steps;
};

// Saving asks whether to put a floating selection down first; the command
// line answers No, so that the file holds the picture as the application
// would save it without the floating pixels. Other messages go on to the
// usual headless presenter.
class SavePresenter : public platform::MessagePresenter {
public:
    SavePresenter() : m_previous(platform::CurrentMessagePresenter()) { platform::SetMessagePresenter(this); }
    ~SavePresenter() override { platform::SetMessagePresenter(m_previous); }
    SavePresenter(const SavePresenter&) = delete;
    SavePresenter& operator=(const SavePresenter&) = delete;

    platform::MessageAnswer Present(const platform::Message& message) override {
        if (message.stringId == platform::IDS_PUT_FLOATING_BEFORE_SAVE) {
            return platform::MessageAnswer::No;
        }
        return m_previous->Present(message);
    }

private:
    platform::MessagePresenter* m_previous;
};

int Usage() {
    std::fputs("Usage: tamrick-cli apply IN OUT [--foreground RRGGBB] [--background RRGGBB] [--quality N]\n"
               "                          [--max-size W,H] [--seed N] [--pen SIZE,SHAPE] [--tolerance N]\n"
               "                          [--continuous 0|1] [--gradient SHAPE,MODE] [--erase-similar N]\n"
               "                          OP [OP ...]\n",
               stderr);
    return kExitUsage;
}

bool Complain(const std::string& message) {
    std::fprintf(stderr, "tamrick-cli apply: %s\n", message.c_str());
    return false;
}

// Reads one option and its value; false (with a message) when either is bad.
bool ReadOption(const std::string& option, const std::string& value, ApplyOptions& options) {
    if (option == "--foreground" || option == "--background") {
        ColorWord& color = option == "--foreground" ? options.foreground : options.background;
        return ParseHexColor(value, color) || Complain(option + " takes a colour as RRGGBB");
    }
    if (option == "--quality") {
        const auto quality = ParseInt(value);
        if (!quality || !JpegQuality::IsValid(*quality)) {
            return Complain(std::string(platform::LoadString(platform::IDS_QUALITY_OUT_OF_RANGE)));
        }
        options.quality = *quality;
        return true;
    }
    if (option == "--max-size") {
        options.limits = ParseMaxSize(value);
        return options.limits.has_value() || Complain("--max-size takes W,H");
    }
    if (option == "--seed") {
        const auto seed = ParseInt(value);
        if (!seed || *seed < 0) {
            return Complain("--seed takes a whole number");
        }
        options.seed = static_cast<unsigned>(*seed);
        return true;
    }
    std::string error;
    if (ParseEngineOption(option.substr(2), value, options.tools, error)) {
        return true;
    }
    return Complain(error.empty() ? "unknown option " + option : error);
}

bool AddOperation(const std::string& word, ApplyOptions& options) {
    ApplyOptions::Step step;
    std::string error;
    if (IsEngineOperation(word)) {
        if (!ParseEngineStep(word, step.engine, error)) {
            return Complain(error);
        }
    } else if (!step.image.Add(word)) {
        return Complain(step.image.Error());
    }
    options.steps.push_back(std::move(step));
    return true;
}

// Runs the operations in order; the index of the first that fails, or -1.
int RunOperations(const ApplyOptions& options, CommandContext& ctx) {
    for (std::size_t i = 0; i < options.steps.size(); ++i) {
        const ApplyOptions::Step& step = options.steps[i];
        const bool done = step.engine.operation != nullptr
                              ? RunEngineStep(ctx, options.tools, step.engine) == 1
                              : step.image.Run(ctx) < 0;
        if (!done) {
            return static_cast<int>(i);
        }
    }
    return -1;
}

// Reads the whole command line before anything is loaded, so that a bad
// argument never writes a file.
bool ParseArguments(const std::vector<std::string>& args, ApplyOptions& options) {
    std::vector<std::string> words;
    for (std::size_t i = 0; i < args.size(); ++i) {
        if (!args[i].starts_with("--")) {
            words.push_back(args[i]);
        } else if (i + 1 == args.size()) {
            return Complain(args[i] + " needs a value");
        } else if (!ReadOption(args[i], args[i + 1], options)) {
            return false;
        } else {
            ++i;
        }
    }
    if (words.size() < 3) {
        return Complain("IN, OUT and at least one operation are needed");
    }
    options.input = words[0];
    options.output = words[1];
    if (!IsSaveableName(options.output)) {
        return Complain(UnknownSaveTypeMessage());
    }
    for (std::size_t i = 2; i < words.size(); ++i) {
        if (!AddOperation(words[i], options)) {
            return false;
        }
    }
    return true;
}

} // namespace

int RunApplyCommand(const std::vector<std::string>& args) {
    ApplyOptions options;
    options.quality = JpegQuality::Read();
    if (!ParseArguments(args, options)) {
        return Usage();
    }
    if (options.seed) {
        std::srand(*options.seed);
    }
    CBriselDoc doc;
    CUndoHistory undo;
    undo.SetLimits(undolimits::Stored());
    CDocumentFiles files(doc, undo, options.limits.value_or(LoadLimits::AtStartUp()));
    const int quality = options.quality;
    files.SetJpegQuality([quality] { return quality; });
    if (!files.OnOpenDocument(options.input)) {
        return kExitFailure;
    }
    CommandContext ctx{doc, undo, options.foreground, options.background};
    const int failed = RunOperations(options, ctx);
    if (failed >= 0) {
        std::fprintf(stderr,
                     "tamrick-cli apply: operation %d could not be carried out; nothing was written\n",
                     failed + 1);
        return kExitFailure;
    }
    SavePresenter answersNo;
    if (!files.OnSaveDocument(options.output)) {
        std::fprintf(stderr, "tamrick-cli apply: cannot write %s\n", options.output.c_str());
        return kExitFailure;
    }
    return kExitSuccess;
}
