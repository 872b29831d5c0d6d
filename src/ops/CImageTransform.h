#pragma once

#include "image/DibTypes.h"

#include <cstdint>

class CDibImage;

// Flips, quarter turns and rotation by an angle of a 24-bit picture or a 1-bit
// mask. One object serves one operation: SetTarget (a blank image of the
// result's size and the source's depth), SetSource, then the operation, which
// writes every row of the target. Rows are counted from the top.
class CImageTransform {
public:
    virtual ~CImageTransform() = default;

    void SetTarget(CDibImage* target);
    void SetSource(const CDibImage* source) { m_source = source; }
    // The colour of target pixels no source pixel falls on (rotation by an
    // angle); for a mask source it is also the fill value.
    void SetFillColor(ColorWord color) { m_fillColor = color; }

    int FlipHorizontal();
    int FlipVertical();
    int RotateLeft();
    int RotateRight();
    // Rotation by `angle` degrees, clockwise on screen, about the centres of
    // source and target. A mask source takes the nearest source bit; when
    // `fill` is set, uncovered bits become set if the fill value is 1, else
    // uncovered bits stay clear. A 24-bit source is sampled bilinearly and
    // uncovered pixels take the fill colour.
    int RotateByAngle(float angle, bool fill);

    // Sine and cosine of a rotation angle, exact near 90, 180 and 270 degrees.
    static void RotationSineCosine(float angle, double& sine, double& cosine);
    // Size of the bounding box of a width x height picture turned by `angle`.
    static void RotatedSize(int width, int height, float angle, int& rotatedWidth, int& rotatedHeight);

private:
    bool Ready() const;
    template <class SourcePosition> int QuarterTurn(const SourcePosition& position);
    void RotateMaskRow(int y, double rowSin, double rowCos, std::uint8_t* row, bool fill) const;
    int RotatePicture();

    CDibImage* m_target = nullptr;
    const CDibImage* m_source = nullptr;
    int m_width = 0;
    int m_height = 0;
    std::uint32_t m_rowBytes = 0;
    ColorWord m_fillColor = 0x00FFFFFF;
    double m_sourceCenterX = 0.0;
    double m_sourceCenterY = 0.0;
    double m_targetCenterX = 0.0;
    double m_targetCenterY = 0.0;
    double m_sine = 0.0;
    double m_cosine = 1.0;
};
