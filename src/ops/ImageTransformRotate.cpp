// Rotation by an arbitrary angle: the sampling geometry shared by pictures and
// masks and the nearest-bit mask sampler; pictures go through RotationSampler.
#include "image/CDibImage.h"
#include "ops/CImageTransform.h"
#include "ops/RotationSampler.h"
#include "ops/RowPasses.h"
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
    if (m_source->BitsPerPixel() == 24) {
        return RotatePicture();
    }
    platform::HeapBlock row = platform::HeapBlock::Allocate(m_rowBytes);
    if (!row) {
        return 0;
    }
    double rowSin = -m_targetCenterY * m_sine;
    double rowCos = -m_targetCenterY * m_cosine;
    for (int y = 0; y < m_height; ++y) {
        RotateMaskRow(y, rowSin, rowCos, row.data(), fill);
        m_target->SetRow(y, row.data());
        rowSin += m_sine;
        rowCos += m_cosine;
    }
    return 1;
}

// The picture's rows go in bands over the cores. Each band first runs the row
// terms up to its first row, so every row sees exactly the sums a single pass
// would give it.
int CImageTransform::RotatePicture() {
    const RotationSampler sampler(*m_source, m_width, m_sourceCenterX, m_sourceCenterY, m_targetCenterX, m_sine,
                                  m_cosine, m_fillColor);
    if (!sampler.IsValid()) {
        return 0;
    }
    std::uint8_t* bits = m_target->MutableBits();
    const std::uint32_t rowBytes = m_rowBytes;
    const int height = m_height;
    return ops::ForEachStoredBand(height, [&](int begin, int end) {
        double rowSin = -m_targetCenterY * m_sine;
        double rowCos = -m_targetCenterY * m_cosine;
        for (int y = 0; y < begin; ++y) {
            rowSin += m_sine;
            rowCos += m_cosine;
        }
        for (int y = begin; y < end; ++y) {
            sampler.SampleRow(rowSin, rowCos, bits + static_cast<std::size_t>(height - 1 - y) * rowBytes);
            rowSin += m_sine;
            rowCos += m_cosine;
        }
    });
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
