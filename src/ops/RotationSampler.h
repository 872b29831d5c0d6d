#pragma once

#include "image/DibTypes.h"
#include "platform/HeapBlock.h"

#include <cstdint>

class CDibImage;

// The bilinear sampler of a 24-bit picture turned by an angle, one target row
// at a time. Target pixel x of a row samples the source at
//   sx = (cx + columnCos[x]) + rowSin,   sy = (cy - columnSin[x]) + rowCos,
// where the column terms are running sums that grow by cos and sin per
// pixel. The column sums are the same on every row, so they are summed once
// into two tables and each row costs one addition per coordinate. A pixel is
// covered when the nearest source pixel (coordinates rounded half away from
// zero) exists; as both coordinates move monotonically along a row, the
// covered pixels form one span, found by bisection, and the rest of the row
// is filled in bulk.
class RotationSampler {
public:
    // False from IsValid when the tables cannot be had.
    RotationSampler(const CDibImage& source, int targetWidth, double sourceCenterX, double sourceCenterY,
                    double targetCenterX, double sine, double cosine, ColorWord fill);
    bool IsValid() const { return static_cast<bool>(m_columnX); }

    // Writes the target row whose row terms are rowSin and rowCos.
    void SampleRow(double rowSin, double rowCos, std::uint8_t* row) const;

private:
    struct Span {
        int begin;
        int end;
    };
    Span CoveredSpan(double rowSin, double rowCos) const;
    void SampleSpan(double rowSin, double rowCos, int begin, int end, std::uint8_t* row) const;
    int SampleVectorised(double rowSin, double rowCos, int begin, int end, std::uint8_t* row) const;
    int SampleSixteen(double rowSin, double rowCos, int begin, int end, std::uint8_t* row) const;
    void FillPixels(std::uint8_t* row, int count) const;

    const std::uint8_t* m_bits;
    std::uint32_t m_sourceRowBytes;
    std::size_t m_sourceBytes;
    int m_sourceWidth;
    int m_sourceHeight;
    int m_width;
    std::uint8_t m_fill[3];
    platform::HeapBlock m_columnX; // cx + columnCos, per target column
    platform::HeapBlock m_columnY; // cy - columnSin, per target column
};
