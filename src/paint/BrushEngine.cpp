#include "paint/BrushEngine.h"

#include "image/CDibImage.h"
#include "image/DibHelpers.h"

#include <algorithm>
#include <cstdlib>

void BrushEngine::SetForegroundColor(ColorWord color) {
    m_foreground = color;
    m_foreChannels[0] = static_cast<std::int16_t>(BlueOf(color));
    m_foreChannels[1] = static_cast<std::int16_t>(GreenOf(color));
    m_foreChannels[2] = static_cast<std::int16_t>(RedOf(color));
}

void BrushEngine::SetBackgroundColor(ColorWord color) {
    m_background = color;
    m_backChannels[0] = static_cast<std::int16_t>(BlueOf(color));
    m_backChannels[1] = static_cast<std::int16_t>(GreenOf(color));
    m_backChannels[2] = static_cast<std::int16_t>(RedOf(color));
}

ColorWord BrushEngine::ReadPixel(int x, int y) const {
    if (m_target == nullptr) {
        return 0;
    }
    if (m_target->BitsPerPixel() == 1) {
        ColorWord color = 0;
        m_target->GetPaletteColor(m_target->GetBit(x, y), color);
        return color;
    }
    return m_target->GetPixel(x, y);
}

void BrushEngine::ReadPixel(int x, int y, int& blue, int& green, int& red) const {
    const ColorWord color = ReadPixel(x, y);
    blue = BlueOf(color);
    green = GreenOf(color);
    red = RedOf(color);
}

void BrushEngine::SetGrain(int opacity, int density) {
    m_grainOpacity = static_cast<std::int16_t>(std::clamp(opacity, 0, 256));
    m_grainDensity = static_cast<std::int16_t>(std::max(density, 1));
}

void BrushEngine::SetSpeckle(int opacity, int jitter, int density) {
    m_speckleOpacity = static_cast<std::int16_t>(std::clamp(opacity, 0, 256));
    m_speckleJitter = static_cast<std::int16_t>(jitter);
    m_speckleDensity = static_cast<std::int16_t>(std::max(density, 1));
}

void BrushEngine::ComputeForegroundHue(int red, int green, int blue) {
    const int high = std::max({red, green, blue});
    const int low = std::min({red, green, blue});
    if (high <= low) {
        m_hueSaturation = 0;
        m_foregroundHue = -1;
        return;
    }
    const int delta = high - low;
    const int saturation = delta * 255 / high;
    int hue = 0;
    if (high == red) {
        hue = ((green - blue) * 60 + delta / 2) / delta;
    } else if (high == green) {
        hue = ((blue - red) * 60 + delta / 2) / delta + 120;
    } else {
        hue = ((red - green) * 60 + delta / 2) / delta + 240;
    }
    if (hue < 0) {
        hue += 360;
    }
    const int sector = hue / 60;
    const float fraction = static_cast<float>(hue) * 0.016666668f - static_cast<float>(sector);
    m_foregroundHue = static_cast<std::int16_t>(hue);
    m_hueSaturation = static_cast<std::int16_t>(saturation);
    m_hueInverseSaturation = static_cast<std::int16_t>(255 - saturation);
    m_hueQFactor =
        static_cast<std::int16_t>(255 - static_cast<int>(static_cast<float>(saturation) * fraction));
    m_hueTFactor =
        static_cast<std::int16_t>(255 - static_cast<int>(static_cast<float>(saturation) * (1.0f - fraction)));
    m_hueSector = static_cast<std::int16_t>(sector);
    m_hueFraction255 = static_cast<std::int16_t>(static_cast<int>(fraction * 255.0f));
    m_hueInverseFraction255 = static_cast<std::int16_t>(static_cast<int>((1.0f - fraction) * 255.0f));
}

void BrushEngine::SetColorMatchBounds(int similarityRed, int similarityGreen, int similarityBlue) {
    if (m_target == nullptr || m_target->BitsPerPixel() <= 8) {
        return;
    }
    SetForegroundColor(m_foreground);
    SetBackgroundColor(m_background);
    const int similarity[3] = {similarityRed, similarityGreen, similarityBlue};
    const int channel[3] = {m_foreChannels[2], m_foreChannels[1], m_foreChannels[0]}; // red, green, blue
    for (int i = 0; i < 3; ++i) {
        m_matchBounds[i] = static_cast<std::int16_t>(std::min(channel[i] + similarity[i], 255));
        m_matchBounds[3 + i] = static_cast<std::int16_t>(std::max(channel[i] - similarity[i], 0));
    }
}

