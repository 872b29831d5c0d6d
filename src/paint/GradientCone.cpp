// The cone gradient. A pixel's index is round(angle * 1199 / (2 pi)), the
// angle of the pixel around the start point measured from the direction of
// the end point and brought into 0..2 pi (rows grow downwards, so it turns
// clockwise on the screen). Along a row the angle changes monotonically, so
// instead of an arctangent per pixel each row is walked from the exact index
// of its first pixel across the columns where the index changes: the column
// where the angle reaches a transition angle t is cx + dy * cot(t), with the
// cotangents of all 1,200 transitions computed once.
#include "paint/GradientRamp.h"

#include "image/CDibImage.h"
#include "platform/HeapBlock.h"
#include "platform/ParallelRows.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace {

constexpr double kIndexPerRadian = 190.8267767422657; // 1199 / (2 pi)
constexpr double kTwoPi = 6.283185308;
constexpr double kPi = 3.14159265358979323846;
constexpr int kLast = GradientRamp::kLast;
constexpr double kNever = std::numeric_limits<double>::infinity();

int IndexOfAngle(double angle) {
    const int index = static_cast<int>(angle * kIndexPerRadian + 0.5);
    return index > kLast ? kLast : index < 0 ? 0 : index;
}

// Where each index is left, as a cotangent of the pixel angle: rows below the
// centre (angle falling from pi to 0 left to right) leave index m at
// (m - 0.5) / K, and 0 at the reference direction (to 1199); rows above
// (angle rising from -pi to 0) leave m at (m + 0.5) / K, and 1199 at the
// reference direction (to 0). NaN marks a transition outside the rows' half
// plane, which those rows never cross.
class ConeTransitions {
public:
    explicit ConeTransitions(double reference)
        : m_block(platform::HeapBlock::Allocate(2 * GradientRamp::kEntries * sizeof(double))),
          m_reference(reference) {
        if (!m_block) {
            return;
        }
        auto* table = reinterpret_cast<double*>(m_block.data());
        m_below = table;
        m_above = table + GradientRamp::kEntries;
        for (int m = 0; m <= kLast; ++m) {
            m_below[m] = Cotangent(m == 0 ? 0.0 : (m - 0.5) / kIndexPerRadian, true);
            m_above[m] = Cotangent(m == kLast ? 0.0 : (m + 0.5) / kIndexPerRadian, false);
        }
    }

    bool IsValid() const { return static_cast<bool>(m_block); }

    // The runs of equal ramp index of one row at vertical offset dy from the
    // centre column cx, left to right: emit(first, last, index).
    template <typename Emit> void Runs(double dy, double cx, int width, Emit emit) const {
        if (dy == 0.0) {
            const int split = std::clamp(static_cast<int>(std::ceil(cx)), 0, width);
            if (split > 0) {
                emit(0, split - 1, IndexOfAngle(Wrap(kPi - m_reference)));
            }
            if (split < width) {
                emit(split, width - 1, IndexOfAngle(Wrap(-m_reference)));
            }
            return;
        }
        const bool below = dy > 0.0;
        const double* cotangents = below ? m_below : m_above;
        int m = IndexOfAngle(Wrap(std::atan2(dy, -cx) - m_reference));
        int x = 0;
        while (x < width) {
            const int last = LastColumn(Column(cotangents[m], dy, cx), below, width);
            if (last >= x) {
                emit(x, last, m);
                x = last + 1;
            }
            m = below ? (m == 0 ? kLast : m - 1) : (m == kLast ? 0 : m + 1);
        }
    }

private:
    static double Wrap(double angle) { return angle < 0.0 ? angle + kTwoPi : angle; }
    // The last column that keeps the index left at column `change`. A pixel
    // exactly on it rounds half up: below the centre it keeps the index it
    // leaves, above it takes the next one.
    static int LastColumn(double change, bool below, int width) {
        if (change >= width) {
            return width - 1;
        }
        if (change < 0.0) {
            return -1;
        }
        return below ? static_cast<int>(std::floor(change)) : static_cast<int>(std::ceil(change)) - 1;
    }
    static double Column(double cotangent, double dy, double cx) {
        return std::isnan(cotangent) ? kNever : cx + dy * cotangent;
    }
    // The cotangent of the pixel angle at relative angle `turn`, or NaN when
    // that angle lies outside the half plane below (or above) the centre.
    double Cotangent(double turn, bool below) const {
        double angle = turn + m_reference;
        while (angle > kPi) {
            angle -= 2 * kPi;
        }
        while (angle <= -kPi) {
            angle += 2 * kPi;
        }
        const bool inside = below ? angle > 0.0 && angle < kPi : angle < 0.0 && angle > -kPi;
        return inside ? std::cos(angle) / std::sin(angle) : std::numeric_limits<double>::quiet_NaN();
    }

    platform::HeapBlock m_block;
    double* m_below = nullptr;
    double* m_above = nullptr;
    double m_reference;
};

} // namespace

int GradientRamp::RenderCone(CDibImage& image, const Drag& drag) const {
    if (drag.sx == drag.ex && drag.sy == drag.ey) {
        return 0;
    }
    const ConeTransitions transitions(std::atan2(drag.ey - drag.sy, drag.ex - drag.sx));
    if (!transitions.IsValid()) {
        return 0;
    }
    const int width = image.Width();
    platform::ForEachRowBand(image.Height(), [&](int begin, int end) {
        for (int y = begin; y < end; ++y) {
            std::uint8_t* row = image.RowData(y);
            transitions.Runs(y - drag.sy, drag.sx, width,
                             [&](int first, int last, int index) { FillRun(row, index, first, last); });
        }
    });
    return 1;
}
