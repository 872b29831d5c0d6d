#include "formats/WuQuantizer.h"

#include "image/CDibImage.h"

#include <algorithm>
#include <array>

namespace {
constexpr int kSide = 33; // 32 levels per channel plus the zero plane
constexpr int kCells = kSide * kSide * kSide;
constexpr int kMostColors = 256;

constexpr int Index(int r, int g, int b) {
    return (r * kSide + g) * kSide + b;
}
} // namespace

struct WuQuantizer::Moment {
    std::int64_t weight = 0;
    std::int64_t red = 0;
    std::int64_t green = 0;
    std::int64_t blue = 0;
    double squares = 0;

    Moment& operator+=(const Moment& o) {
        weight += o.weight;
        red += o.red;
        green += o.green;
        blue += o.blue;
        squares += o.squares;
        return *this;
    }
    Moment& operator-=(const Moment& o) {
        weight -= o.weight;
        red -= o.red;
        green -= o.green;
        blue -= o.blue;
        squares -= o.squares;
        return *this;
    }
    double Spread() const {
        const double r = static_cast<double>(red);
        const double g = static_cast<double>(green);
        const double b = static_cast<double>(blue);
        return (r * r + g * g + b * b) / static_cast<double>(weight);
    }
};

// Bounds are exclusive below, inclusive above, in histogram cells.
struct WuQuantizer::Box {
    int r0 = 0, r1 = 0, g0 = 0, g1 = 0, b0 = 0, b1 = 0;
    int Cells() const { return (r1 - r0) * (g1 - g0) * (b1 - b0); }
};

WuQuantizer::WuQuantizer() : m_moments(platform::HeapBlock::Allocate(kCells * sizeof(Moment))) {}

const WuQuantizer::Moment& WuQuantizer::At(int r, int g, int b) const {
    return reinterpret_cast<const Moment*>(m_moments.data())[Index(r, g, b)];
}

bool WuQuantizer::AddPicture(const CDibImage& picture) {
    auto* moments = reinterpret_cast<Moment*>(m_moments.data());
    platform::HeapBlock row = platform::HeapBlock::Allocate(picture.RowBytes());
    if (!row) {
        return false;
    }
    for (int y = 0; y < picture.Height(); ++y) {
        picture.GetRow(y, row.data());
        const std::uint8_t* p = row.data();
        for (int x = 0; x < picture.Width(); ++x, p += 3) {
            const int b = p[0];
            const int g = p[1];
            const int r = p[2];
            Moment& m = moments[Index((r >> 3) + 1, (g >> 3) + 1, (b >> 3) + 1)];
            ++m.weight;
            m.red += r;
            m.green += g;
            m.blue += b;
            m.squares += r * r + g * g + b * b;
        }
    }
    return true;
}

void WuQuantizer::Accumulate() {
    auto* moments = reinterpret_cast<Moment*>(m_moments.data());
    Moment area[kSide];
    for (int r = 1; r < kSide; ++r) {
        for (Moment& a : area) {
            a = Moment{};
        }
        for (int g = 1; g < kSide; ++g) {
            Moment line;
            for (int b = 1; b < kSide; ++b) {
                Moment& cell = moments[Index(r, g, b)];
                line += cell;
                area[b] += line;
                cell = moments[Index(r - 1, g, b)];
                cell += area[b];
            }
        }
    }
}

WuQuantizer::Moment WuQuantizer::Volume(const Box& c) const {
    Moment m = At(c.r1, c.g1, c.b1);
    m -= At(c.r1, c.g1, c.b0);
    m -= At(c.r1, c.g0, c.b1);
    m += At(c.r1, c.g0, c.b0);
    m -= At(c.r0, c.g1, c.b1);
    m += At(c.r0, c.g1, c.b0);
    m += At(c.r0, c.g0, c.b1);
    m -= At(c.r0, c.g0, c.b0);
    return m;
}

WuQuantizer::Moment WuQuantizer::Bottom(const Box& c, Axis axis) const {
    Moment m;
    switch (axis) {
    case kRed:
        m -= At(c.r0, c.g1, c.b1);
        m += At(c.r0, c.g1, c.b0);
        m += At(c.r0, c.g0, c.b1);
        m -= At(c.r0, c.g0, c.b0);
        break;
    case kGreen:
        m -= At(c.r1, c.g0, c.b1);
        m += At(c.r1, c.g0, c.b0);
        m += At(c.r0, c.g0, c.b1);
        m -= At(c.r0, c.g0, c.b0);
        break;
    case kBlue:
        m -= At(c.r1, c.g1, c.b0);
        m += At(c.r1, c.g0, c.b0);
        m += At(c.r0, c.g1, c.b0);
        m -= At(c.r0, c.g0, c.b0);
        break;
    }
    return m;
}

