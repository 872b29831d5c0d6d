#include "cli/ApplyCommand.h"

#include "cli/CliCommand.h"
#include "cli/PictureOptions.h"
#include "formats/CDocumentFiles.h"
#include "formats/JpegQuality.h"
#include "image/CBriselDoc.h"
#include "image/CUndoRecord.h"
#include "ops/OpsScript.h"
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
    OpsScript script;
};

int Usage() {
    std::fputs("Usage: tamrick-cli apply IN OUT [--foreground RRGGBB] [--background RRGGBB] [--quality N]\n"
               "                          [--max-size W,H] [--seed N] OP [OP ...]\n",
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
    return Complain("unknown option " + option);
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
    for (std::size_t i = 2; i < words.size(); ++i) {
        if (!options.script.Add(words[i])) {
            return Complain(options.script.Error());
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
    CUndoRecord undo;
    CDocumentFiles files(doc, undo, options.limits.value_or(LoadLimits::AtStartUp()));
    const int quality = options.quality;
    files.SetJpegQuality([quality] { return quality; });
    if (!files.OnOpenDocument(options.input)) {
        return kExitFailure;
    }
    CommandContext ctx{doc, undo, options.foreground, options.background};
    const int failed = options.script.Run(ctx);
    if (failed >= 0) {
        std::fprintf(stderr,
                     "tamrick-cli apply: operation %d could not be carried out; nothing was written\n",
                     failed + 1);
        return kExitFailure;
    }
    if (!files.OnSaveDocument(options.output)) {
        std::fprintf(stderr, "tamrick-cli apply: cannot write %s\n", options.output.c_str());
        return kExitFailure;
    }
    return kExitSuccess;
}
