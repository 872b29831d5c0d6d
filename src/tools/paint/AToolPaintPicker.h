#pragma once

#include "image/DibTypes.h"
#include "tools/AToolOutlineView.h"

#include <QPoint>

// "Color Picker": the colour under the pen goes into the current colour
// button (foreground or background) and follows the pen while it is down.
// On a floating selection the floating pixel counts, not the picture under it.
class AToolPaintPicker : public AToolOutlineView {
public:
    void ToolActivate() override;
    void ToolDeactivate() override;
    void OnPenDown(const PenEvent& pen) override;
    void OnPenMove(const PenEvent& pen) override;
    void OnPenUp(const PenEvent& pen) override;

    // The colour the picker takes at picture pixel `point`.
    static ColorWord ColorAt(const CBriselDoc& doc, QPoint point);

private:
    bool Pick(QPoint screen);

    bool m_dragging = false;
};
