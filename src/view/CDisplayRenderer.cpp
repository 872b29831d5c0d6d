#include "view/CDisplayRenderer.h"

#include "ops/CColorAdjuster.h"

#include "image/CBriselDoc.h"
#include "image/CDibImage.h"
#include "image/FloatingBlend.h"
#include "platform/Settings.h"
#include "view/DisplayKernels.h"

#include <QImage>
#include <QPainter>
#include <QPoint>
#include <algorithm>
#include <cmath>
#include <cstring>

namespace {
const char* const kSection = "MainSection";
const char* const kDisplayKey = "OptimizedDisplay";

constexpr std::uint8_t kMatrix4096[4][4] = {{0, 8, 2, 10}, {12, 4, 14, 6}, {3, 11, 1, 9}, {15, 7, 13, 5}};
constexpr std::uint8_t kMatrix65536[4][4] = {{0, 4, 1, 5}, {6, 2, 7, 3}, {1, 5, 0, 4}, {7, 3, 6, 2}};

std::uint8_t QuantiseWith(std::uint8_t c, std::uint8_t threshold, unsigned highMask, unsigned step) {
    const unsigned high = c & highMask;
    const unsigned rest = c & ~highMask & 0xFFu;
    if (threshold > rest) {
        return static_cast<std::uint8_t>(high);
    }
    return high == highMask ? 255 : static_cast<std::uint8_t>(high + step);
}

int ValidGamma(int gamma) {
    return (gamma >= 1 && gamma <= 79) ? gamma : 1;
}
std::uint32_t StrideOf(int pixels) {
    return (static_cast<std::uint32_t>(pixels) * 3 + 3) & ~3u;
}
} // namespace

CDisplayRenderer::CDisplayRenderer() {
    m_displayMode = platform::Settings::ReadInt(kSection, kDisplayKey, kAutomatic);
    if (m_displayMode < kAutomatic || m_displayMode > k4096Colors) {
        m_displayMode = kAutomatic;
    }
    BuildLookupTables();
}

CDisplayRenderer::~CDisplayRenderer() {
    platform::Settings::WriteInt(kSection, kDisplayKey, m_displayMode);
}

void CDisplayRenderer::SetDisplayMode(int mode) {
    m_displayMode = (mode >= kAutomatic && mode <= k4096Colors) ? mode : kAutomatic;
}

void CDisplayRenderer::SetGamma(int red, int green, int blue) {
    m_gammaRed = ValidGamma(red);
    m_gammaGreen = ValidGamma(green);
    m_gammaBlue = ValidGamma(blue);
    BuildLookupTables();
}

void CDisplayRenderer::BuildLookupTables() {
    CColorAdjuster::GammaTable(m_gammaRed, m_lutRed);
    CColorAdjuster::GammaTable(m_gammaGreen, m_lutGreen);
    CColorAdjuster::GammaTable(m_gammaBlue, m_lutBlue);
}

void CDisplayRenderer::SetZoom(int code) {
    m_zoom = (code == 0 || code == -1) ? 1 : code;
}

int CDisplayRenderer::OutputDepth() const {
    switch (m_displayMode) {
    case k65536Colors:
    case k4096Colors:
        return 16;
    case kTrueColor:
        return 24;
    default:
        return m_screenDepth;
    }
}

std::uint8_t CDisplayRenderer::Quantise4096(std::uint8_t c, int x, int y) {
    return QuantiseWith(c, kMatrix4096[y & 3][x & 3], 0xF0, 16);
}

std::uint8_t CDisplayRenderer::Quantise65536(std::uint8_t c, int x, int y) {
    return QuantiseWith(c, kMatrix65536[y & 3][x & 3], 0xF8, 8);
}

int CDisplayRenderer::Bind(const CBriselDoc& doc) {
    return Bind(doc.GetPicture(), doc.GetFloatImage(), doc.GetFloatMask(), doc.FloatX(), doc.FloatY());
}

int CDisplayRenderer::Bind(const CDibImage* picture, const CDibImage* floatImage, const CDibImage* floatMask,
                           int floatX, int floatY) {
    Release();
    m_image = picture;
    if (floatImage == nullptr || floatMask == nullptr || floatImage->Width() != floatMask->Width() ||
        floatImage->Height() != floatMask->Height()) {
        return 1;
    }
    m_floatRowPixels = platform::HeapBlock::Allocate(floatImage->RowBytes());
    m_floatRowMask = platform::HeapBlock::Allocate(floatMask->RowBytes());
    if (!m_floatRowPixels || !m_floatRowMask) {
        Release();
        return 0;
    }
    m_floatImage = floatImage;
    m_floatMask = floatMask;
    m_floatX = floatX;
    m_floatY = floatY;
    m_floatBounds = {floatX, floatY, floatX + floatImage->Width() - 1, floatY + floatImage->Height() - 1};
    return 1;
}

