#pragma once

#include "image/DibTypes.h"
#include "platform/HeapBlock.h"

#include <cstdint>

class CBriselDoc;
class CDibImage;
class QImage;
class QPainter;
class QPoint;

// Draws pictures to the screen: one instance for the whole program, shared by
// the view and the full-screen window. It scales rows to the zoom code, passes
// them through the display gamma tables, quantises them with ordered dithering
// when the display mode calls for 16-bit output, and lays the floating
// selection over them. Work goes in bands of at most kBandRows screen rows, so
// no full-size screen bitmap is ever built.
class CDisplayRenderer {
public:
    static constexpr int kBandRows = 50;

    enum DisplayMode { kAutomatic = 0, kTrueColor = 1, k65536Colors = 2, k4096Colors = 3 };

    // Reads the display mode from the settings; gammas start at 1.0.
    CDisplayRenderer();
    // Writes the display mode back to the settings.
    ~CDisplayRenderer();
    CDisplayRenderer(const CDisplayRenderer&) = delete;
    CDisplayRenderer& operator=(const CDisplayRenderer&) = delete;

    int DisplayMode() const { return m_displayMode; }
    void SetDisplayMode(int mode);
    // Gammas in tenths (10 = 1.0); values outside 1..79 become 1.
    void SetGamma(int red, int green, int blue);
    int GammaRed() const { return m_gammaRed; }
    // 0 and -1 are stored as 1.
    void SetZoom(int code);
    int Zoom() const { return m_zoom; }
    // Lines between image pixels from kGridZoom on: the first screen row and
    // column of every image pixel has each channel moved by half the range
    // (XOR 0x80), which stands out on any colour.
    static constexpr int kGridZoom = 4;
    void SetPixelGrid(bool on) { m_pixelGrid = on; }
    bool PixelGrid() const { return m_pixelGrid; }
    // Bits per pixel of the display itself, used by the Automatic mode.
    void SetScreenDepth(int bits) { m_screenDepth = bits; }
    // 16 when the rows are quantised, else 24 (or the display's own depth).
    int OutputDepth() const;

    // Binds the picture and the floating selection (if any) for the renders
    // that follow; 0 when the row buffers cannot be had.
    int Bind(const CBriselDoc& doc);
    int Bind(const CDibImage* picture, const CDibImage* floatImage, const CDibImage* floatMask, int floatX,
             int floatY);
    void Release();

    // Renders the image rectangle `area` (inclusive) with its top-left screen
    // pixel at `screenTopLeft`. 0 when nothing could be drawn.
    int Render(QPainter& painter, const ImageRect& area, const QPoint& screenTopLeft);
    // The same pixels into a new RGB image (tests and snapshots); `ditherX/Y`
    // give the screen position of its top-left pixel.
    int RenderToImage(const ImageRect& area, QImage& out, int ditherX = 0, int ditherY = 0);

    // Screen size of an image rectangle at the current zoom.
    int ScreenWidthOf(const ImageRect& area) const;
    int ScreenHeightOf(const ImageRect& area) const;

    // Quantisers of the 16-bit display modes: one channel value at screen
    // column x, row y.
    static std::uint8_t Quantise4096(std::uint8_t c, int x, int y);
    static std::uint8_t Quantise65536(std::uint8_t c, int x, int y);

private:
    void BuildLookupTables();
    bool IdentityGamma() const { return m_gammaRed == 10 && m_gammaGreen == 10 && m_gammaBlue == 10; }
    void FetchImageRow(int y, int x0, int x1, std::uint8_t* dst);
    const std::uint8_t* ImageRowSpan(int y, int x0, int x1);
    void BuildMagnifiedRow(const ImageRect& area, int imageRow);
    void CopyMagnifiedRow(const ImageRect& area, int screenRow, std::uint32_t* out, int& cachedRow);
    void BuildScreenRow(const ImageRect& area, int screenRow, std::uint8_t* dst, int& cachedRow);
    void MagnifyRow(const std::uint8_t* src, int pixels, std::uint8_t* dst) const;
    void ReduceRows(const ImageRect& area, int firstRow, std::uint8_t* dst);
    void ApplyLookup(std::uint8_t* row, int pixels) const;
    bool GridShown() const { return m_pixelGrid && m_zoom >= kGridZoom; }
    void MarkGridColumns(std::uint8_t* row, int screenPixels) const;
    void BuildThresholds(int width, int screenX);
    void Quantise(std::uint8_t* row, int pixels, int screenY) const;
    bool EnsureBuffers(int imagePixels, int screenPixels);
    template <typename Sink> int RenderBands(const ImageRect& area, int ditherX, int ditherY, Sink&& sink);

    int m_displayMode = kAutomatic;
    int m_gammaRed = 10;
    int m_gammaGreen = 10;
    int m_gammaBlue = 10;
    std::uint8_t m_lutBlue[256] = {};
    std::uint8_t m_lutGreen[256] = {};
    std::uint8_t m_lutRed[256] = {};
    int m_zoom = 1;
    int m_screenDepth = 24;
    bool m_pixelGrid = false;

    const CDibImage* m_image = nullptr;
    const CDibImage* m_floatImage = nullptr;
    const CDibImage* m_floatMask = nullptr;
    int m_floatX = 0;
    int m_floatY = 0;
    ImageRect m_floatBounds;
    platform::HeapBlock m_floatRowPixels;
    platform::HeapBlock m_floatRowMask;

    platform::HeapBlock m_imageRow;  // one picture row of the area
    platform::HeapBlock m_sums;      // 16-bit accumulators for reductions
    platform::HeapBlock m_scaledRow; // the last image row scaled to the screen
    platform::HeapBlock m_scaledRgb; // the same as 32-bit pixels, then the grid's top-row pattern
    platform::HeapBlock m_rowBytes;  // the screen row being built
    platform::HeapBlock m_thresholds; // dither thresholds of four screen rows
    platform::HeapBlock m_band;      // kBandRows screen rows of 32-bit pixels
    int m_imageRowCapacity = 0;
    int m_screenRowCapacity = 0;
};
