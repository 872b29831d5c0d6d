#pragma once

#include "tools/AToolOutlineView.h"

// "Zoom In" and "Zoom Out": a tap on the picture zooms one step and brings
// the tapped pixel to the middle of the window.
class AToolPaintZoom : public AToolOutlineView {
public:
    explicit AToolPaintZoom(int zoomIn = 1) : m_zoomOut(zoomIn == 0) {}
    bool ZoomsOut() const { return m_zoomOut; }
    void ToolActivate() override;
    void ToolDeactivate() override;
    void OnPenDown(const PenEvent& pen) override;

private:
    bool m_zoomOut;
};
