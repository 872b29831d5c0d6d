// Rendering of the linear, radial and rectangle gradients. Each row is first
// reduced to ramp indices in a row buffer (for the linear shape by a loop
// without branches that the compiler vectorises), then written as pixels.
#include "paint/GradientRamp.h"

#include "image/CDibImage.h"
#include "platform/HeapBlock.h"
#include "platform/ParallelRows.h"
#include "platform/WaitCursor.h"

#include <algorithm>
#include <atomic>
#include <cmath>
#include <cstdlib>
#include <cstring>

namespace {

constexpr int kLast = GradientRamp::kLast;

struct RowBuffer {
    explicit RowBuffer(int width)
        : block(platform::HeapBlock::Allocate(static_cast<std::size_t>(width) * sizeof(std::int32_t))) {}
    std::int32_t* data() const { return reinterpret_cast<std::int32_t*>(block.data()); }
    explicit operator bool() const { return static_cast<bool>(block); }
    platform::HeapBlock block;
};

// Index = round half up of (atZero + x * perColumn), kept in 0..1199. The
// value is kept in range before it becomes an integer: a drag far outside the
// picture gives values beyond any int.
void LinearRow(double atZero, double perColumn, int width, std::int32_t* __restrict out) {
    const double rounded = atZero + 0.5;
    for (int x = 0; x < width; ++x) {
        out[x] = static_cast<int>(std::clamp(rounded + x * perColumn, 0.0, static_cast<double>(kLast)));
    }
}

// Pixels strictly inside the half-width w around the centre column take the
// index of their rounded distance d, kept incrementally along the row: d is
// right for D = dy^2 + dx^2 exactly when d*d - d + 1 <= D <= d*d + d. Both
// sides of the centre share the walk; all other pixels take 1199.
// `indexOfDistance[i]` is the index of distance base + i, for distances up to
// maxDistance (larger ones take that one's).
void RadialRow(std::int64_t rowSquared, int centre, std::int64_t w, const std::int32_t* indexOfDistance,
               std::int64_t base, std::int64_t maxDistance, int width, std::int32_t* out) {
    std::fill(out, out + width, kLast);
    // Only offsets that land on a column of the row are walked.
    const std::int64_t nearest = centre < 0 ? -centre : centre >= width ? centre - (width - 1) : 0;
    const std::int64_t farthest = std::max<std::int64_t>(centre, width - 1 - centre);
    const std::int64_t end = std::min(w, farthest + 1);
    std::int64_t squared = rowSquared + nearest * nearest;
    auto d = static_cast<std::int64_t>(std::sqrt(static_cast<double>(squared)) + 0.5);
    for (std::int64_t offset = nearest; offset < end; ++offset) {
        while (squared > d * d + d) {
            ++d;
        }
        const std::int32_t index = indexOfDistance[std::min(d, maxDistance) - base];
        if (centre + offset < width) {
            out[centre + offset] = index;
        }
        if (centre - offset >= 0) {
            out[centre - offset] = index;
        }
        squared += 2 * offset + 1;
    }
}

// Rows at the same distance above and below a centre line are equal: a row
// whose mirror image (2 * centre - y, with `twiceCentre` = 2 * centre) was
// already rendered is copied from it. True when it was copied.
bool CopyMirroredRow(CDibImage& image, int y, std::int64_t twiceCentre) {
    const std::int64_t mirror = twiceCentre - y;
    if (mirror < 0 || mirror >= y) {
        return false;
    }
    std::memcpy(image.RowData(y), image.RowData(static_cast<int>(mirror)), image.RowBytes());
    return true;
}

} // namespace

void GradientRamp::PackPixels() {
    for (int i = 0; i < kEntries; ++i) {
        m_pixels[i] = static_cast<std::uint32_t>(m_table[i][2]) |
                      static_cast<std::uint32_t>(m_table[i][1]) << 8 |
                      static_cast<std::uint32_t>(m_table[i][0]) << 16;
    }
}

