#pragma once

#include <cstdint>

// The largest picture a file is loaded at (a BMP may be up to twice this in
// each direction). Found once at start-up by trial allocation: starting from
// the start size, both sides are halved while a 24-bit picture of that size
// cannot be allocated; below 240 wide the limits become 240 x 320.
//
// The start size comes from the machine: a square whose 24-bit picture takes
// at most an eighth of the physical memory, at most 30000 x 30000 (24 GiB of
// memory gives 30000 x 30000, 2 GiB about 9200 x 9200). Users may lower or
// raise it, between 240 x 320 and 30000 x 30000, with the settings
// "MainSection" / "MaxLoadWidth" and "MainSection" / "MaxLoadHeight".
struct LoadLimitSize {
    int width = 0;
    int height = 0;
};

class LoadLimits {
public:
    static constexpr int kFloorWidth = 240;
    static constexpr int kFloorHeight = 320;
    static constexpr int kMostRaised = 30000;
    static constexpr int kLargestSide = 32767; // a picture side is a signed 16-bit value
    static constexpr int kMemoryShare = 8; // a picture may take 1/8 of the memory
    static constexpr const char* kSection = "MainSection";
    static constexpr const char* kWidthKey = "MaxLoadWidth";
    static constexpr const char* kHeightKey = "MaxLoadHeight";

    // Trial allocation from the given start size.
    static LoadLimitSize Compute(int startWidth, int startHeight);
    // The start size for a machine with `physicalBytes` of memory.
    static LoadLimitSize MachineStart(std::uint64_t physicalBytes);
    // The start size: the user's settings where present, else the machine's.
    static LoadLimitSize StartFromSettings();
    // What the application and tamrick-cli compute at start-up.
    static LoadLimitSize AtStartUp() {
        const LoadLimitSize start = StartFromSettings();
        return Compute(start.width, start.height);
    }

    // The physical memory of this machine, or the size a test set.
    static std::uint64_t PhysicalMemory();
    // Test hook: pretend the machine has `bytes` of memory (0: the real size).
    static void FakePhysicalMemory(std::uint64_t bytes);
};
