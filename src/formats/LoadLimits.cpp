#include "formats/LoadLimits.h"

#include "image/DibHelpers.h"
#include "platform/HeapBlock.h"
#include "platform/Settings.h"

#include <algorithm>
#include <atomic>
#include <cmath>
#include <unistd.h>

namespace {
std::atomic<std::uint64_t> g_fakeMemory{0};
} // namespace

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

LoadLimitSize LoadLimits::MachineStart(std::uint64_t physicalBytes) {
    const double pixels = static_cast<double>(physicalBytes / kMemoryShare) / 3.0;
    const int side = static_cast<int>(std::min<double>(std::floor(std::sqrt(pixels)), kMostRaised));
    return LoadLimitSize{std::max(side, kFloorWidth), std::max(side, kFloorHeight)};
}

LoadLimitSize LoadLimits::StartFromSettings() {
    const LoadLimitSize machine = MachineStart(PhysicalMemory());
    const int width = platform::Settings::ReadInt(kSection, kWidthKey, machine.width);
    const int height = platform::Settings::ReadInt(kSection, kHeightKey, machine.height);
    return LoadLimitSize{std::clamp(width, kFloorWidth, kMostRaised), std::clamp(height, kFloorHeight, kMostRaised)};
}

std::uint64_t LoadLimits::PhysicalMemory() {
    const std::uint64_t fake = g_fakeMemory.load();
    if (fake != 0) {
        return fake;
    }
    const long pages = ::sysconf(_SC_PHYS_PAGES);
    const long pageSize = ::sysconf(_SC_PAGE_SIZE);
    if (pages <= 0 || pageSize <= 0) {
        return 0; // unknown: the floor size
    }
    return static_cast<std::uint64_t>(pages) * static_cast<std::uint64_t>(pageSize);
}

void LoadLimits::FakePhysicalMemory(std::uint64_t bytes) {
    g_fakeMemory.store(bytes);
}
