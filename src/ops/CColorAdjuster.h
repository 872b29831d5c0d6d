#pragma once

#include <cstdint>

class CDibImage;

// The pixel work of Brightness/Contrast, Gamma and Hue/Saturation. Brightness,
// contrast and gamma become one 256-entry table per channel; hue/saturation is
// an integer hue-saturation-value round trip per pixel. The source is never
// written, so every recomputation starts again from the unchanged picture.
// Single-precision steps are kept where the rules call for them, since their
// rounding is part of the result.
class CColorAdjuster {
public:
    virtual ~CColorAdjuster() = default;

    void SetTarget(CDibImage* target) { m_dst = target; }
    void SetSource(const CDibImage* source);

    // Table builders (each writes one whole 256-entry table).
    static void ContrastTable(int contrast, std::uint8_t* table);
    // Moves an already built table toward white (b > 0) or black (b < 0).
    static void BrightnessTable(int brightness, std::uint8_t* table);
    static void GammaTable(int gamma, std::uint8_t* table);

    void BuildBrightnessContrast(int brightnessBlue, int brightnessGreen, int brightnessRed, int contrastBlue,
                                 int contrastGreen, int contrastRed);
    void BuildGamma(int red, int green, int blue);
    void ResetTables();
    int ApplyTables();
    int ApplyHueSaturation(int hueShift, int saturation);

    const std::uint8_t* RedTable() const { return m_redTable; }
    const std::uint8_t* GreenTable() const { return m_greenTable; }
    const std::uint8_t* BlueTable() const { return m_blueTable; }

private:
    bool Ready() const;

    std::uint8_t m_redTable[256] = {};
    std::uint8_t m_greenTable[256] = {};
    std::uint8_t m_blueTable[256] = {};
    CDibImage* m_dst = nullptr;
    const CDibImage* m_src = nullptr;
    int m_width = 0;
    int m_height = 0;
    std::uint32_t m_rowBytes = 0;
    std::int16_t m_hueShift = 0;
    std::int16_t m_saturation = 0;
};