WuQuantizer::Moment WuQuantizer::Top(const Box& c, Axis axis, int p) const {
    Moment m;
    switch (axis) {
    case kRed:
        m += At(p, c.g1, c.b1);
        m -= At(p, c.g1, c.b0);
        m -= At(p, c.g0, c.b1);
        m += At(p, c.g0, c.b0);
        break;
    case kGreen:
        m += At(c.r1, p, c.b1);
        m -= At(c.r1, p, c.b0);
        m -= At(c.r0, p, c.b1);
        m += At(c.r0, p, c.b0);
        break;
    case kBlue:
        m += At(c.r1, c.g1, p);
        m -= At(c.r1, c.g0, p);
        m -= At(c.r0, c.g1, p);
        m += At(c.r0, c.g0, p);
        break;
    }
    return m;
}

double WuQuantizer::Variance(const Box& box) const {
    const Moment m = Volume(box);
    return m.weight == 0 ? 0.0 : m.squares - m.Spread();
}

double WuQuantizer::Maximize(const Box& box, Axis axis, int lo, int hi, int& cut, const Moment& whole) const {
    const Moment base = Bottom(box, axis);
    double best = 0.0;
    cut = -1;
    for (int i = lo; i < hi; ++i) {
        Moment half = base;
        half += Top(box, axis, i);
        if (half.weight == 0) {
            continue;
        }
        Moment rest = whole;
        rest -= half;
        if (rest.weight == 0) {
            continue;
        }
        const double score = half.Spread() + rest.Spread();
        if (score > best) {
            best = score;
            cut = i;
        }
    }
    return best;
}

bool WuQuantizer::Cut(Box& first, Box& second) const {
    const Moment whole = Volume(first);
    int cutR = -1;
    int cutG = -1;
    int cutB = -1;
    const double maxR = Maximize(first, kRed, first.r0 + 1, first.r1, cutR, whole);
    const double maxG = Maximize(first, kGreen, first.g0 + 1, first.g1, cutG, whole);
    const double maxB = Maximize(first, kBlue, first.b0 + 1, first.b1, cutB, whole);
    second = first;
    if (maxR >= maxG && maxR >= maxB) {
        if (cutR < 0) {
            return false;
        }
        second.r0 = first.r1 = cutR;
    } else if (maxG >= maxR && maxG >= maxB) {
        second.g0 = first.g1 = cutG;
    } else {
        second.b0 = first.b1 = cutB;
    }
    return true;
}

int WuQuantizer::BuildPalette(RgbQuad* palette, int wanted) {
    Accumulate();
    wanted = std::clamp(wanted, 1, kMostColors);
    std::array<Box, kMostColors> boxes{};
    std::array<double, kMostColors> variance{};
    boxes[0] = Box{0, kSide - 1, 0, kSide - 1, 0, kSide - 1};
    int count = 1;
    int next = 0;
    while (count < wanted) {
        if (Cut(boxes[next], boxes[count])) {
            variance[next] = boxes[next].Cells() > 1 ? Variance(boxes[next]) : 0.0;
            variance[count] = boxes[count].Cells() > 1 ? Variance(boxes[count]) : 0.0;
            ++count;
        } else {
            variance[next] = 0.0;
        }
        next = 0;
        for (int k = 1; k < count; ++k) {
            if (variance[k] > variance[next]) {
                next = k;
            }
        }
        if (variance[next] <= 0.0) {
            break;
        }
    }
    for (int k = 0; k < wanted; ++k) {
        palette[k] = RgbQuad{};
    }
    for (int k = 0; k < count; ++k) {
        const Moment m = Volume(boxes[k]);
        if (m.weight > 0) {
            const std::int64_t half = m.weight / 2;
            palette[k].red = static_cast<std::uint8_t>((m.red + half) / m.weight);
            palette[k].green = static_cast<std::uint8_t>((m.green + half) / m.weight);
            palette[k].blue = static_cast<std::uint8_t>((m.blue + half) / m.weight);
        }
    }
    return count;
}
