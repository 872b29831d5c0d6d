// The display renderer against a plain per-pixel reading of its rules, on a
// noisy picture with a floating selection over part of it: every zoom code,
// true colour and both dithered modes at odd screen offsets, gamma, and the
// pixel grid, on areas whose edges cut reduction blocks and vector lanes.
#include "view/CDisplayRenderer.h"

#include "ops/CColorAdjuster.h"
#include "support/ImageFixtures.h"

#include <QImage>
#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <random>

namespace {

using Pixel = std::array<int, 3>; // blue, green, red

struct Scene {
    std::unique_ptr<CDibImage> picture = MakeImage(61, 47);
    std::unique_ptr<CDibImage> floating = MakeImage(19, 13);
    std::unique_ptr<CDibImage> mask = MakeImage(19, 13, 1);
    int floatX = 20;
    int floatY = 9;

    Scene() {
        std::mt19937 random(4242);
        for (CDibImage* image : {picture.get(), floating.get()}) {
            for (int y = 0; y < image->Height(); ++y) {
                for (int x = 0; x < image->Width(); ++x) {
                    image->SetPixel(x, y, random() & 0xFFFFFF);
                }
            }
        }
        for (int y = 0; y < 13; ++y) {
            for (int x = 0; x < 19; ++x) {
                mask->SetBit(x, y, (x * x + 3 * y) % 5 != 0);
            }
        }
    }

    // What the screen shows of image pixel (x, y): the floating pixel where
    // its mask is set.
    Pixel Shown(int x, int y, bool withFloating) const {
        const int fx = x - floatX;
        const int fy = y - floatY;
        const bool over = withFloating && fx >= 0 && fy >= 0 && fx < 19 && fy < 13 && mask->GetBit(fx, fy) != 0;
        const ColorWord c = over ? floating->GetPixel(fx, fy) : picture->GetPixel(x, y);
        return {static_cast<int>(BlueOf(c)), static_cast<int>(GreenOf(c)), static_cast<int>(RedOf(c))};
    }
};

struct Setup {
    int zoom;
    int mode;
    int gamma;
    bool grid;
    bool floating;
    std::uint8_t lut[256] = {};
};

Pixel Expected(const Scene& scene, const Setup& s, const ImageRect& area, int sx, int sy, int ditherX,
               int ditherY) {
    const std::uint8_t* lut = s.lut;
    Pixel p{};
    if (s.zoom >= 1) {
        p = scene.Shown(area.left + sx / s.zoom, area.top + sy / s.zoom, s.floating);
        for (int c = 0; c < 3; ++c) {
            p[c] = lut[p[c]];
        }
        if (s.grid && s.zoom >= CDisplayRenderer::kGridZoom && (sx % s.zoom == 0 || sy % s.zoom == 0)) {
            for (int& v : p) {
                v ^= 0x80;
            }
        }
    } else {
        const int k = -s.zoom;
        const int lastRow = std::min(area.top + sy * k + k - 1, area.bottom);
        const int lastColumn = std::min(area.left + sx * k + k - 1, area.right);
        const int rows = lastRow - (area.top + sy * k) + 1;
        const int columns = lastColumn - (area.left + sx * k) + 1;
        for (int c = 0; c < 3; ++c) {
            int sum = 0;
            for (int x = area.left + sx * k; x <= lastColumn; ++x) {
                int columnSum = 0;
                for (int y = area.top + sy * k; y <= lastRow; ++y) {
                    columnSum += scene.Shown(x, y, s.floating)[c];
                }
                sum += columnSum / rows;
            }
            p[c] = lut[sum / columns];
        }
    }
    if (s.mode != CDisplayRenderer::kTrueColor) {
        for (int& v : p) {
            const auto byte = static_cast<std::uint8_t>(v);
            v = s.mode == CDisplayRenderer::k65536Colors
                    ? CDisplayRenderer::Quantise65536(byte, ditherX + sx, ditherY + sy)
                    : CDisplayRenderer::Quantise4096(byte, ditherX + sx, ditherY + sy);
        }
    }
    return p;
}

void ExpectFollowsRules(const Scene& scene, Setup s, const ImageRect& area) {
    CColorAdjuster::GammaTable(s.gamma, s.lut);
    CDisplayRenderer renderer;
    // The renderer writes its mode to the settings when it goes: leave the
    // one it found there.
    struct KeepSettings {
        CDisplayRenderer& renderer;
        int mode;
        ~KeepSettings() { renderer.SetDisplayMode(mode); }
    } keep{renderer, renderer.DisplayMode()};
    renderer.SetDisplayMode(s.mode);
    renderer.SetZoom(s.zoom);
    renderer.SetPixelGrid(s.grid);
    renderer.SetGamma(s.gamma, s.gamma, s.gamma);
    if (s.floating) {
        ASSERT_EQ(renderer.Bind(scene.picture.get(), scene.floating.get(), scene.mask.get(), scene.floatX,
                                scene.floatY),
                  1);
    } else {
        ASSERT_EQ(renderer.Bind(scene.picture.get(), nullptr, nullptr, 0, 0), 1);
    }
    const int ditherX = 5;
    const int ditherY = 2;
    QImage out;
    ASSERT_EQ(renderer.RenderToImage(area, out, ditherX, ditherY), 1);
    ASSERT_EQ(out.width(), renderer.ScreenWidthOf(area));
    ASSERT_EQ(out.height(), renderer.ScreenHeightOf(area));
    for (int y = 0; y < out.height(); ++y) {
        for (int x = 0; x < out.width(); ++x) {
            const QRgb rgb = out.pixel(x, y);
            const Pixel actual{qBlue(rgb), qGreen(rgb), qRed(rgb)};
            ASSERT_EQ(actual, Expected(scene, s, area, x, y, ditherX, ditherY))
                << "zoom " << s.zoom << " mode " << s.mode << " gamma " << s.gamma << " grid " << s.grid
                << " floating " << s.floating << " at " << x << ", " << y;
        }
    }
}

TEST(RendererReference, EveryZoomAndModeWithAndWithoutTheFloatingSelection) {
    const Scene scene;
    const ImageRect areas[] = {{0, 0, 60, 46}, {3, 5, 30, 28}};
    for (int zoom : {-8, -7, -5, -3, -2, 1, 2, 3, 4, 7, 8, 16, 32}) {
        for (int mode : {CDisplayRenderer::kTrueColor, CDisplayRenderer::k65536Colors, CDisplayRenderer::k4096Colors}) {
            for (bool floating : {false, true}) {
                const ImageRect& area = areas[zoom >= 16 ? 1 : (zoom + 8) % 2];
                ExpectFollowsRules(scene, {zoom, mode, 10, false, floating}, area);
            }
        }
    }
}

TEST(RendererReference, GammaAndGridOnEveryPath) {
    const Scene scene;
    for (int zoom : {-4, 1, 3, 4, 5, 8, 16}) {
        for (int mode : {CDisplayRenderer::kTrueColor, CDisplayRenderer::k4096Colors}) {
            ExpectFollowsRules(scene, {zoom, mode, 17, true, true}, {2, 1, 29, 22});
        }
    }
}

} // namespace
