#pragma once

#include <cstdint>

namespace platform {

// Bytes of physical memory of the machine (0 when the system does not say).
std::uint64_t PhysicalMemoryBytes();

} // namespace platform
