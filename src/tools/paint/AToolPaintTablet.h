#pragma once

#include "tools/paint/AToolPaintStroke.h"
#include "paint/StrokeReference.h"

// Lighter, Darker and the artistic pens (Water, Oil, Wax, Carbon, Chalk,
// Mick): every dab and segment is the artistic pen of the tool's kind. Kinds
// whose draw modes read a reference picture get a copy of the target taken at
// pen-down, so a stroke crossing itself does not go further than one layer
// over the picture as it was.
class AToolPaintTablet : public AToolPaintStroke {
public:
    static constexpr int kLighter = 2;
    static constexpr int kDarker = 3;
    static constexpr int kWater = 7;
    static constexpr int kWax = 8;
    static constexpr int kCarbon = 9;
    static constexpr int kChalk = 10;
    static constexpr int kMick = 11;
    static constexpr int kOil = 12;

    explicit AToolPaintTablet(int kind) : m_kind(kind) {}
    int Kind() const { return m_kind; }
    static bool ReadsReference(int kind);

protected:
    bool BeginStroke(BrushEngine& engine) override;
    void PaintDab(BrushEngine& engine, int x, int y, int size) override;
    void PaintSegment(BrushEngine& engine, int x1, int y1, int x2, int y2, int size) override;
    void EndStroke() override;

private:
    int m_kind;
    StrokeReference m_reference;
};
