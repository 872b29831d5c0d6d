#include "formats/JpegQuality.h"

#include "platform/Settings.h"

#include <algorithm>

namespace {
constexpr const char* kSection = "MainSection";
constexpr const char* kKey = "JPGQuality";
} // namespace

int JpegQuality::Read() {
    return std::clamp(platform::Settings::ReadInt(kSection, kKey, kDefault), kLowest, kHighest);
}

void JpegQuality::Write(int quality) {
    platform::Settings::WriteInt(kSection, kKey, std::clamp(quality, kLowest, kHighest));
}
