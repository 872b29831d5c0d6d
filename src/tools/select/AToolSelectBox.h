#pragma once

#include "tools/select/AToolSelect.h"
#include "view/RubberBand.h"

// The rectangle and ellipse selections: the pen drags a box shown as an
// inverted rubber band; on release the box (or the ellipse inscribed in it)
// becomes the new selection or is added to or subtracted from it. Alt keeps
// the box square. A box without width or height ends the selection.
class AToolSelectBox : public AToolSelect {
public:
    explicit AToolSelectBox(bool ellipse) : m_ellipse(ellipse) {}

    void ToolActivate() override;
    void PaintOverlay(QPainter& painter) override;
    const RubberBand& Band() const { return m_band; }

protected:
    void BeginShape(const PenEvent& pen, QPoint image) override;
    void ContinueShape(const PenEvent& pen, QPoint image) override;
    void FinishShape(const PenEvent& pen, QPoint image) override;
    bool CancelShape() override;

private:
    void SelectBox(const QRect& screenBox);

    bool m_ellipse;
    bool m_captureHeld = false;
    QPoint m_boxStart;
    QPoint m_boxEnd;
    RubberBand m_band;
};
