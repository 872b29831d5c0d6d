// The span procedures of the brush engine's draw modes. Each clips its span
// to the image, then blends the target row in place.
#include "paint/BrushEngine.h"

#include "image/CDibImage.h"

#include <algorithm>
#include <cstdlib>
#include <cstring>

namespace {

// Bits left..right of a mask row, whole bytes at a time in the middle.
void SetBits(std::uint8_t* row, int left, int right, bool on) {
    const int first = left >> 3;
    const int last = right >> 3;
    const auto head = static_cast<std::uint8_t>(0xFF >> (left & 7));
    const auto tail = static_cast<std::uint8_t>(0xFF << (7 - (right & 7)));
    const auto apply = [on](std::uint8_t& byte, std::uint8_t bits) {
        byte = on ? static_cast<std::uint8_t>(byte | bits) : static_cast<std::uint8_t>(byte & ~bits);
    };
    if (first == last) {
        apply(row[first], static_cast<std::uint8_t>(head & tail));
        return;
    }
    apply(row[first], head);
    std::memset(row + first + 1, on ? 0xFF : 0x00, static_cast<std::size_t>(last - first - 1));
    apply(row[last], tail);
}

bool SameColor(const std::uint8_t* p, const std::int16_t* c) {
    return p[0] == c[0] && p[1] == c[1] && p[2] == c[2];
}

// Blue, green, red of a pixel from value V and the three products of the
// hue rule, by the hue sector.
void SetFromSector(std::uint8_t* p, int sector, int v, int pp, int q, int t) {
    int red = v;
    int green = t;
    int blue = pp;
    switch (sector) {
    case 1:
        red = q, green = v, blue = pp;
        break;
    case 2:
        red = pp, green = v, blue = t;
        break;
    case 3:
        red = pp, green = q, blue = v;
        break;
    case 4:
        red = t, green = pp, blue = v;
        break;
    case 5:
        red = v, green = pp, blue = q;
        break;
    default:
        break;
    }
    p[0] = static_cast<std::uint8_t>(blue);
    p[1] = static_cast<std::uint8_t>(green);
    p[2] = static_cast<std::uint8_t>(red);
}

} // namespace

BrushEngine::SpanProc BrushEngine::SpanProcOf(int mode) {
    switch (mode) {
    case kModeLighten:
        return &SpanLighten;
    case kModeDarken:
        return &SpanDarken;
    case kModeHue:
        return &SpanHue;
    case kModeHueSaturation:
        return &SpanHueSaturation;
    case kModeColorReplace:
        return &SpanColorReplace;
    case kModeWash:
        return &SpanWash;
    case kModeGrain:
    case kModeGrainBoth:
        return &SpanGrain;
    case kModeSpeckle:
        return &SpanSpeckle;
    case kModeClone:
        return &SpanClone;
    default:
        return &SpanSolid;
    }
}

bool BrushEngine::ClipSpan(int& left, int& right, int row) const {
    if (right < 0 || left >= m_target->Width() || row < 0 || row >= m_target->Height() || left > right) {
        return false;
    }
    left = std::max(left, 0);
    right = std::min(right, m_target->Width() - 1);
    return true;
}

// The reference row, or null when the reference image does not reach it.
const std::uint8_t* BrushEngine::ReferenceRow(int row) const {
    if (m_reference == nullptr || m_reference->BitsPerPixel() != 24 || row >= m_reference->Height() ||
        m_reference->Width() < m_target->Width()) {
        return nullptr;
    }
    return m_reference->RowData(row);
}

void BrushEngine::SpanClone(BrushEngine& e, int left, int right, int row, std::uint8_t*) {
    const CDibImage* source = e.m_reference;
    if (!e.ClipSpan(left, right, row) || source == nullptr || e.m_target->BitsPerPixel() != 24 ||
        source->BitsPerPixel() != 24) {
        return;
    }
    // Offsets and points stay within the coordinate limit, so these sums fit.
    const int sourceRow = row - e.m_cloneDy;
    if (sourceRow < 0 || sourceRow >= source->Height()) {
        return;
    }
    left = std::max(left, e.m_cloneDx);
    right = std::min(right, source->Width() - 1 + e.m_cloneDx);
    if (left > right) {
        return;
    }
    std::memcpy(e.m_target->RowData(row) + 3 * static_cast<std::size_t>(left),
                source->RowData(sourceRow) + 3 * static_cast<std::size_t>(left - e.m_cloneDx),
                3 * static_cast<std::size_t>(right - left + 1));
}

