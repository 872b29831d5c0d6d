#pragma once

#include "image/DibTypes.h"
#include "platform/HeapBlock.h"

#include <cstdint>

class CDibImage;

// Pen shapes, as stored under "PenShape".
enum BrushShape : int {
    kShapeRect = 1,
    kShapeOval = 2,
    kShapeHLine = 3,
    kShapeVLine = 4,
    kShapeSlash = 5,
    kShapeBSlash = 6,
};

// Draw modes: how a span of pen cells is blended into the target row.
enum BrushMode : int {
    kModeSolid = 1,
    kModeLighten = 2,
    kModeDarken = 3,
    kModeHue = 4,
    kModeHueSaturation = 5,
    kModeColorReplace = 6,
    kModeWash = 7,
    kModeGrain = 8,
    kModeGrainBoth = 11,
    kModeSpeckle = 12,
    // Copies the reference image's pixels from (x - dx, y - dy), the clone
    // offset, to each cell (x, y); cells whose source lies outside the
    // reference stay as they are.
    kModeClone = 13,
};

// The one painting engine. Every dab (the pen shape at a point) and every
// segment (the pen shape swept from one sample to the next, filled as one solid
// band) is reduced to horizontal spans, each handed to the span procedure of
// the draw mode, which clips it to the image, reads the row, blends and writes
// it back. The engine keeps no stroke state; the tool keeps the last sample.
class BrushEngine {
public:
    static constexpr int kMaxPenSize = 32;
    static constexpr int kSprayCells = 32;

    BrushEngine() = default;
    BrushEngine(const BrushEngine&) = delete;
    BrushEngine& operator=(const BrushEngine&) = delete;

    void SetTargetImage(CDibImage* image) { m_target = image; }
    void SetReferenceImage(const CDibImage* image) { m_reference = image; }
    // The clone offset of mode 13: pen point minus source point.
    void SetCloneOffset(int dx, int dy) {
        m_cloneDx = dx;
        m_cloneDy = dy;
    }
    void SetForegroundColor(ColorWord color);
    void SetBackgroundColor(ColorWord color);
    CDibImage* TargetImage() const { return m_target; }
    ColorWord Foreground() const { return m_foreground; }
    ColorWord Background() const { return m_background; }

    // Pixel of the target: its colour word (1-bit images through the palette),
    // or the three channels (bits 16..23, 8..15, 0..7).
    ColorWord ReadPixel(int x, int y) const;
    void ReadPixel(int x, int y, int& blue, int& green, int& red) const;

    // Fills the oval row table for a pen of diameter size (1..32).
    void BuildOvalTable(int size);
    bool OvalTableValid() const { return m_ovalValid != 0; }
    int OvalLeft(int row) const { return m_ovalRows[row][0]; }
    int OvalRight(int row) const { return m_ovalRows[row][1]; }

    // 1 on success, 0 for modes 2, 3 and 13 without a reference image.
    int Dab(int x, int y, int size, int shape, int mode);
    int Segment(int x1, int y1, int x2, int y2, int size, int shape, int mode);
    // A filled rectangle (inclusive) and a single span, through the mode's
    // span procedure; for shape drawing and mask fills.
    int FillRect(int left, int top, int right, int bottom, int mode);
    int FillSpan(int left, int right, int row, int mode);

    // Air brush and colour pen: the spray mask of a pen (size at most 32,
    // pattern kind 1..6 following the pen shapes) with strength base + size
    // div 2 in the middle, one less per ring outwards; and spraying it.
    void BuildAirBrushMask(int size, int kind) { BuildSprayMask(size, kind, m_airBrushBase); }
    void BuildColorPenMask(int size, int kind) { BuildSprayMask(size, kind, m_colorPenBase); }
    void SprayAt(int x, int y);
    std::uint8_t SprayStrength(int column, int row) const { return m_sprayMask[row * kSprayCells + column]; }

    // Hue of the foreground colour and the factors of modes 4 and 5.
    void ComputeForegroundHue(int red, int green, int blue);
    int ForegroundHue() const { return m_foregroundHue; }
    // Bounds of mode 6 around the foreground colour (images over 8 bits only).
    void SetColorMatchBounds(int similarityRed, int similarityGreen, int similarityBlue);

    // Blend parameters of the artistic modes; they stay as last set.
    void SetLightenDarkenShift(int shift) { m_lightenDarkenShift = static_cast<std::int16_t>(shift); }
    void SetWashOpacity(int opacity) { m_washOpacity = static_cast<std::int16_t>(opacity); }
    void SetGrain(int opacity, int density);
    void SetSpeckle(int opacity, int jitter, int density);
    int GrainDensity() const { return m_grainDensity; }
    int SpeckleDensity() const { return m_speckleDensity; }

private:
    using SpanProc = void (*)(BrushEngine&, int left, int right, int row, std::uint8_t* work);

