#include "image/UndoLimits.h"

#include "platform/PhysicalMemory.h"
#include "platform/Settings.h"

#include <algorithm>

namespace undolimits {

int DefaultMemoryMB(std::uint64_t physicalBytes) {
    const std::uint64_t quarterMB = physicalBytes / 4 / (1024 * 1024);
    return static_cast<int>(std::clamp<std::uint64_t>(quarterMB, kMinMemoryMB, 4096));
}

int StoredSteps() {
    return std::clamp(platform::Settings::ReadInt(kSection, kStepsKey, kDefaultSteps), kMinSteps, kMaxSteps);
}

int StoredMemoryMB() {
    const int fallback = DefaultMemoryMB(platform::PhysicalMemoryBytes());
    return std::clamp(platform::Settings::ReadInt(kSection, kMemoryKey, fallback), kMinMemoryMB, kMaxMemoryMB);
}

CUndoHistory::Limits Make(int steps, int memoryMB) {
    return CUndoHistory::Limits{steps, static_cast<std::size_t>(memoryMB) * 1024 * 1024};
}

CUndoHistory::Limits Stored() {
    return Make(StoredSteps(), StoredMemoryMB());
}

} // namespace undolimits