int GradientRamp::Render(CDibImage& image, int sx, int sy, int ex, int ey) {
    if (!image.IsValid() || image.BitsPerPixel() != 24) {
        return 0;
    }
    platform::WaitCursor wait;
    BuildTable();
    PackPixels();
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

// Columns first..last from their indices. Pixels are stored four bytes at a
// time; the fourth byte lands on the next pixel, which is written afterwards,
// so only the last pixel of the run is stored as three bytes.
void GradientRamp::WriteRow(std::uint8_t* row, const std::int32_t* indices, int first, int last) const {
    std::uint8_t* p = row + 3 * first;
    for (int x = first; x < last; ++x, p += 3) {
        std::memcpy(p, &m_pixels[indices[x]], 4);
    }
    if (first <= last) {
        std::memcpy(p, &m_pixels[indices[last]], 3);
    }
}

void GradientRamp::FillRun(std::uint8_t* row, int index, int first, int last) const {
    if (last - first >= 32) {
        FillRow(row, index, first, last);
        return;
    }
    std::uint8_t* p = row + 3 * first;
    for (int x = first; x < last; ++x, p += 3) {
        std::memcpy(p, &m_pixels[index], 4);
    }
    std::memcpy(p, &m_pixels[index], 3);
}

void GradientRamp::FillRow(std::uint8_t* row, int index, int first, int last) const {
    if (first > last) {
        return;
    }
    std::uint8_t* p = row + 3 * first;
    std::memcpy(p, &m_pixels[index], 3);
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
// Rows of one colour are copied from the row above when it has the same one.
int GradientRamp::RenderVertical(CDibImage& image, const Drag& drag) const {
    if (drag.sy == drag.ey) {
        return 0;
    }
    const int direction = drag.ey > drag.sy ? 1 : -1;
    const int length = std::abs(drag.ey - drag.sy);
    int previous = -1;
    for (int y = 0; y < image.Height(); ++y) {
        const int along = (y - drag.sy) * direction;
        const int index =
            along <= 0 ? 0 : along >= length ? kLast : static_cast<int>(std::int64_t{along} * kLast / length);
        if (index == previous) {
            std::memcpy(image.RowData(y), image.RowData(y - 1), image.RowBytes());
        } else {
            FillRow(image.RowData(y), index, 0, image.Width() - 1);
        }
        previous = index;
    }
    return 1;
}

// The index is the pixel's position between the two lines through the start
// and end points perpendicular to the drag: 1199 times its projection on the
// drag over the drag's squared length, rounded half up and kept in 0..1199;
// columns beyond the start's line take the start colour, beyond the end's line
// the end colour.
int GradientRamp::RenderLinear(CDibImage& image, const Drag& drag) const {
    const double dx = drag.ex - drag.sx;
    const double dy = drag.ey - drag.sy;
    const double scale = kLast / (dx * dx + dy * dy);
    const int width = image.Width();
    return RenderRows(image, 0, image.Height(), [&](int y, std::int32_t* out) {
        LinearRow((-drag.sx * dx + (y - drag.sy) * dy) * scale, dx * scale, width, out);
    });
}

int GradientRamp::RenderRows(CDibImage& image, int first, int end,
                             const std::function<void(int y, std::int32_t* out)>& indicesOf) const {
    std::atomic<bool> complete{true};
    platform::ForEachRowBand(end - first, [&](int bandBegin, int bandEnd) {
        RowBuffer indices(image.Width());
        if (!indices) {
            complete = false;
            return;
        }
        for (int y = first + bandBegin; y < first + bandEnd; ++y) {
            indicesOf(y, indices.data());
            WriteRow(image.RowData(y), indices.data(), 0, image.Width() - 1);
        }
    });
    return complete ? 1 : 0;
}

// Centre S, radius r = round(|E - S|): rows farther than r from S keep the end
// colour; on the others the half-width w = round(sqrt(r^2 - dy^2)) bounds the
// disc, inside which the rounded distance d gives the index.
int GradientRamp::RenderRadial(CDibImage& image, const Drag& drag) const {
    const double dx = drag.ex - drag.sx;
    const double dy = drag.ey - drag.sy;
    const auto r = static_cast<std::int64_t>(std::sqrt(dx * dx + dy * dy) + 0.5);
    const int width = image.Width();
    // Only the distances the picture's pixels have from the centre are
    // tabled, so a huge radius or a far centre costs no more than a near one.
    const auto distanceTo = [&](int x, int y) {
        const double ax = static_cast<double>(x) - drag.sx;
        const double ay = static_cast<double>(y) - drag.sy;
        return std::sqrt(ax * ax + ay * ay);
    };
    const int height = image.Height();
    const double nearest = distanceTo(std::clamp(drag.sx, 0, width - 1), std::clamp(drag.sy, 0, height - 1));
    const double farthest = std::max({distanceTo(0, 0), distanceTo(width - 1, 0), distanceTo(0, height - 1),
                                      distanceTo(width - 1, height - 1)});
    const std::int64_t base = std::max<std::int64_t>(static_cast<std::int64_t>(nearest) - 1, 0);
    const std::int64_t last = std::min<std::int64_t>(r + 1, static_cast<std::int64_t>(farthest) + 2);
    RowBuffer indexOfDistance(static_cast<int>(std::max<std::int64_t>(last - base + 1, 1)));
    if (r == 0 || !indexOfDistance) {
        return 0;
    }
    std::int32_t* byDistance = indexOfDistance.data();
    for (std::int64_t d = base; d <= last; ++d) {
        byDistance[d - base] =
            static_cast<std::int32_t>(std::min<std::int64_t>((2 * d * kLast + r) / (2 * r), kLast));
    }
    const auto indicesOf = [&](int y, std::int32_t* out) {
        const std::int64_t rowDistance = drag.sy - y;
        if (std::llabs(rowDistance) > r) {
            std::fill(out, out + width, kLast);
            return;
        }
        const std::int64_t rowSquared = rowDistance * rowDistance;
        const auto w = static_cast<std::int64_t>(std::sqrt(static_cast<double>(r * r - rowSquared)) + 0.5);
        RadialRow(rowSquared, drag.sx, w, byDistance, base, last, width, out);
    };
    // Rows sy+1..2*sy mirror rows above the centre: the others are rendered,
    // then these are copied from their mirror images.
    const int mirroredFirst = std::clamp(drag.sy + 1, 0, height);
    const int mirroredEnd = static_cast<int>(
        std::clamp<std::int64_t>(2 * static_cast<std::int64_t>(drag.sy) + 1, mirroredFirst, height));
    if (!RenderRows(image, 0, mirroredFirst, indicesOf) ||
        !RenderRows(image, mirroredEnd, height, indicesOf)) {
        return 0;
    }
    platform::ForEachRowBand(mirroredEnd - mirroredFirst, [&](int begin, int end) {
        for (int y = mirroredFirst + begin; y < mirroredFirst + end; ++y) {
            CopyMirroredRow(image, y, 2 * static_cast<std::int64_t>(drag.sy));
        }
    });
    return 1;
}

// The rectangle spanned by the drag: its border has the end colour and its
// middle the start colour, the index being 1199 minus the distance from the
// border times 1199 / half; outside it the end colour continues. Within a row
// the distance rises from the left edge up to the row's distance from the top
// or bottom, stays there, and falls again towards the right edge, so a row is
// filled from one precomputed row of distance indices and its mirror image.
int GradientRamp::RenderRectangle(CDibImage& image, const Drag& drag) const {
    if (drag.sx == drag.ex && drag.sy == drag.ey) {
        return 0;
    }
    const int left = std::min(drag.sx, drag.ex);
    const int right = std::max(drag.sx, drag.ex);
    const int top = std::min(drag.sy, drag.ey);
    const int bottom = std::max(drag.sy, drag.ey);
    const int half = (std::min(right - left, bottom - top) + 1) >> 1;
    const double scale = half > 0 ? static_cast<double>(kLast) / half : 0.0;
    const int width = image.Width();
    RowBuffer indices(width);
    if (!indices) {
        return 0;
    }
    // Worked out per pixel rather than tabled: the distances can be as large
    // as the rectangle, which may reach far beyond the picture.
    const auto ramp = [scale](int d) {
        return kLast - static_cast<int>(std::min(d * scale + 0.5, static_cast<double>(kLast)));
    };
    std::int32_t* out = indices.data();
    for (int y = 0; y < image.Height(); ++y) {
        if (CopyMirroredRow(image, y, static_cast<std::int64_t>(top) + bottom)) {
            continue;
        }
        std::uint8_t* row = image.RowData(y);
        if (y < top || y > bottom) {
            FillRow(row, kLast, 0, width - 1);
            continue;
        }
        const int vertical = std::min({y - top, bottom - y, half});
        for (int x = 0; x < width; ++x) {
            const int distance = std::min({x - left, right - x, vertical});
            out[x] = distance < 0 ? kLast : ramp(distance);
        }
        WriteRow(row, out, 0, width - 1);
    }
    return 1;
}