// An integer midpoint walk per row: the half-width w whose square is nearest
// to r*r minus the squared row distance. Odd diameters measure rows from the
// centre row; even ones from the line between the two centre rows, so their
// distances are half-integers (everything is scaled by 4 to stay integral).
// The table is symmetric both ways, and the middle rows span the full square.
void BrushEngine::BuildOvalTable(int size) {
    m_ovalValid = 1;
    size = std::clamp(size, 1, kMaxPenSize);
    m_ovalSize = size;
    const int r = size / 2;
    const bool even = size % 2 == 0;
    const int scale = even ? 4 : 1;
    const int radiusSquared = r * r * scale;
    int w = r;
    const int steps = even ? r : r + 1;
    for (int k = 0; k < steps; ++k) {
        const int distance = even ? 2 * k + 1 : k; // scaled row distance
        const int target = radiusSquared - distance * distance;
        while (w > 0 && w * w * scale > target) {
            --w;
        }
        if (w < r && (w + 1) * (w + 1) * scale - target < target - w * w * scale) {
            ++w;
        }
        const int shrink = r - w;
        const int upper = even ? r - 1 - k : r - k;
        const int lower = even ? r + k : r + k;
        for (const int row : {upper, lower}) {
            m_ovalRows[row][0] = -r + shrink;
            m_ovalRows[row][1] = size - r - 1 - shrink;
        }
    }
}

void BrushEngine::ClearSprayMask() {
    std::fill(std::begin(m_sprayMask), std::end(m_sprayMask), std::uint8_t{0});
}

// The pattern follows the pen shapes; the strength falls by one per square
// ring around the centre cell.
void BrushEngine::BuildSprayMask(int size, int kind, int base) {
    if (size < 1 || size > kSprayCells) {
        return;
    }
    ClearSprayMask();
    m_spraySize = size;
    if (kind == kShapeOval && size > 2) {
        BuildOvalTable(size);
    }
    const int h = size / 2;
    for (int row = 0; row < size; ++row) {
        for (int column = 0; column < size; ++column) {
            bool inside = true;
            switch (kind) {
            case kShapeOval:
                inside = size <= 2 || (column - h >= m_ovalRows[row][0] && column - h <= m_ovalRows[row][1]);
                break;
            case kShapeHLine:
                inside = row == h;
                break;
            case kShapeVLine:
                inside = column == h;
                break;
            case kShapeSlash:
                inside = row == column;
                break;
            case kShapeBSlash:
                inside = row == size - 1 - column;
                break;
            default:
                break;
            }
            const int ring = std::max(std::abs(row - h), std::abs(column - h));
            const int strength = inside ? base + h - ring : 0;
            m_sprayMask[row * kSprayCells + column] = static_cast<std::uint8_t>(std::clamp(strength, 0, 255));
        }
    }
}

// Each sprayed cell moves its pixel towards the foreground colour by its
// strength in sixteenths (at most all the way).
void BrushEngine::SprayAt(int x, int y) {
    if (m_target == nullptr || m_target->BitsPerPixel() != 24) {
        return;
    }
    const int h = m_spraySize / 2;
    for (int row = 0; row < m_spraySize; ++row) {
        const int py = y - h + row;
        if (py < 0 || py >= m_target->Height()) {
            continue;
        }
        std::uint8_t* line = m_target->RowData(py);
        for (int column = 0; column < m_spraySize; ++column) {
            const int px = x - h + column;
            const int strength = m_sprayMask[row * kSprayCells + column];
            if (strength == 0 || px < 0 || px >= m_target->Width()) {
                continue;
            }
            const int a = std::min(strength * 16, 256);
            std::uint8_t* p = line + 3 * px;
            for (int c = 0; c < 3; ++c) {
                p[c] = static_cast<std::uint8_t>(((256 - a) * p[c] + a * m_foreChannels[c]) >> 8);
            }
        }
    }
}
