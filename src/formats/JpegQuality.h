#pragma once

// The JPEG quality used when saving: "MainSection" / "JPGQuality", 1..100,
// default 80. Values outside the range read as the nearest end.
class JpegQuality {
public:
    static constexpr int kDefault = 80;
    static constexpr int kLowest = 1;
    static constexpr int kHighest = 100;

    static int Read();
    static void Write(int quality);
    static bool IsValid(int quality) { return quality >= kLowest && quality <= kHighest; }
};