void CDisplayRenderer::Release() {
    m_image = nullptr;
    m_floatImage = nullptr;
    m_floatMask = nullptr;
    m_floatRowPixels.reset();
    m_floatRowMask.reset();
    m_imageRow.reset();
    m_sums.reset();
    m_scaledRow.reset();
    m_scaledRgb.reset();
    m_rowBytes.reset();
    m_thresholds.reset();
    m_band.reset();
    m_imageRowCapacity = 0;
    m_screenRowCapacity = 0;
}

int CDisplayRenderer::ScreenWidthOf(const ImageRect& area) const {
    const int pixels = area.right - area.left + 1;
    return m_zoom >= 1 ? pixels * m_zoom : (pixels + -m_zoom - 1) / -m_zoom;
}

int CDisplayRenderer::ScreenHeightOf(const ImageRect& area) const {
    const int rows = area.bottom - area.top + 1;
    return m_zoom >= 1 ? rows * m_zoom : (rows + -m_zoom - 1) / -m_zoom;
}

bool CDisplayRenderer::EnsureBuffers(int imagePixels, int screenPixels) {
    if (imagePixels <= m_imageRowCapacity && screenPixels <= m_screenRowCapacity) {
        return true;
    }
    m_imageRow = platform::HeapBlock::Allocate(static_cast<std::size_t>(imagePixels) * 3);
    m_sums = platform::HeapBlock::Allocate(static_cast<std::size_t>(imagePixels) * 3 * sizeof(std::uint16_t));
    m_scaledRow = platform::HeapBlock::Allocate(StrideOf(screenPixels));
    m_scaledRgb = platform::HeapBlock::Allocate(static_cast<std::size_t>(screenPixels) * 8);
    m_rowBytes = platform::HeapBlock::Allocate(StrideOf(screenPixels));
    m_thresholds = platform::HeapBlock::Allocate(static_cast<std::size_t>(StrideOf(screenPixels)) * 4);
    m_band = platform::HeapBlock::Allocate(static_cast<std::size_t>(screenPixels) * 4 * kBandRows);
    if (!m_imageRow || !m_sums || !m_scaledRow || !m_scaledRgb || !m_rowBytes || !m_thresholds || !m_band) {
        m_imageRowCapacity = m_screenRowCapacity = 0;
        return false;
    }
    m_imageRowCapacity = imagePixels;
    m_screenRowCapacity = screenPixels;
    return true;
}

void CDisplayRenderer::FetchImageRow(int y, int x0, int x1, std::uint8_t* dst) {
    m_image->GetSpanBytes(x0, x1, y, dst);
    if (m_floatImage == nullptr || y < m_floatBounds.top || y > m_floatBounds.bottom ||
        x1 < m_floatBounds.left || x0 > m_floatBounds.right) {
        return;
    }
    m_floatImage->GetRow(y - m_floatY, m_floatRowPixels.data());
    m_floatMask->GetRow(y - m_floatY, m_floatRowMask.data());
    BlendFloatingRow(dst, x0, x1, m_floatRowPixels.data(), m_floatRowMask.data(), m_floatX,
                     m_floatImage->Width());
}

// Columns x0..x1 of picture row y as the screen shows them: the picture's own
// bytes where no floating selection lies over the row, else a blended copy.
const std::uint8_t* CDisplayRenderer::ImageRowSpan(int y, int x0, int x1) {
    const bool inside = y >= 0 && y < m_image->Height() && x0 >= 0 && x1 < m_image->Width();
    const bool floating = m_floatImage != nullptr && y >= m_floatBounds.top && y <= m_floatBounds.bottom &&
                          x1 >= m_floatBounds.left && x0 <= m_floatBounds.right;
    if (inside && !floating) {
        return m_image->RowData(y) + 3 * static_cast<std::size_t>(x0);
    }
    FetchImageRow(y, x0, x1, m_imageRow.data());
    return m_imageRow.data();
}

void CDisplayRenderer::ApplyLookup(std::uint8_t* row, int pixels) const {
    for (int i = 0; i < pixels; ++i, row += 3) {
        row[0] = m_lutBlue[row[0]];
        row[1] = m_lutGreen[row[1]];
        row[2] = m_lutRed[row[2]];
    }
}

