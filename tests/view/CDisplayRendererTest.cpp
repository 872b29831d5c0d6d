#include "view/CDisplayRenderer.h"

#include "image/CBriselDoc.h"
#include "platform/HeapBlock.h"
#include "support/ImageFixtures.h"

#include <QImage>
#include <gtest/gtest.h>

namespace {

ColorWord At(const QImage& image, int x, int y) {
    const QRgb rgb = image.pixel(x, y);
    return MakeColorWord(qRed(rgb), qGreen(rgb), qBlue(rgb));
}

class RendererTest : public ::testing::Test {
protected:
    QImage Render(const CDibImage& picture, int zoom, const ImageRect& area) {
        renderer.SetZoom(zoom);
        EXPECT_EQ(renderer.Bind(&picture, nullptr, nullptr, 0, 0), 1);
        QImage out;
        EXPECT_EQ(renderer.RenderToImage(area, out), 1);
        renderer.Release();
        return out;
    }

    CDisplayRenderer renderer;
};

TEST_F(RendererTest, ActualSizeAcrossSeveralBandsIsExact) {
    auto picture = MakeGradientImage(9, 123);
    const QImage out = Render(*picture, 1, {0, 0, 8, 122});
    ASSERT_EQ(out.size(), QSize(9, 123));
    for (int y = 0; y < 123; ++y) {
        for (int x = 0; x < 9; ++x) {
            ASSERT_EQ(At(out, x, y), picture->GetPixel(x, y)) << x << "," << y;
        }
    }
}

TEST_F(RendererTest, MagnificationRepeatsEachPixelAsABlock) {
    auto picture = MakeGradientImage(4, 30);
    const QImage out = Render(*picture, 3, {1, 10, 3, 29});
    ASSERT_EQ(out.size(), QSize(9, 60));
    for (int y = 0; y < 60; ++y) {
        for (int x = 0; x < 9; ++x) {
            ASSERT_EQ(At(out, x, y), picture->GetPixel(1 + x / 3, 10 + y / 3)) << x << "," << y;
        }
    }
}

TEST_F(RendererTest, ReductionAveragesBlocksWithShorterLastGroups) {
    auto picture = MakeImage(3, 3);
    const int values[3][3] = {{10, 20, 31}, {30, 40, 60}, {100, 7, 255}};
    for (int y = 0; y < 3; ++y) {
        for (int x = 0; x < 3; ++x) {
            picture->SetPixel(x, y, MakeColorWord(values[y][x], 0, 0));
        }
    }
    const QImage out = Render(*picture, -2, {0, 0, 2, 2});
    ASSERT_EQ(out.size(), QSize(2, 2));
    // Rows are averaged first (truncating), then columns.
    EXPECT_EQ(RedOf(At(out, 0, 0)), ((10 + 30) / 2 + (20 + 40) / 2) / 2);
    EXPECT_EQ(RedOf(At(out, 1, 0)), (31 + 60) / 2);
    EXPECT_EQ(RedOf(At(out, 0, 1)), (100 + 7) / 2);
    EXPECT_EQ(RedOf(At(out, 1, 1)), 255);
}

TEST_F(RendererTest, FloatingSelectionIsLaidOverThroughItsMask) {
    CBriselDoc doc;
    doc.SetPicture(MakeImage(6, 4));
    doc.GetPicture()->Clear(0x00FFFFFF);
    doc.SetMask(CreateMask(6, 4, true));
    auto floating = MakeImage(2, 2);
    floating->Clear(0x000000FF);
    auto mask = CreateMask(2, 2, true);
    mask->SetBit(1, 0, true);
    mask->SetBit(0, 1, true);
    doc.SetFloatImage(std::move(floating));
    doc.SetFloatMask(std::move(mask));
    doc.SetFloatPosition(3, 1);

    renderer.SetZoom(1);
    ASSERT_EQ(renderer.Bind(doc), 1);
    QImage out;
    ASSERT_EQ(renderer.RenderToImage({0, 0, 5, 3}, out), 1);
    EXPECT_EQ(At(out, 3, 1), 0x00FFFFFFu); // mask bit clear
    EXPECT_EQ(At(out, 4, 1), 0x000000FFu);
    EXPECT_EQ(At(out, 3, 2), 0x000000FFu);
    EXPECT_EQ(At(out, 4, 2), 0x00FFFFFFu);
    EXPECT_EQ(At(out, 2, 1), 0x00FFFFFFu);
    // The picture itself is untouched.
    EXPECT_EQ(doc.GetPicture()->GetPixel(4, 1), 0x00FFFFFFu);
}

TEST_F(RendererTest, GammaBrightensMidTonesAndOutOfRangeBecomesOne) {
    auto picture = MakeImage(1, 1);
    picture->SetPixel(0, 0, MakeColorWord(128, 128, 0));
    renderer.SetGamma(20, 10, 10);
    const QImage out = Render(*picture, 1, {0, 0, 0, 0});
    EXPECT_GT(RedOf(At(out, 0, 0)), 170);
    EXPECT_EQ(GreenOf(At(out, 0, 0)), 128);
    EXPECT_EQ(BlueOf(At(out, 0, 0)), 0);
    renderer.SetGamma(80, 10, 0);
    EXPECT_EQ(renderer.GammaRed(), 1);
}

TEST_F(RendererTest, OrderedDitheringFollowsTheThresholdMatrices) {
    EXPECT_EQ(CDisplayRenderer::Quantise4096(0x37, 0, 0), 0x40);
    EXPECT_EQ(CDisplayRenderer::Quantise4096(0x37, 1, 0), 0x30);
    EXPECT_EQ(CDisplayRenderer::Quantise4096(0xF5, 0, 0), 255);
    EXPECT_EQ(CDisplayRenderer::Quantise4096(0x3F, 0, 3), 0x40); // threshold 15 > 15 fails
    EXPECT_EQ(CDisplayRenderer::Quantise65536(0x0B, 0, 0), 0x10);
    EXPECT_EQ(CDisplayRenderer::Quantise65536(0x0B, 1, 0), 0x08);
    EXPECT_EQ(CDisplayRenderer::Quantise65536(0xFB, 0, 0), 255);
}

TEST_F(RendererTest, DisplayModesChooseTheOutputDepth) {
    auto picture = MakeImage(2, 1);
    picture->SetPixel(0, 0, MakeColorWord(0x37, 0x37, 0x37));
    picture->SetPixel(1, 0, MakeColorWord(0x37, 0x37, 0x37));
    renderer.SetScreenDepth(24);
    renderer.SetDisplayMode(CDisplayRenderer::kAutomatic);
    EXPECT_EQ(renderer.OutputDepth(), 24);
    EXPECT_EQ(RedOf(At(Render(*picture, 1, {0, 0, 1, 0}), 0, 0)), 0x37);
    renderer.SetDisplayMode(CDisplayRenderer::k4096Colors);
    EXPECT_EQ(renderer.OutputDepth(), 16);
    const QImage dithered = Render(*picture, 1, {0, 0, 1, 0});
    EXPECT_EQ(RedOf(At(dithered, 0, 0)), 0x40);
    EXPECT_EQ(RedOf(At(dithered, 1, 0)), 0x30);
    renderer.SetScreenDepth(16);
    renderer.SetDisplayMode(CDisplayRenderer::kAutomatic);
    EXPECT_EQ(renderer.OutputDepth(), 16); // Automatic on a 16-bit display quantises to 4096 colours
    renderer.SetDisplayMode(CDisplayRenderer::kAutomatic);
}

TEST_F(RendererTest, MissingRowBuffersDrawNothing) {
    auto picture = MakeGradientImage(8, 8);
    renderer.SetZoom(1);
    ASSERT_EQ(renderer.Bind(picture.get(), nullptr, nullptr, 0, 0), 1);
    platform::HeapBlock::FailNextAllocations(1);
    QImage out;
    EXPECT_EQ(renderer.RenderToImage({0, 0, 7, 7}, out), 0);
    platform::HeapBlock::FailNextAllocations(0);
    // The next render works again.
    EXPECT_EQ(renderer.RenderToImage({0, 0, 7, 7}, out), 1);
    renderer.Release();
}

} // namespace
