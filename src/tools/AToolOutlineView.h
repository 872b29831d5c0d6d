#pragma once

#include "view/CBriselView.h"
#include "view/MarchingOutline.h"

// A view that shows the selection's animated dotted outline: the base of
// every tool, so the selection stays in sight whichever tool is chosen. While the outline timer runs, each
// tick repaints only the outline pixels that change colour; every paint draws
// the outline over the picture, rebuilt first when the view scrolled or
// zoomed or the selection changed.
class AToolOutlineView : public CBriselView {
public:
    void ToolDeactivate() override;
    void OnOutlineTick() override;
    void RefreshOutline() override;
    void PaintOverlay(QPainter& painter) override;
    bool OverlayCovers(const QRegion& dirty) override;

    const MarchingOutline& Outline() const { return m_outline; }

protected:
    // Whether the outline is drawn now: while the timer runs and the outline
    // is enabled.
    virtual bool OutlineShown() const;
    // True while the tool draws a preview of its own that a repaint must
    // render the picture for.
    virtual bool PreviewActive() const { return false; }

    // The outline follows the work mask (the whole-picture selection mask)
    // instead of the floating selection while set.
    void OutlineWorkMask(bool on) { m_outlineWorkMask = on; }
    // Rebuilds the outline and marks all of it for repainting.
    void ShowOutlineNow();
    // Starts the animation when a floating selection exists.
    void RestartOutlineIfSelected();
    // A painting press at client point `screen` outside the floating
    // selection first puts the selection down and ends it, as Select None
    // does, so that the stroke lands on the picture.
    void EndFloatingOutside(QPoint screen);

private:
    bool SyncOutline(bool force);

    bool m_outlineWorkMask = false;
    MarchingOutline m_outline;
};
