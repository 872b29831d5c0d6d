// The vectorised filters against plain per-pixel versions of their rules, on
// noisy pictures of many widths: every vector width, remainder and row end
// shows up somewhere, and so does any lane that picks the wrong neighbour.
#include "ops/CImageFilter.h"
#include "ops/FilterMath.h"
#include "ops/OpsTestImages.h"
#include "ops/RowPasses.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cstdlib>
#include <random>
#include <vector>

namespace {

using Pixel = std::array<int, 3>; // blue, green, red

// Stored rows (bottom-up) with the edge rows and columns repeated.
class Neighbourhood {
public:
    explicit Neighbourhood(const CDibImage& image) : m_image(image) {}

    Pixel At(int x, int storedRow) const {
        x = std::clamp(x, 0, m_image.Width() - 1);
        storedRow = std::clamp(storedRow, 0, m_image.Height() - 1);
        const std::uint8_t* p = m_image.Bits() + static_cast<std::size_t>(storedRow) * m_image.RowBytes() + 3 * x;
        return {p[0], p[1], p[2]};
    }

private:
    const CDibImage& m_image;
};

Pixel Bgr(ColorWord color) {
    return {static_cast<int>(BlueOf(color)), static_cast<int>(GreenOf(color)), static_cast<int>(RedOf(color))};
}

std::unique_ptr<CDibImage> NoisyImage(int width, int height, unsigned seed) {
    auto image = MakeImage(width, height);
    std::mt19937 random(seed);
    std::uint8_t* bits = image->MutableBits();
    for (int y = 0; y < height; ++y) {
        std::uint8_t* row = bits + static_cast<std::size_t>(y) * image->RowBytes();
        for (int j = 0; j < 3 * width; ++j) {
            // Mostly smooth with sharp outliers, so that every rule takes both
            // of its branches.
            const int smooth = 60 + (j / 3 + 2 * y) % 90 + 30 * (j % 3);
            row[j] = static_cast<std::uint8_t>(random() % 5 == 0 ? random() : smooth);
        }
    }
    return image;
}

using PixelRule = std::function<Pixel(const Neighbourhood&, int x, int storedRow)>;

// Runs `op` and compares every pixel with `rule`.
void ExpectFollowsRule(const std::function<int(CImageFilter&)>& op, const PixelRule& rule) {
    const int widths[] = {1, 2, 3, 5, 21, 64, 67, 130, 257};
    for (int width : widths) {
        for (int height : {1, 2, 7}) {
            auto source = NoisyImage(width, height, static_cast<unsigned>(width * 31 + height));
            auto target = RunInto<CImageFilter>(*source, op);
            ASSERT_NE(target, nullptr);
            const Neighbourhood around(*source);
            for (int y = 0; y < height; ++y) {
                const std::uint8_t* row = target->Bits() + static_cast<std::size_t>(y) * target->RowBytes();
                for (int x = 0; x < width; ++x) {
                    const Pixel expected = rule(around, x, y);
                    const Pixel actual = {row[3 * x], row[3 * x + 1], row[3 * x + 2]};
                    ASSERT_EQ(actual, expected) << width << " x " << height << " at " << x << ", stored " << y;
                }
            }
        }
    }
}

Pixel FindEdgeRule(const Neighbourhood& at, int x, int y, int keepOriginal, int colorMode, int t,
                   ColorWord background) {
    std::array<std::array<int, 3>, 4> d{};
    for (int c = 0; c < 3; ++c) {
        const auto v = [&](int dx, int dy) { return at.At(x + dx, y + dy)[c]; };
        d[0][c] = (v(-1, -1) + v(0, -1) + v(1, -1)) - (v(-1, 1) + v(0, 1) + v(1, 1));
        d[1][c] = v(-1, 0) + v(-1, 1) + std::abs(d[0][c]) - v(1, 0) - v(1, -1);
        d[2][c] = (v(-1, -1) + v(-1, 0) + v(-1, 1)) - (v(1, -1) + v(1, 0) + v(1, 1));
        d[3][c] = (v(0, -1) + v(1, -1) + v(1, 0)) - (v(-1, 0) + v(-1, 1) + v(0, 1));
    }
    int winner = 0;
    int best = -1;
    for (int k = 0; k < 4; ++k) {
        const int strength = std::abs(d[k][0]) + std::abs(d[k][1]) + std::abs(d[k][2]);
        if (strength > best) {
            best = strength;
            winner = k;
        }
    }
    Pixel a{};
    for (int c = 0; c < 3; ++c) {
        a[c] = std::abs(d[winner][c]);
    }
    const bool edge = a[0] > 32 || a[1] > 32 || a[2] > 32;
    const Pixel o = at.At(x, y);
    const Pixel back = Bgr(background);
    Pixel out{};
    for (int c = 0; c < 3; ++c) {
        if (edge) {
            int e = 255 - std::min(a[c], 255);
            if (colorMode == 1) {
                const int k = std::min((a[0] + a[1] + a[2] + 1) / 3, 255);
                e = ((keepOriginal ? o[c] : back[c]) * (255 - k) + 127) >> 8;
            }
            out[c] = (o[c] * t + e * (100 - t) + 50) / 100;
        } else if (keepOriginal) {
            out[c] = o[c];
        } else {
            out[c] = t < 1 ? back[c] : ((100 - t) * back[0] + o[c] * t + 50) / 100;
        }
    }
    return out;
}

Pixel TraceContourRule(const Neighbourhood& at, int x, int y, int darkest, int keepOriginal, int colorMode,
                       int t, ColorWord background, ColorWord foreground) {
    const auto threshold = [&](int dx, int dy) {
        Pixel p = at.At(x + dx, y + dy);
        for (int& v : p) {
            v = v < 127 ? 0 : 255;
        }
        return p;
    };
    const Pixel centre = threshold(0, 0);
    const int order[7][2] = {{-1, -1}, {-1, 0}, {-1, 1}, {0, -1}, {0, 1}, {1, -1}, {1, 0}};
    int best = 0;
    Pixel d{};
    for (const auto& step : order) {
        const Pixel n = threshold(step[0], step[1]);
        Pixel diff{};
        for (int c = 0; c < 3; ++c) {
            diff[c] = std::max(darkest ? centre[c] - n[c] : n[c] - centre[c], 0);
        }
        if (diff[0] + diff[1] + diff[2] > best) {
            best = diff[0] + diff[1] + diff[2];
            d = diff;
        }
    }
    const bool edge = best >= 1;
    const Pixel o = at.At(x, y);
    const Pixel back = Bgr(background);
    const Pixel fore = Bgr(foreground);
    Pixel out{};
    for (int c = 0; c < 3; ++c) {
        if (darkest) {
            out[c] = edge ? (colorMode ? fore[c] : 255 - d[c]) : (keepOriginal ? o[c] : back[c]);
        } else if (edge) {
            out[c] = colorMode ? (o[c] * t + fore[c] * (100 - t) + 50) / 100
                               : ((100 - t) * (255 - d[c]) + o[c] * t + 50) / 100;
        } else if (keepOriginal) {
            out[c] = o[c];
        } else {
            out[c] = t > 0 ? (o[c] * t + back[c] * (100 - t) + 50) / 100 : back[c];
        }
    }
    return out;
}

Pixel EmbossRule(const Neighbourhood& at, int x, int y, int direction, int depth, ColorWord foreground) {
    // Neighbours A and B: column step and stored-row step (+1 next, -1 previous).
    const int picks[8][4] = {{1, 1, -1, -1}, {0, 1, 0, -1}, {-1, 1, 1, -1}, {1, 0, -1, 0},
                             {-1, -1, 1, 1}, {0, -1, 0, 1}, {1, -1, -1, 1}, {-1, 0, 1, 0}};
    const int* pick = picks[direction];
    const Pixel a = at.At(x + pick[0], y + pick[1]);
    const Pixel b = at.At(x + pick[2], y + pick[3]);
    int largest = -1000;
    int smallest = 1000;
    for (int c = 0; c < 3; ++c) {
        largest = std::max(largest, a[c] - b[c]);
        smallest = std::min(smallest, a[c] - b[c]);
    }
    const int strongest = smallest < 0 && -smallest > largest ? smallest : largest;
    const Pixel fore = Bgr(foreground);
    Pixel out{};
    for (int c = 0; c < 3; ++c) {
        out[c] = std::clamp(fore[c] + strongest * depth, 0, 255);
    }
    return out;
}

Pixel DespeckleRule(const Neighbourhood& at, int x, int y, int threshold) {
    const Pixel centre = at.At(x, y);
    Pixel smoothed{};
    bool far = false;
    for (int c = 0; c < 3; ++c) {
        int sum = 0;
        for (int dy = -1; dy <= 1; ++dy) {
            for (int dx = -1; dx <= 1; ++dx) {
                sum += at.At(x + dx, y + dy)[c];
            }
        }
        smoothed[c] = (((sum - centre[c]) >> 3) * 3 + centre[c]) >> 2;
        far = far || std::abs(smoothed[c] - centre[c]) >= threshold;
    }
    return far ? smoothed : centre;
}

TEST(FilterReference, FindEdgeInEveryMode) {
    for (int keep : {0, 1}) {
        for (int mode : {0, 1}) {
            for (int t : {0, 35}) {
                const ColorWord back = MakeColorWord(200, 90, 30);
                ExpectFollowsRule([&](CImageFilter& f) { return f.FindEdge(keep, mode, t, back); },
                                  [&](const Neighbourhood& at, int x, int y) {
                                      return FindEdgeRule(at, x, y, keep, mode, t, back);
                                  });
            }
        }
    }
}

TEST(FilterReference, TraceContourInEveryMode) {
    const ColorWord back = MakeColorWord(10, 120, 250);
    const ColorWord fore = MakeColorWord(240, 20, 70);
    for (int darkest : {0, 1}) {
        for (int keep : {0, 1}) {
            for (int mode : {0, 1}) {
                for (int t : {0, 60}) {
                    ExpectFollowsRule(
                        [&](CImageFilter& f) { return f.TraceContour(darkest, keep, mode, t, back, fore); },
                        [&](const Neighbourhood& at, int x, int y) {
                            return TraceContourRule(at, x, y, darkest, keep, mode, t, back, fore);
                        });
                }
            }
        }
    }
}

TEST(FilterReference, EmbossInEveryDirectionAndDespeckle) {
    const ColorWord fore = MakeColorWord(128, 100, 160);
    for (int direction = 0; direction < 8; ++direction) {
        const int depth = 1 + direction % 3;
        ExpectFollowsRule([&](CImageFilter& f) { return f.Emboss(direction, depth, fore); },
                          [&](const Neighbourhood& at, int x, int y) {
                              return EmbossRule(at, x, y, direction, depth, fore);
                          });
    }
    ExpectFollowsRule([](CImageFilter& f) { return f.Despeckle(64); },
                      [](const Neighbourhood& at, int x, int y) { return DespeckleRule(at, x, y, 64); });
}

TEST(FilterReference, GrayAndColorLevelFollowTheLuminance) {
    const auto luminance = [](const Pixel& p) { return (59 * p[1] + 30 * p[2] + 11 * p[0] + 50) / 100; };
    ExpectFollowsRule([](CImageFilter& f) { return f.Gray(); }, [&](const Neighbourhood& at, int x, int y) {
        const int level = luminance(at.At(x, y));
        return Pixel{level, level, level};
    });
    const ColorWord fore = MakeColorWord(200, 30, 90);
    ExpectFollowsRule([&](CImageFilter& f) { return f.ColorLevel(34, fore, 0); },
                      [&](const Neighbourhood& at, int x, int y) {
                          const int level = luminance(at.At(x, y));
                          Pixel out = Bgr(fore);
                          for (int& c : out) {
                              c = level >= 128 ? c + (255 - c) * (level - 128) / 127 : c - (127 - level) * c / 127;
                          }
                          return out;
                      });
}

// Mosaic and Average from the top-left, on rows counted from the top: the mean
// of the n x n block at (left, top), last row and column repeated, with the
// block sum cut to 16 bits and the low byte of the quotient kept.
ColorWord BlockMean(const CDibImage& image, int left, int top, int n) {
    int sums[3] = {0, 0, 0};
    for (int dy = 0; dy < n; ++dy) {
        for (int dx = 0; dx < n; ++dx) {
            const ColorWord c = image.GetPixel(std::min(left + dx, image.Width() - 1),
                                               std::min(top + dy, image.Height() - 1));
            sums[0] += RedOf(c);
            sums[1] += GreenOf(c);
            sums[2] += BlueOf(c);
        }
    }
    const auto mean = [&](int sum) { return static_cast<std::uint8_t>(static_cast<std::int16_t>(sum) / (n * n)); };
    return MakeColorWord(mean(sums[0]), mean(sums[1]), mean(sums[2]));
}

TEST(FilterReference, MosaicAndAverageCells) {
    for (int n : {2, 3, 4, 5, 12}) {
        for (int width : {1, 7, 40}) {
            auto source = NoisyImage(width, 9, static_cast<unsigned>(n * 100 + width));
            auto mosaic = RunInto<CImageFilter>(*source, [n](CImageFilter& f) { return f.Mosaic(n); });
            auto average = RunInto<CImageFilter>(*source, [n](CImageFilter& f) { return f.Average(n); });
            for (int y = 0; y < 9; ++y) {
                for (int x = 0; x < width; ++x) {
                    ASSERT_EQ(mosaic->GetPixel(x, y), BlockMean(*source, x - x % n, y - y % n, n))
                        << n << " " << width << " at " << x << ", " << y;
                    ASSERT_EQ(average->GetPixel(x, y), BlockMean(*source, x, y, n))
                        << n << " " << width << " at " << x << ", " << y;
                }
            }
        }
    }
}

TEST(FilterReference, SmallDivisorTruncatesLikeDivision) {
    for (int divisor = 1; divisor <= 256; ++divisor) {
        const ops::SmallDivisor small(divisor);
        for (int x = -32768; x <= 32768; ++x) {
            ASSERT_EQ(small.Divide(x), x / divisor) << x << " / " << divisor;
        }
    }
}

TEST(FilterReference, ChannelTablesOnEveryRowLength) {
    std::mt19937 random(7);
    std::uint8_t tables[3][256];
    for (auto& table : tables) {
        for (auto& entry : table) {
            entry = static_cast<std::uint8_t>(random());
        }
    }
    for (int width = 1; width <= 200; width += 13) {
        auto source = NoisyImage(width, 3, static_cast<unsigned>(width));
        auto target = MakeImage(width, 3);
        ops::ApplyChannelTables(source->Bits(), target->MutableBits(), width, 3, source->RowBytes(), tables[0],
                                tables[1], tables[2]);
        for (int y = 0; y < 3; ++y) {
            for (int x = 0; x < width; ++x) {
                const ColorWord in = source->GetPixel(x, y);
                ASSERT_EQ(target->GetPixel(x, y), MakeColorWord(tables[2][RedOf(in)], tables[1][GreenOf(in)],
                                                                tables[0][BlueOf(in)]))
                    << width << " at " << x;
            }
        }
    }
}

} // namespace
