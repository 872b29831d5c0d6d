#include "ops/CImageFilter.h"

#include "image/CDibImage.h"
#include "ops/FilterMath.h"
#include "ops/PixelKernels.h"
#include "ops/RowPasses.h"

#include <algorithm>
#include <cstring>

using ops::ForEachStoredRow;

void CImageFilter::SetTarget(CDibImage* target) {
    m_dst = target;
}

void CImageFilter::SetSource(const CDibImage* source) {
    m_src = source;
    m_width = source != nullptr ? source->Width() : 0;
    m_height = source != nullptr ? source->Height() : 0;
    m_rowBytes = source != nullptr ? source->RowBytes() : 0;
}

bool CImageFilter::Ready() const {
    return m_src != nullptr && m_dst != nullptr && m_src->IsValid() && m_dst->IsValid() && m_height > 0 &&
           m_dst->ImageBytes() >= m_src->ImageBytes();
}

void CImageFilter::SetColorA(ColorWord color) {
    m_colorA[0] = static_cast<std::int16_t>(RedOf(color));
    m_colorA[1] = static_cast<std::int16_t>(GreenOf(color));
    m_colorA[2] = static_cast<std::int16_t>(BlueOf(color));
}

void CImageFilter::SetColorB(ColorWord color) {
    m_colorB[0] = static_cast<std::int16_t>(RedOf(color));
    m_colorB[1] = static_cast<std::int16_t>(GreenOf(color));
    m_colorB[2] = static_cast<std::int16_t>(BlueOf(color));
}

int CImageFilter::Invert() {
    if (!Ready()) {
        return 1;
    }
    const std::uint8_t* src = m_src->Bits();
    std::uint8_t* dst = m_dst->MutableBits();
    const std::uint32_t rowBytes = m_rowBytes;
    // Padding bytes included: every stored byte is complemented.
    return ops::ForEachStoredBand(m_height, [=](int begin, int end) {
        const std::size_t offset = static_cast<std::size_t>(begin) * rowBytes;
        ops::InvertBytes(src + offset, dst + offset, static_cast<std::size_t>(end - begin) * rowBytes);
    });
}

int CImageFilter::Gray() {
    if (!Ready()) {
        return 1;
    }
    const std::uint8_t* src = m_src->Bits();
    std::uint8_t* dst = m_dst->MutableBits();
    const std::uint32_t rowBytes = m_rowBytes;
    const int width = m_width;
    return ForEachStoredRow(m_height, 0, [=](int y, std::uint8_t*) {
        const std::size_t offset = static_cast<std::size_t>(y) * rowBytes;
        ops::GrayRow(src + offset, dst + offset, width);
    });
}

ColorWord CImageFilter::LevelColor(int code, ColorWord foreground, ColorWord background) {
    switch (code) {
    case 28:
        return MakeColorWord(255, 0, 0);
    case 29:
        return MakeColorWord(0, 255, 0);
    case 30:
        return MakeColorWord(0, 0, 255);
    case 31:
        return MakeColorWord(0, 255, 255);
    case 32:
        return MakeColorWord(255, 0, 255);
    case 33:
        return MakeColorWord(255, 255, 0);
    case 34:
        return foreground;
    default:
        return background;
    }
}

int CImageFilter::ColorLevel(int code, ColorWord foreground, ColorWord background) {
    SetColorA(LevelColor(code, foreground, background));
    if (!Ready()) {
        return 1;
    }
    // The result depends only on the luminance, so it is tabled once per
    // level: blue, green, red in the low three bytes (memory order).
    std::uint32_t colors[256];
    const int channels[3] = {m_colorA[2], m_colorA[1], m_colorA[0]}; // blue, green, red
    for (int lum = 0; lum < 256; ++lum) {
        std::uint8_t bytes[4] = {0, 0, 0, 0};
        for (int k = 0; k < 3; ++k) {
            const int c = channels[k];
            const int out = lum >= 128 ? c + (255 - c) * (lum - 128) / 127 : c - (127 - lum) * c / 127;
            bytes[k] = static_cast<std::uint8_t>(out);
        }
        std::memcpy(&colors[lum], bytes, 4);
    }
    const std::uint8_t* src = m_src->Bits();
    std::uint8_t* dst = m_dst->MutableBits();
    const std::uint32_t rowBytes = m_rowBytes;
    const int width = m_width;
    return ForEachStoredRow(m_height, static_cast<std::size_t>(width),
                            [=, &colors](int y, std::uint8_t* work) {
                                const std::size_t offset = static_cast<std::size_t>(y) * rowBytes;
                                ops::LuminanceRow(src + offset, work, width);
                                ops::LevelRow(work, dst + offset, width, colors);
                            });
}

int CImageFilter::ColorTone(int code) {
    // Factor per channel (red, green, blue) for codes 22..27.
    static constexpr int kFactors[6][3] = {{-1, 1, -1}, {-1, -1, 1}, {-1, 1, 1},
                                           {1, -1, -1}, {1, -1, 1},  {1, 1, -1}};
    if (code < 22 || code > 27) {
        return 0;
    }
    const int* factor = kFactors[code - 22];
    std::uint8_t tables[3][256]; // blue, green, red
    for (int v = 0; v < 256; ++v) {
        for (int channel = 0; channel < 3; ++channel) {
            const int k = factor[2 - channel];
            tables[channel][v] = static_cast<std::uint8_t>(std::min(v + (v >> 1) * k, 255));
        }
    }
    return PointRowsByTable(&tables[0][0]);
}

int CImageFilter::PointRowsByTable(const std::uint8_t* tables) {
    if (!Ready()) {
        return 1;
    }
    ops::ApplyChannelTables(m_src->Bits(), m_dst->MutableBits(), m_width, m_height, m_rowBytes, tables,
                            tables + 256, tables + 512);
    return 1;
}
