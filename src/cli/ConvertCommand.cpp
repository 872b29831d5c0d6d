#include "cli/ConvertCommand.h"

#include "cli/CliCommand.h"
#include "cli/PictureOptions.h"
#include "formats/FileResult.h"
#include "formats/JpegQuality.h"
#include "formats/PictureLoader.h"
#include "formats/PictureSaver.h"
#include "image/CDibImage.h"
#include "platform/StringTable.h"

#include <cstdio>

namespace {
struct ConvertOptions {
    std::string input;
    std::string output;
    int quality = JpegQuality::kDefault;
    std::optional<LoadLimitSize> limits;
};

int Usage() {
    std::fputs("Usage: tamrick-cli convert IN OUT [--quality N] [--max-size W,H]\n", stderr);
    return kExitUsage;
}

// Fills `options`; false on any unknown, missing or malformed argument.
bool ParseArguments(const std::vector<std::string>& args, ConvertOptions& options) {
    std::vector<std::string> paths;
    for (std::size_t i = 0; i < args.size(); ++i) {
        const std::string& arg = args[i];
        if (arg != "--quality" && arg != "--max-size") {
            if (arg.starts_with("--")) {
                return false;
            }
            paths.push_back(arg);
            continue;
        }
        if (++i == args.size()) {
            return false;
        }
        if (arg == "--quality") {
            const auto quality = ParseInt(args[i]);
            if (!quality || !JpegQuality::IsValid(*quality)) {
                std::fprintf(stderr, "%s\n", platform::LoadString(platform::IDS_QUALITY_OUT_OF_RANGE).data());
                return false;
            }
            options.quality = *quality;
        } else if (!(options.limits = ParseMaxSize(args[i]))) {
            return false;
        }
    }
    if (paths.size() != 2) {
        return false;
    }
    options.input = paths[0];
    options.output = paths[1];
    return true;
}
} // namespace

int RunConvertCommand(const std::vector<std::string>& args) {
    ConvertOptions options;
    options.quality = JpegQuality::Read();
    if (!ParseArguments(args, options)) {
        return Usage();
    }
    if (!IsSaveableName(options.output)) {
        std::fprintf(stderr, "tamrick-cli convert: %s\n", UnknownSaveTypeMessage().c_str());
        return kExitUsage;
    }
    std::unique_ptr<CDibImage> picture;
    const int loaded = LoadPicture(options.input, options.limits.value_or(LoadLimits::AtStartUp()), picture);
    if (loaded != kFileOk) {
        PrintFileError(loaded, std::string(platform::LoadString(platform::IDS_UNABLE_TO_OPEN)));
        return kExitFailure;
    }
    const int saved = SavePicture(options.output, *picture, options.quality);
    if (saved != kFileOk) {
        PrintFileError(saved, "tamrick-cli: cannot write " + options.output + ": " + SaveFailureReason());
        return kExitFailure;
    }
    return kExitSuccess;
}
