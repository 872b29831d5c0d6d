#include "cli/InfoCommand.h"

#include "cli/CliCommand.h"
#include "cli/PictureOptions.h"
#include "formats/FileResult.h"
#include "formats/ImageFileType.h"
#include "formats/PictureLoader.h"
#include "image/CDibImage.h"
#include "platform/StringTable.h"

#include <cstdio>

namespace {
int Usage() {
    std::fputs("Usage: tamrick-cli info FILE [--max-size W,H]\n", stderr);
    return kExitUsage;
}
} // namespace

int RunInfoCommand(const std::vector<std::string>& args) {
    if (args.size() != 1 && !(args.size() == 3 && args[1] == "--max-size")) {
        return Usage();
    }
    LoadLimitSize limits;
    if (args.size() == 3) {
        const auto parsed = ParseMaxSize(args[2]);
        if (!parsed) {
            return Usage();
        }
        limits = *parsed;
    } else {
        limits = LoadLimits::AtStartUp();
    }
    std::unique_ptr<CDibImage> picture;
    PictureFileInfo info;
    const int result = LoadPicture(args[0], limits, picture, &info);
    if (result != kFileOk) {
        PrintFileError(result, std::string(platform::LoadString(platform::IDS_UNABLE_TO_OPEN)));
        return kExitFailure;
    }
    const bool reduced = picture->Width() != info.fileWidth || picture->Height() != info.fileHeight;
    std::printf("type: %s\nwidth: %d\nheight: %d\nfile-width: %d\nfile-height: %d\ndpi: %d %d\nreduced: %d\n"
                "load-limits: %d %d\nalpha: %d\n",
                ImageFileTypeName(static_cast<ImageFileType>(info.type)), picture->Width(), picture->Height(),
                info.fileWidth, info.fileHeight, picture->DpiX(), picture->DpiY(), reduced ? 1 : 0, limits.width,
                limits.height, info.transparent ? 1 : 0);
    return kExitSuccess;
}