void CDisplayRenderer::MagnifyRow(const std::uint8_t* src, int pixels, std::uint8_t* dst) const {
    for (int i = 0; i < pixels; ++i, src += 3) {
        const std::uint8_t b = m_lutBlue[src[0]];
        const std::uint8_t g = m_lutGreen[src[1]];
        const std::uint8_t r = m_lutRed[src[2]];
        for (int n = 0; n < m_zoom; ++n) {
            *dst++ = b;
            *dst++ = g;
            *dst++ = r;
        }
    }
}

namespace {
void MarkGridPixel(std::uint8_t* pixel) {
    pixel[0] ^= 0x80;
    pixel[1] ^= 0x80;
    pixel[2] ^= 0x80;
}
} // namespace

void CDisplayRenderer::MarkGridColumns(std::uint8_t* row, int screenPixels) const {
    for (int x = 0; x < screenPixels; x += m_zoom) {
        MarkGridPixel(row + 3 * x);
    }
}

void CDisplayRenderer::ReduceRows(const ImageRect& area, int firstRow, std::uint8_t* dst) {
    const int k = -m_zoom;
    const int pixels = area.right - area.left + 1;
    const auto bytes = static_cast<std::size_t>(pixels) * 3;
    auto* sums = reinterpret_cast<std::uint16_t*>(m_sums.data());
    std::fill(sums, sums + bytes, std::uint16_t{0});
    const int lastRow = std::min(firstRow + k - 1, area.bottom);
    for (int y = firstRow; y <= lastRow; ++y) {
        display::AddRow(ImageRowSpan(y, area.left, area.right), sums, bytes);
    }
    display::DivideSums(sums, bytes, lastRow - firstRow + 1);
    display::ReduceColumns(sums, pixels, k, m_lutBlue, m_lutGreen, m_lutRed, dst);
}

void CDisplayRenderer::BuildScreenRow(const ImageRect& area, int screenRow, std::uint8_t* dst,
                                      int& cachedRow) {
    const int screenPixels = ScreenWidthOf(area);
    if (m_zoom < 1) {
        ReduceRows(area, area.top + screenRow * -m_zoom, dst);
        return;
    }
    const int imageRow = area.top + screenRow / m_zoom;
    if (imageRow != cachedRow) {
        const int pixels = area.right - area.left + 1;
        if (m_zoom == 1) {
            FetchImageRow(imageRow, area.left, area.right, m_scaledRow.data());
            if (!IdentityGamma()) {
                ApplyLookup(m_scaledRow.data(), pixels);
            }
        } else {
            BuildMagnifiedRow(area, imageRow);
        }
        cachedRow = imageRow;
    }
    std::memcpy(dst, m_scaledRow.data(), static_cast<std::size_t>(screenPixels) * 3);
    if (GridShown() && screenRow % m_zoom == 0) {
        // The top row of each image pixel: the whole row is marked, and the
        // column marks it turned back are marked again.
        const std::size_t bytes = static_cast<std::size_t>(screenPixels) * 3;
        for (std::size_t i = 0; i < bytes; ++i) {
            dst[i] ^= 0x80;
        }
        MarkGridColumns(dst, screenPixels);
    }
}

void CDisplayRenderer::BuildMagnifiedRow(const ImageRect& area, int imageRow) {
    MagnifyRow(ImageRowSpan(imageRow, area.left, area.right), area.right - area.left + 1, m_scaledRow.data());
    if (GridShown()) {
        MarkGridColumns(m_scaledRow.data(), ScreenWidthOf(area));
    }
}

// Magnified rows without dithering: the screen rows of one picture row are
// the same 32-bit row (the grid's top row aside), converted once.
void CDisplayRenderer::CopyMagnifiedRow(const ImageRect& area, int screenRow, std::uint32_t* out,
                                        int& cachedRow) {
    const int imageRow = area.top + screenRow / m_zoom;
    const auto width = static_cast<std::size_t>(ScreenWidthOf(area));
    auto* converted = reinterpret_cast<std::uint32_t*>(m_scaledRgb.data());
    // The top row of each image pixel is marked whole, so the row's own
    // column marks come out marked once: it is the converted row XORed with
    // this pattern, made at the render's first row.
    std::uint32_t* topRowMarks = converted + width;
    if (cachedRow == -1 && GridShown()) {
        constexpr std::uint32_t kGridMark = 0x808080;
        for (std::size_t x = 0; x < width; ++x) {
            topRowMarks[x] = x % static_cast<std::size_t>(m_zoom) == 0 ? 0 : kGridMark;
        }
    }
    if (imageRow != cachedRow) {
        BuildMagnifiedRow(area, imageRow);
        display::ToRgb32(m_scaledRow.data(), converted, width);
        cachedRow = imageRow;
    }
    if (!GridShown() || screenRow % m_zoom != 0) {
        std::memcpy(out, converted, width * 4);
        return;
    }
    display::XorPixels(converted, topRowMarks, out, width);
}

