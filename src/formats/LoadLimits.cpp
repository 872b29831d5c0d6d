#include "formats/LoadLimits.h"

#include "image/DibHelpers.h"
#include "platform/HeapBlock.h"
#include "platform/Settings.h"

#include <algorithm>

LoadLimitSize LoadLimits::Compute(int startWidth, int startHeight) {
    LoadLimitSize limits{startWidth, startHeight};
    while (limits.width >= kFloorWidth) {
        const std::size_t bytes =
            static_cast<std::size_t>(DibRowBytes(limits.width, 24)) * static_cast<std::size_t>(limits.height);
        if (platform::HeapBlock::Allocate(bytes)) {
            return limits; // the trial block is freed at once
        }
        limits.width /= 2;
        limits.height /= 2;
    }
    return LoadLimitSize{kFloorWidth, kFloorHeight};
}

LoadLimitSize LoadLimits::StartFromSettings() {
    const int width = platform::Settings::ReadInt(kSection, kWidthKey, kStartWidth);
    const int height = platform::Settings::ReadInt(kSection, kHeightKey, kStartHeight);
    return LoadLimitSize{std::clamp(width, kStartWidth, kMostRaised),
                         std::clamp(height, kStartHeight, kMostRaised)};
}
