#pragma once

#include "tools/select/AToolSelect.h"
#include "selection/SelectionOutline.h"

#include <vector>

// "Select Free Hand": the pen's path, closed, becomes the selection (or is
// added to or subtracted from it). A press must start inside the picture; the
// path may leave it. The path is shown as a black and white dashed line while
// it is drawn.
class AToolSelectFree : public AToolSelect {
public:
    void PaintOverlay(QPainter& painter) override;
    const std::vector<OutlineEntry>& Path() const { return m_points; }

protected:
    bool AcceptsPress(QPoint image) const override;
    void BeginShape(const PenEvent& pen, QPoint image) override;
    void ContinueShape(const PenEvent& pen, QPoint image) override;
    void FinishShape(const PenEvent& pen, QPoint image) override;
    bool CancelShape() override;

private:
    QPoint PathPointOnScreen(const OutlineEntry& point) const;
    void InvalidateSegment(const OutlineEntry& from, const OutlineEntry& to);
    void InvalidatePath();

    std::vector<OutlineEntry> m_points;
};
