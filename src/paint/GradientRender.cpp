// Rendering of the gradient shapes. Each row is reduced to ramp indices in a
// row buffer (a loop the compiler can vectorise), then written as pixels.
#include "paint/GradientRamp.h"

#include "image/CDibImage.h"
#include "platform/HeapBlock.h"
#include "platform/WaitCursor.h"

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <cstring>

namespace {

constexpr double kIndexPerRadian = 190.8267767422657; // 1199 / (2 pi)
constexpr float kPi = 3.14159265358979f;

// atan2 by a minimax polynomial on the octant (error below 1e-5 radians,
// far under one ramp step of 0.0052 radians), without branches so that a row
// of angles vectorises. Straight up and down come out as -pi/2 and pi/2.
inline float FastAtan2(float y, float x) {
    const float ax = std::fabs(x);
    const float ay = std::fabs(y);
    const float high = std::max(ax, ay);
    const float low = std::min(ax, ay);
    const float a = high > 0.0f ? low / high : 0.0f;
    const float s = a * a;
    float r =
        ((((-0.01172120f * s + 0.05265332f) * s - 0.11643287f) * s + 0.19354346f) * s - 0.33262347f) * s * a +
        0.99997726f * a;
    r = ay > ax ? 0.5f * kPi - r : r;
    r = x < 0.0f ? kPi - r : r;
    return y < 0.0f ? -r : r;
}

int RoundIndex(double v) {
    return v <= 0.0 ? 0 : v >= GradientRamp::kLast ? GradientRamp::kLast : static_cast<int>(v + 0.5);
}

struct RowBuffer {
    explicit RowBuffer(int width)
        : block(platform::HeapBlock::Allocate(static_cast<std::size_t>(width) * sizeof(std::int32_t))) {}
    std::int32_t* data() const { return reinterpret_cast<std::int32_t*>(block.data()); }
    explicit operator bool() const { return static_cast<bool>(block); }
    platform::HeapBlock block;
};

} // namespace

int GradientRamp::Render(CDibImage& image, int sx, int sy, int ex, int ey) {
    if (!image.IsValid() || image.BitsPerPixel() != 24) {
        return 0;
    }
    platform::WaitCursor wait;
    BuildTable();
    const Drag drag{sx, sy, ex, ey};
    switch (m_shape) {
    case kRadial:
        return RenderRadial(image, drag);
    case kRectangle:
        return RenderRectangle(image, drag);
    case kCone:
        return RenderCone(image, drag);
    default:
        return sx == ex ? RenderVertical(image, drag) : RenderLinear(image, drag);
    }
}

void GradientRamp::WriteRow(std::uint8_t* row, const std::int32_t* indices, int width) const {
    for (int x = 0; x < width; ++x) {
        const std::uint8_t* c = m_table[indices[x]];
        std::uint8_t* p = row + 3 * x;
        p[0] = c[2];
        p[1] = c[1];
        p[2] = c[0];
    }
}

void GradientRamp::FillRow(std::uint8_t* row, int index, int first, int last) const {
    if (first > last) {
        return;
    }
    const std::uint8_t* c = m_table[index];
    std::uint8_t* p = row + 3 * first;
    p[0] = c[2];
    p[1] = c[1];
    p[2] = c[0];
    const std::size_t total = static_cast<std::size_t>(last - first + 1) * 3;
    std::size_t filled = 3;
    while (filled < total) {
        const std::size_t chunk = std::min(filled, total - filled);
        std::memcpy(p + filled, p, chunk);
        filled += chunk;
    }
}

// A drag along one column: rows before the start are the start colour, rows
// past the end the end colour, rows between take |y - sy| * 1199 / |ey - sy|.
int GradientRamp::RenderVertical(CDibImage& image, const Drag& drag) const {
    if (drag.sy == drag.ey) {
        return 0;
    }
    const int direction = drag.ey > drag.sy ? 1 : -1;
    const int length = std::abs(drag.ey - drag.sy);
    for (int y = 0; y < image.Height(); ++y) {
        const int along = (y - drag.sy) * direction;
        const int index = along <= 0 ? 0 : along >= length ? kLast : along * kLast / length;
        FillRow(image.RowData(y), index, 0, image.Width() - 1);
    }
    return 1;
}

// The index is the pixel's position between the two lines through the start
// and end points perpendicular to the drag: 1199 times its projection on the
// drag over the drag's squared length, rounded half up and kept in 0..1199.
int GradientRamp::RenderLinear(CDibImage& image, const Drag& drag) const {
    RowBuffer indices(image.Width());
    if (!indices) {
        return 0;
    }
    const double dx = drag.ex - drag.sx;
    const double dy = drag.ey - drag.sy;
    const double scale = kLast / (dx * dx + dy * dy);
    const double perColumn = dx * scale;
    std::int32_t* out = indices.data();
    for (int y = 0; y < image.Height(); ++y) {
        const double atColumnZero = (-drag.sx * dx + (y - drag.sy) * dy) * scale;
        for (int x = 0; x < image.Width(); ++x) {
            const double v = std::clamp(atColumnZero + x * perColumn, 0.0, static_cast<double>(kLast));
            out[x] = static_cast<std::int32_t>(v + 0.5);
        }
        WriteRow(image.RowData(y), out, image.Width());
    }
    return 1;
}

