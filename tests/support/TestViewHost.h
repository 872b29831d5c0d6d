#pragma once

#include "image/CBriselDoc.h"
#include "image/CUndoHistory.h"
#include "paint/BrushEngine.h"
#include "view/CDisplayRenderer.h"
#include "view/ViewHost.h"

#include <string>

// The main window's part a view and its tools talk to, with every setting in
// reach and what they show written down. Starts with the settings a fresh
// main window has.
class TestViewHost : public ViewHost {
public:
    CommandContext EditingContext() override { return {doc, undo, foreground, background}; }
    CDisplayRenderer& Renderer() override { return renderer; }
    void ShowZoomSuffix(const std::string& text) override { suffix = text; }
    void SetForegroundColor(ColorWord color) override { foreground = color; }
    void SetBackgroundColor(ColorWord color) override { background = color; }
    bool PenPressureSimulation() const override { return pressure; }
    int CurrentToolId() const override { return toolId; }
    int PenSize() const override { return penSize; }
    int PenShape() const override { return penShape; }
    int CurrentColorSlot() const override { return colorSlot; }
    void ShowToolStatus(const std::string& text) override { status = text; }

    CBriselDoc doc;
    CUndoHistory undo;
    CDisplayRenderer renderer;
    ColorWord foreground = 0x00FF0000; // blue
    ColorWord background = 0x00FFFFFF;
    bool pressure = false;
    int toolId = 33000;
    int penSize = 8;
    int penShape = kShapeOval;
    int colorSlot = 0;
    std::string suffix;
    std::string status;
};