void BrushEngine::SpanSolid(BrushEngine& e, int left, int right, int row, std::uint8_t* work) {
    if (!e.ClipSpan(left, right, row)) {
        return;
    }
    std::uint8_t* line = e.m_target->RowData(row);
    if (e.m_target->BitsPerPixel() == 1) {
        SetBits(line, left, right, e.m_foreground != 0);
    } else if (e.m_target->BitsPerPixel() == 24) {
        std::memcpy(line + 3 * left, work, static_cast<std::size_t>(right - left + 1) * 3);
    }
}

void BrushEngine::SpanLighten(BrushEngine& e, int left, int right, int row, std::uint8_t*) {
    const std::uint8_t* reference = e.ClipSpan(left, right, row) ? e.ReferenceRow(row) : nullptr;
    if (reference == nullptr || e.m_target->BitsPerPixel() != 24) {
        return;
    }
    std::uint8_t* line = e.m_target->RowData(row);
    const int shift = e.m_lightenDarkenShift;
    for (int i = 3 * left; i < 3 * (right + 1); ++i) {
        const int p = reference[i];
        line[i] = static_cast<std::uint8_t>(std::min(255, p + ((((255 - p) << shift) + 128) >> 8)));
    }
}

void BrushEngine::SpanDarken(BrushEngine& e, int left, int right, int row, std::uint8_t*) {
    const std::uint8_t* reference = e.ClipSpan(left, right, row) ? e.ReferenceRow(row) : nullptr;
    if (reference == nullptr || e.m_target->BitsPerPixel() != 24) {
        return;
    }
    std::uint8_t* line = e.m_target->RowData(row);
    const int shift = e.m_lightenDarkenShift;
    for (int i = 3 * left; i < 3 * (right + 1); ++i) {
        const int p = reference[i];
        line[i] = static_cast<std::uint8_t>(p - (((p << shift) + 128) >> 8));
    }
}

void BrushEngine::SpanHue(BrushEngine& e, int left, int right, int row, std::uint8_t*) {
    if (e.m_foregroundHue == -1 || e.m_target->BitsPerPixel() != 24 || !e.ClipSpan(left, right, row)) {
        return;
    }
    std::uint8_t* line = e.m_target->RowData(row);
    for (int x = left; x <= right; ++x) {
        std::uint8_t* p = line + 3 * x;
        const int v = std::max({p[0], p[1], p[2]});
        if (v == 0) {
            continue;
        }
        const int s = (v - std::min({p[0], p[1], p[2]})) * 255 / v;
        const int pp = (255 - s) * v / 255;
        const int q = (255 - e.m_hueFraction255 * s / 255) * v / 255;
        const int t = (255 - e.m_hueInverseFraction255 * s / 255) * v / 255;
        SetFromSector(p, e.m_hueSector, v, pp, q, t);
    }
}

void BrushEngine::SpanHueSaturation(BrushEngine& e, int left, int right, int row, std::uint8_t*) {
    if (e.m_foregroundHue == -1 || e.m_target->BitsPerPixel() != 24 || !e.ClipSpan(left, right, row)) {
        return;
    }
    std::uint8_t* line = e.m_target->RowData(row);
    for (int x = left; x <= right; ++x) {
        std::uint8_t* p = line + 3 * x;
        const int v = std::max({p[0], p[1], p[2]});
        const int pp = e.m_hueInverseSaturation * v / 255;
        const int q = e.m_hueQFactor * v / 255;
        const int t = e.m_hueTFactor * v / 255;
        SetFromSector(p, e.m_hueSector, v, pp, q, t);
    }
}

void BrushEngine::SpanColorReplace(BrushEngine& e, int left, int right, int row, std::uint8_t*) {
    if (!e.ClipSpan(left, right, row)) {
        return;
    }
    std::uint8_t* line = e.m_target->RowData(row);
    if (e.m_target->BitsPerPixel() == 1) {
        if (e.m_foreground != e.m_background) {
            SetBits(line, left, right, e.m_background != 0);
        }
        return;
    }
    if (e.m_target->BitsPerPixel() != 24) {
        return;
    }
    const std::int16_t* upper = e.m_matchBounds;     // red, green, blue
    const std::int16_t* lower = e.m_matchBounds + 3; // red, green, blue
    for (int x = left; x <= right; ++x) {
        std::uint8_t* p = line + 3 * x;
        if (p[0] >= lower[2] && p[0] <= upper[2] && p[1] >= lower[1] && p[1] <= upper[1] &&
            p[2] >= lower[0] && p[2] <= upper[0]) {
            p[0] = static_cast<std::uint8_t>(e.m_backChannels[0]);
            p[1] = static_cast<std::uint8_t>(e.m_backChannels[1]);
            p[2] = static_cast<std::uint8_t>(e.m_backChannels[2]);
        }
    }
}

