#pragma once

// The largest picture a file is loaded at (a BMP may be up to twice this in
// each direction). Found once at start-up by trial allocation: starting from
// the start size, both sides are halved while a 24-bit picture of that size
// cannot be allocated; below 240 wide the limits become 240 x 320.
//
// The start size is 1920 x 2560. Users with more memory may raise it, up to
// 30000 x 30000, with the settings "MainSection" / "MaxLoadWidth" and
// "MainSection" / "MaxLoadHeight"; smaller values are ignored.
struct LoadLimitSize {
    int width = 0;
    int height = 0;
};

class LoadLimits {
public:
    static constexpr int kStartWidth = 1920;
    static constexpr int kStartHeight = 2560;
    static constexpr int kFloorWidth = 240;
    static constexpr int kFloorHeight = 320;
    static constexpr int kMostRaised = 30000;
    static constexpr const char* kSection = "MainSection";
    static constexpr const char* kWidthKey = "MaxLoadWidth";
    static constexpr const char* kHeightKey = "MaxLoadHeight";

    // Trial allocation from the given start size.
    static LoadLimitSize Compute(int startWidth, int startHeight);
    // The start size from the settings (default 1920 x 2560).
    static LoadLimitSize StartFromSettings();
    // What the application computes at start-up.
    static LoadLimitSize AtStartUp() {
        const LoadLimitSize start = StartFromSettings();
        return Compute(start.width, start.height);
    }
};