// Threshold rows of the four dither rows for a render whose first screen
// column is screenX: byte i of a row is the matrix entry of its pixel.
void CDisplayRenderer::BuildThresholds(int width, int screenX) {
    const bool fine = m_displayMode == k65536Colors;
    const auto bytes = static_cast<std::size_t>(width) * 3;
    for (int y = 0; y < 4; ++y) {
        std::uint8_t* row = m_thresholds.data() + y * bytes;
        for (int i = 0; i < width; ++i) {
            const int x = (screenX + i) & 3;
            const std::uint8_t t = fine ? kMatrix65536[y][x] : kMatrix4096[y][x];
            row[3 * i] = row[3 * i + 1] = row[3 * i + 2] = t;
        }
    }
}

void CDisplayRenderer::Quantise(std::uint8_t* row, int pixels, int screenY) const {
    const auto bytes = static_cast<std::size_t>(pixels) * 3;
    display::QuantiseBytes(row, m_thresholds.data() + (screenY & 3) * bytes, bytes,
                           m_displayMode == k65536Colors ? 0xF8 : 0xF0);
}

template <typename Sink>
int CDisplayRenderer::RenderBands(const ImageRect& area, int ditherX, int ditherY, Sink&& sink) {
    if (m_image == nullptr || m_image->BitsPerPixel() != 24 || area.right < area.left ||
        area.bottom < area.top) {
        return 0;
    }
    const int width = ScreenWidthOf(area);
    const int height = ScreenHeightOf(area);
    if (!EnsureBuffers(area.right - area.left + 1, width)) {
        return 0;
    }
    const bool quantise = OutputDepth() == 16;
    if (quantise) {
        BuildThresholds(width, ditherX);
    }
    // Rows are built as blue, green, red bytes and handed over as 32-bit
    // pixels, which every backing store takes without converting them.
    const auto stride = static_cast<std::size_t>(width) * 4;
    const bool reuseRows = m_zoom >= 2 && !quantise;
    int cachedRow = -1;
    for (int bandTop = 0; bandTop < height; bandTop += kBandRows) {
        const int rows = std::min(kBandRows, height - bandTop);
        for (int r = 0; r < rows; ++r) {
            if (reuseRows) {
                CopyMagnifiedRow(area, bandTop + r, reinterpret_cast<std::uint32_t*>(m_band.data() + r * stride),
                                 cachedRow);
                continue;
            }
            std::uint8_t* row = m_rowBytes.data();
            BuildScreenRow(area, bandTop + r, row, cachedRow);
            if (quantise) {
                Quantise(row, width, ditherY + bandTop + r);
            }
            display::ToRgb32(row, reinterpret_cast<std::uint32_t*>(m_band.data() + r * stride),
                             static_cast<std::size_t>(width));
        }
        const QImage band(m_band.data(), width, rows, static_cast<qsizetype>(stride), QImage::Format_RGB32);
        sink(band, bandTop);
    }
    return 1;
}

int CDisplayRenderer::Render(QPainter& painter, const ImageRect& area, const QPoint& screenTopLeft) {
    return RenderBands(area, screenTopLeft.x(), screenTopLeft.y(), [&](const QImage& band, int bandTop) {
        painter.drawImage(QPoint(screenTopLeft.x(), screenTopLeft.y() + bandTop), band);
    });
}

int CDisplayRenderer::RenderToImage(const ImageRect& area, QImage& out, int ditherX, int ditherY) {
    if (area.right < area.left || area.bottom < area.top) {
        return 0;
    }
    out = QImage(ScreenWidthOf(area), ScreenHeightOf(area), QImage::Format_RGB888);
    return RenderBands(area, ditherX, ditherY, [&](const QImage& band, int bandTop) {
        const QImage rgb = band.convertToFormat(QImage::Format_RGB888);
        for (int r = 0; r < rgb.height(); ++r) {
            std::memcpy(out.scanLine(bandTop + r), rgb.constScanLine(r),
                        static_cast<std::size_t>(rgb.width()) * 3);
        }
    });
}