// Wash: at most one application of the opacity over the reference picture
// however often the pen passes; what is already nearer the ink is kept.
void BrushEngine::SpanWash(BrushEngine& e, int left, int right, int row, std::uint8_t*) {
    const std::uint8_t* reference = e.ClipSpan(left, right, row) ? e.ReferenceRow(row) : nullptr;
    if (reference == nullptr || e.m_target->BitsPerPixel() != 24) {
        return;
    }
    std::uint8_t* line = e.m_target->RowData(row);
    const std::int16_t* c = e.m_foreChannels;
    const int a = e.m_washOpacity;
    for (int x = left; x <= right; ++x) {
        const std::uint8_t* r = reference + 3 * x;
        std::uint8_t* t = line + 3 * x;
        if (SameColor(r, c)) {
            t[0] = r[0], t[1] = r[1], t[2] = r[2];
            continue;
        }
        if (SameColor(t, c)) {
            continue;
        }
        int blend[3];
        for (int k = 0; k < 3; ++k) {
            blend[k] = ((256 - a) * r[k] + a * c[k]) >> 8;
        }
        int k = 0;
        while (k < 2 && std::abs(blend[k] - c[k]) == std::abs(t[k] - c[k])) {
            ++k;
        }
        if (std::abs(t[k] - c[k]) > std::abs(blend[k] - c[k])) {
            t[0] = static_cast<std::uint8_t>(blend[0]);
            t[1] = static_cast<std::uint8_t>(blend[1]);
            t[2] = static_cast<std::uint8_t>(blend[2]);
        }
    }
}

// Grain: a pixel takes the ink with probability 1/density, and can only get
// darker.
void BrushEngine::SpanGrain(BrushEngine& e, int left, int right, int row, std::uint8_t*) {
    const std::uint8_t* reference = e.ClipSpan(left, right, row) ? e.ReferenceRow(row) : nullptr;
    if (reference == nullptr || e.m_target->BitsPerPixel() != 24) {
        return;
    }
    std::uint8_t* line = e.m_target->RowData(row);
    const std::int16_t* c = e.m_foreChannels;
    const int a = e.m_grainOpacity;
    const int density = std::max<int>(e.m_grainDensity, 1);
    for (int x = left; x <= right; ++x) {
        const int r = std::rand();
        const std::uint8_t* ref = reference + 3 * x;
        std::uint8_t* t = line + 3 * x;
        const bool ink = r % density < 1;
        for (int k = 0; k < 3; ++k) {
            const int other = ink ? (c[k] * a + (256 - a) * ref[k]) >> 8 : ref[k];
            t[k] = static_cast<std::uint8_t>(std::min<int>(t[k], other));
        }
    }
}

void BrushEngine::SpanSpeckle(BrushEngine& e, int left, int right, int row, std::uint8_t*) {
    if (e.m_target->BitsPerPixel() != 24 || !e.ClipSpan(left, right, row)) {
        return;
    }
    std::uint8_t* line = e.m_target->RowData(row);
    const std::int16_t* c = e.m_foreChannels;
    const int base = e.m_speckleOpacity;
    const int jitter = e.m_speckleJitter;
    const int density = std::max<int>(e.m_speckleDensity, 1);
    for (int x = left; x <= right; ++x) {
        const int r1 = std::rand();
        const int r2 = std::rand();
        const int pick = r1 % 3;
        const int a = pick == 0 ? base : pick == 1 ? std::min(256, base + jitter) : std::max(0, base - jitter);
        std::uint8_t* t = line + 3 * x;
        if (r2 % density != 0 || SameColor(t, c)) {
            continue;
        }
        for (int k = 0; k < 3; ++k) {
            t[k] = static_cast<std::uint8_t>(((256 - a) * t[k] + a * c[k]) >> 8);
        }
    }
}
