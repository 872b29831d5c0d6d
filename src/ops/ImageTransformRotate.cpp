// Rotation by an arbitrary angle: the sampling geometry shared by pictures and
// masks, the nearest-bit mask sampler and the bilinear picture sampler.
#include "image/CDibImage.h"
#include "ops/CImageTransform.h"
#include "platform/HeapBlock.h"

#include <algorithm>
#include <cmath>
#include <cstring>

namespace {

// Rounds half away from zero, as the mask sampler places its samples.
inline int RoundAway(double v) {
    return static_cast<int>(v < 0.0 ? v - 0.5 : v + 0.5);
}

} // namespace

void CImageTransform::RotationSineCosine(float angle, double& sine, double& cosine) {
    if (angle > 89.99f && angle < 90.01f) {
        sine = 1.0, cosine = 0.0;
    } else if (angle > 179.99f && angle < 180.01f) {
        sine = 0.0, cosine = -1.0;
    } else if (angle > 269.99f && angle < 270.01f) {
        sine = -1.0, cosine = 0.0;
    } else {
        const auto radians = static_cast<float>(angle * 0.017453292519943334);
        sine = std::sin(static_cast<double>(radians));
        cosine = std::cos(static_cast<double>(radians));
    }
}

void CImageTransform::RotatedSize(int width, int height, float angle, int& rotatedWidth, int& rotatedHeight) {
    double sine = 0.0;
    double cosine = 1.0;
    RotationSineCosine(angle, sine, cosine);
    // A hair below the exact box so that rounding noise never adds a pixel.
    constexpr double kSlack = 1e-6;
    rotatedWidth = static_cast<int>(std::ceil(width * std::fabs(cosine) + height * std::fabs(sine) - kSlack));
    rotatedHeight =
        static_cast<int>(std::ceil(width * std::fabs(sine) + height * std::fabs(cosine) - kSlack));
    rotatedWidth = std::max(rotatedWidth, 1);
    rotatedHeight = std::max(rotatedHeight, 1);
}

int CImageTransform::RotateByAngle(float angle, bool fill) {
    if (!Ready()) {
        return 0;
    }
    m_sourceCenterX = (m_source->Width() - 1) * 0.5;
    m_sourceCenterY = (m_source->Height() - 1) * 0.5;
    m_targetCenterX = (m_width - 1) * 0.5;
    m_targetCenterY = (m_height - 1) * 0.5;
    RotationSineCosine(angle, m_sine, m_cosine);
    platform::HeapBlock row = platform::HeapBlock::Allocate(m_rowBytes);
    if (!row) {
        return 0;
    }
    const bool mask = m_source->BitsPerPixel() != 24;
    double rowSin = -m_targetCenterY * m_sine;
    double rowCos = -m_targetCenterY * m_cosine;
    for (int y = 0; y < m_height; ++y) {
        if (mask) {
            RotateMaskRow(y, rowSin, rowCos, row.data(), fill);
        } else {
            RotatePictureRow(y, rowSin, rowCos, row.data());
        }
        m_target->SetRow(y, row.data());
        rowSin += m_sine;
        rowCos += m_cosine;
    }
    return 1;
}

void CImageTransform::RotateMaskRow(int, double rowSin, double rowCos, std::uint8_t* row, bool fill) const {
    const int sourceWidth = m_source->Width();
    const int sourceHeight = m_source->Height();
    const bool fillBit = fill && m_fillColor == 1;
    std::memset(row, 0, m_rowBytes);
    double columnSin = -m_targetCenterX * m_sine;
    double columnCos = -m_targetCenterX * m_cosine;
    for (int x = 0; x < m_width; ++x) {
        const int sx = RoundAway(m_sourceCenterX + columnCos + rowSin);
        const int sy = RoundAway(m_sourceCenterY - columnSin + rowCos);
        const bool inside = sx >= 0 && sx < sourceWidth && sy >= 0 && sy < sourceHeight;
        if (inside ? m_source->GetBit(sx, sy) != 0 : fillBit) {
            row[x >> 3] = static_cast<std::uint8_t>(row[x >> 3] | (0x80 >> (x & 7)));
        }
        columnSin += m_sine;
        columnCos += m_cosine;
    }
}

// Pixels whose nearest source pixel exists are covered (the same rule as the
// mask sampler, so a turned floating selection's mask and pixels agree); they
// blend the four source pixels around the sample point with 8-bit weights,
// clamped at the picture's edges.
void CImageTransform::RotatePictureRow(int, double rowSin, double rowCos, std::uint8_t* row) const {
    const int sourceWidth = m_source->Width();
    const int sourceHeight = m_source->Height();
    const std::uint8_t* bits = m_source->Bits();
    const std::uint32_t sourceRowBytes = m_source->RowBytes();
    const std::uint8_t fill[3] = {static_cast<std::uint8_t>(BlueOf(m_fillColor)),
                                  static_cast<std::uint8_t>(GreenOf(m_fillColor)),
                                  static_cast<std::uint8_t>(RedOf(m_fillColor))};
    double columnSin = -m_targetCenterX * m_sine;
    double columnCos = -m_targetCenterX * m_cosine;
    for (int x = 0; x < m_width; ++x, row += 3) {
        const double sx = m_sourceCenterX + columnCos + rowSin;
        const double sy = m_sourceCenterY - columnSin + rowCos;
        columnSin += m_sine;
        columnCos += m_cosine;
        const int nx = RoundAway(sx);
        const int ny = RoundAway(sy);
        if (nx < 0 || nx >= sourceWidth || ny < 0 || ny >= sourceHeight) {
            std::memcpy(row, fill, 3);
            continue;
        }
        const double fx = std::clamp(sx, 0.0, sourceWidth - 1.0);
        const double fy = std::clamp(sy, 0.0, sourceHeight - 1.0);
        const int x0 = static_cast<int>(fx);
        const int y0 = static_cast<int>(fy);
        const int x1 = std::min(x0 + 1, sourceWidth - 1);
        const int y1 = std::min(y0 + 1, sourceHeight - 1);
        const int wx = static_cast<int>((fx - x0) * 256.0 + 0.5);
        const int wy = static_cast<int>((fy - y0) * 256.0 + 0.5);
        const std::uint8_t* top = bits + static_cast<std::size_t>(sourceHeight - 1 - y0) * sourceRowBytes;
        const std::uint8_t* bottom = bits + static_cast<std::size_t>(sourceHeight - 1 - y1) * sourceRowBytes;
        for (int ch = 0; ch < 3; ++ch) {
            const int upper = top[3 * x0 + ch] * (256 - wx) + top[3 * x1 + ch] * wx;
            const int lower = bottom[3 * x0 + ch] * (256 - wx) + bottom[3 * x1 + ch] * wx;
            row[ch] = static_cast<std::uint8_t>((upper * (256 - wy) + lower * wy + 32768) >> 16);
        }
    }
}
