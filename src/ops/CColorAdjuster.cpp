#include "ops/CColorAdjuster.h"

#include "image/CDibImage.h"
#include "ops/RowPasses.h"

#include <algorithm>
#include <cmath>
#include <cstdlib>

void CColorAdjuster::SetSource(const CDibImage* source) {
    m_src = source;
    m_width = source != nullptr ? source->Width() : 0;
    m_height = source != nullptr ? source->Height() : 0;
    m_rowBytes = source != nullptr ? source->RowBytes() : 0;
}

bool CColorAdjuster::Ready() const {
    return m_src != nullptr && m_dst != nullptr && m_src->IsValid() && m_dst->IsValid() && m_height > 0 &&
           m_dst->ImageBytes() >= m_src->ImageBytes();
}

void CColorAdjuster::ContrastTable(int contrast, std::uint8_t* table) {
    const int m = (std::abs(contrast) * 127 + 50) / 100;
    if (contrast == 0) {
        for (int i = 0; i < 256; ++i) {
            table[i] = static_cast<std::uint8_t>(i);
        }
    } else if (contrast < 0) {
        if (contrast <= -100) {
            std::fill(table, table + 256, std::uint8_t{128});
            return;
        }
        float x = static_cast<float>(m);
        const float step = static_cast<float>(255 - 2 * m) * (1.0f / 255.0f);
        for (int i = 0; i < 256; ++i) {
            table[i] = static_cast<std::uint8_t>(static_cast<int>(x));
            x += step;
        }
    } else {
        const float y = contrast < 100 ? 255.0f / static_cast<float>(255 - 2 * m) : 0.0f;
        float x = 0.0f;
        for (int i = 0; i < 256; ++i) {
            table[i] = static_cast<std::uint8_t>(static_cast<int>(x));
            if (i > m) {
                if (i < 255 - m) {
                    x += y;
                } else {
                    x = 255.0f;
                }
            }
        }
    }
}

void CColorAdjuster::BrightnessTable(int brightness, std::uint8_t* table) {
    const int k = brightness * 256 / 100;
    if (k >= 1) {
        for (int i = 0; i < 256; ++i) {
            table[i] = static_cast<std::uint8_t>(table[i] + (((255 - table[i]) * k + 128) >> 8));
        }
    } else if (k < 0) {
        for (int i = 0; i < 256; ++i) {
            table[i] = static_cast<std::uint8_t>((table[i] * (k + 256) + 128) >> 8);
        }
    }
}

void CColorAdjuster::GammaTable(int gamma, std::uint8_t* table) {
    if (gamma > 79) {
        gamma = 0;
    }
    gamma = std::max(gamma, 1);
    if (gamma == 10) {
        for (int i = 0; i < 256; ++i) {
            table[i] = static_cast<std::uint8_t>(i);
        }
        return;
    }
    const float exponent = 10.0f / static_cast<float>(gamma);
    float x = 0.0f;
    for (int i = 0; i < 256; ++i) {
        const double value = std::pow(static_cast<double>(x), static_cast<double>(exponent)) * 255.0 + 0.5;
        table[i] = static_cast<std::uint8_t>(static_cast<unsigned>(value));
        x += 0.003921569f;
    }
}

void CColorAdjuster::BuildBrightnessContrast(int brightnessBlue, int brightnessGreen, int brightnessRed,
                                             int contrastBlue, int contrastGreen, int contrastRed) {
    ContrastTable(contrastBlue, m_blueTable);
    BrightnessTable(brightnessBlue, m_blueTable);
    ContrastTable(contrastGreen, m_greenTable);
    BrightnessTable(brightnessGreen, m_greenTable);
    ContrastTable(contrastRed, m_redTable);
    BrightnessTable(brightnessRed, m_redTable);
}

void CColorAdjuster::BuildGamma(int red, int green, int blue) {
    GammaTable(red, m_redTable);
    GammaTable(green, m_greenTable);
    GammaTable(blue, m_blueTable);
}

void CColorAdjuster::ResetTables() {
    for (int i = 0; i < 256; ++i) {
        m_redTable[i] = m_greenTable[i] = m_blueTable[i] = static_cast<std::uint8_t>(i);
    }
}

int CColorAdjuster::ApplyTables() {
    if (Ready()) {
        ops::ApplyChannelTables(m_src->Bits(), m_dst->MutableBits(), m_width, m_height, m_rowBytes,
                                m_blueTable, m_greenTable, m_redTable);
    }
    return 1;
}