// Distances d = round(sqrt(D)) are kept incrementally along the row: d is
// right for D exactly when d*d - d + 1 <= D <= d*d + d.
int GradientRamp::RenderRadial(CDibImage& image, const Drag& drag) const {
    const double dx = drag.ex - drag.sx;
    const double dy = drag.ey - drag.sy;
    const auto r = static_cast<std::int64_t>(std::sqrt(dx * dx + dy * dy) + 0.5);
    if (r == 0) {
        return 0;
    }
    for (int y = 0; y < image.Height(); ++y) {
        std::uint8_t* row = image.RowData(y);
        FillRow(row, kLast, 0, image.Width() - 1);
        const std::int64_t rowDistance = drag.sy - y;
        if (std::llabs(rowDistance) > r) {
            continue;
        }
        const auto w = static_cast<std::int64_t>(
            std::sqrt(static_cast<double>(r * r - rowDistance * rowDistance)) + 0.5);
        const std::int64_t first = std::max<std::int64_t>(drag.sx - w + 1, 0);
        const std::int64_t last = std::min<std::int64_t>(drag.sx + w - 1, image.Width() - 1);
        if (first > last) {
            continue;
        }
        std::int64_t offset = first - drag.sx;
        std::int64_t squared = rowDistance * rowDistance + offset * offset;
        auto d = static_cast<std::int64_t>(std::sqrt(static_cast<double>(squared)) + 0.5);
        for (std::int64_t x = first; x <= last; ++x) {
            while (squared > d * d + d) {
                ++d;
            }
            while (d > 0 && squared < d * d - d + 1) {
                --d;
            }
            const int index = static_cast<int>(std::min<std::int64_t>((d * kLast * 2 + r) / (2 * r), kLast));
            const std::uint8_t* c = m_table[index];
            std::uint8_t* p = row + 3 * x;
            p[0] = c[2];
            p[1] = c[1];
            p[2] = c[0];
            squared += 2 * offset + 1;
            ++offset;
        }
    }
    return 1;
}

// The border of the rectangle spanned by the drag has the end colour, its
// middle the start colour; outside it the end colour continues.
int GradientRamp::RenderRectangle(CDibImage& image, const Drag& drag) const {
    if (drag.sx == drag.ex && drag.sy == drag.ey) {
        return 0;
    }
    RowBuffer indices(image.Width());
    if (!indices) {
        return 0;
    }
    const int left = std::min(drag.sx, drag.ex);
    const int right = std::max(drag.sx, drag.ex);
    const int top = std::min(drag.sy, drag.ey);
    const int bottom = std::max(drag.sy, drag.ey);
    const int half = (std::min(right - left, bottom - top) + 1) >> 1;
    const double scale = half > 0 ? static_cast<double>(kLast) / half : 0.0;
    std::int32_t* out = indices.data();
    for (int y = 0; y < image.Height(); ++y) {
        if (y < top || y > bottom) {
            FillRow(image.RowData(y), kLast, 0, image.Width() - 1);
            continue;
        }
        const int vertical = std::min(y - top, bottom - y);
        for (int x = 0; x < image.Width(); ++x) {
            const int horizontal = std::min(x - left, right - x);
            const int distance = std::min(horizontal, vertical);
            out[x] = distance < 0 ? kLast : kLast - RoundIndex(distance * scale);
        }
        WriteRow(image.RowData(y), out, image.Width());
    }
    return 1;
}

// Each pixel's angle around the start point, measured from the direction of
// the end point (clockwise on the screen, since rows grow downwards) and
// brought into 0..2 pi, gives the index angle * 1199 / (2 pi).
int GradientRamp::RenderCone(CDibImage& image, const Drag& drag) const {
    if (drag.sx == drag.ex && drag.sy == drag.ey) {
        return 0;
    }
    RowBuffer indices(image.Width());
    if (!indices) {
        return 0;
    }
    const auto reference = static_cast<float>(std::atan2(drag.ey - drag.sy, drag.ex - drag.sx));
    constexpr float kTwoPi = 6.283185308f;
    const auto perRadian = static_cast<float>(kIndexPerRadian);
    std::int32_t* out = indices.data();
    for (int y = 0; y < image.Height(); ++y) {
        const auto fy = static_cast<float>(y - drag.sy);
        for (int x = 0; x < image.Width(); ++x) {
            float angle = FastAtan2(fy, static_cast<float>(x - drag.sx)) - reference;
            angle = angle < 0.0f ? angle + kTwoPi : angle;
            const float v = std::min(angle * perRadian + 0.5f, static_cast<float>(kLast));
            out[x] = static_cast<std::int32_t>(v);
        }
        WriteRow(image.RowData(y), out, image.Width());
    }
    return 1;
}