    static SpanProc SpanProcOf(int mode);
    static void SpanSolid(BrushEngine& e, int left, int right, int row, std::uint8_t* work);
    static void SpanLighten(BrushEngine& e, int left, int right, int row, std::uint8_t* work);
    static void SpanDarken(BrushEngine& e, int left, int right, int row, std::uint8_t* work);
    static void SpanHue(BrushEngine& e, int left, int right, int row, std::uint8_t* work);
    static void SpanHueSaturation(BrushEngine& e, int left, int right, int row, std::uint8_t* work);
    static void SpanColorReplace(BrushEngine& e, int left, int right, int row, std::uint8_t* work);
    static void SpanWash(BrushEngine& e, int left, int right, int row, std::uint8_t* work);
    static void SpanGrain(BrushEngine& e, int left, int right, int row, std::uint8_t* work);
    static void SpanSpeckle(BrushEngine& e, int left, int right, int row, std::uint8_t* work);
    static void SpanClone(BrushEngine& e, int left, int right, int row, std::uint8_t* work);
    bool ClipSpan(int& left, int& right, int row) const;
    const std::uint8_t* ReferenceRow(int row) const;

    // Geometry (BrushGeometry.cpp).
    void DrawSpan(int left, int right, int row) { m_spanProc(*this, left, right, row, m_work); }
    void DrawRect(int left, int top, int right, int bottom);
    void DrawDab(int x, int y, int size, int shape);
    void DrawEndDabs(int firstX, int firstY, int secondX, int secondY, int size, int shape);
    void DrawHorizontalSegment(int x1, int x2, int y, int size, int shape);
    void DrawVerticalSegment(int x, int y1, int y2, int size, int shape);
    void DrawGeneralSegment(int x1, int y1, int x2, int y2, int size, int shape);
    void DrawSweptLine(int x1, int y1, int x2, int y2, int size, int shape);
    void DrawLineRows(int x1, int y1, int x2, int y2, int size);
    void DrawParallelogram(const int (&corners)[4][2]);
    bool BeginCall(int mode, std::size_t workBytes, int fillPixels);
    void EndCall();

    void BuildSprayMask(int size, int kind, int base);
    void ClearSprayMask();

    CDibImage* m_target = nullptr;
    SpanProc m_spanProc = nullptr;
    const CDibImage* m_reference = nullptr;
    int m_cloneDx = 0;
    int m_cloneDy = 0;
    std::int32_t m_ovalRows[kMaxPenSize][2] = {};
    std::int32_t m_ovalValid = 0;
    std::uint8_t m_sprayMask[kSprayCells * kSprayCells] = {};
    std::int16_t m_airBrushBase = 2;
    std::int16_t m_lightenDarkenShift = 4;
    std::int16_t m_foregroundHue = -1;
    // Hue factors: S, 255 - S, 255 - trunc(S * f), 255 - trunc(S * (1 - f)),
    // sector i, trunc(f * 255), trunc((1 - f) * 255).
    std::int16_t m_hueSaturation = 0;
    std::int16_t m_hueInverseSaturation = 255;
    std::int16_t m_hueQFactor = 255;
    std::int16_t m_hueTFactor = 255;
    std::int16_t m_hueSector = 0;
    std::int16_t m_hueFraction255 = 0;
    std::int16_t m_hueInverseFraction255 = 255;
    ColorWord m_foreground = 0;
    ColorWord m_background = 0;
    // Upper bounds red, green, blue, then lower bounds red, green, blue.
    std::int16_t m_matchBounds[6] = {255, 255, 255, 0, 0, 0};
    std::int16_t m_foreChannels[3] = {}; // blue, green, red
    std::int16_t m_backChannels[3] = {}; // blue, green, red
    std::int16_t m_washOpacity = 0;
    std::int16_t m_grainOpacity = 0;
    std::int16_t m_grainDensity = 1;
    std::int16_t m_speckleOpacity = 0;
    std::int16_t m_speckleJitter = 0;
    std::int16_t m_speckleDensity = 1;
    std::int16_t m_colorPenBase = 5;

    // The work buffer of the call under way and the oval size it was built for.
    platform::HeapBlock m_workBlock;
    std::uint8_t* m_work = nullptr;
    int m_ovalSize = 0;
    int m_mode = kModeSolid;
    int m_spraySize = 0;
};
