#pragma once

#include "image/CommandContext.h"
#include "paint/BrushEngine.h"

#include <string>

class CDisplayRenderer;

// What the main window offers the view and the tools: the editing context
// (document, undo history, colours), the shared display renderer, and a place
// to show the zoom in the caption.
class ViewHost {
public:
    virtual ~ViewHost() = default;
    virtual CommandContext EditingContext() = 0;
    virtual CDisplayRenderer& Renderer() = 0;
    virtual void ShowZoomSuffix(const std::string& suffix) = 0;
    virtual void SetForegroundColor(ColorWord color) = 0;
    virtual void SetBackgroundColor(ColorWord color) = 0;
    virtual bool PenPressureSimulation() const = 0;
    virtual int CurrentToolId() const = 0;

    // The pen of the tool palette (size 1..32, shape 1..6) and which colour
    // button is current (0 foreground, 1 background).
    virtual int PenSize() const { return 8; }
    virtual int PenShape() const { return kShapeOval; }
    virtual int CurrentColorSlot() const { return 0; }
    // A passing message of the current tool in the status bar (what a drag
    // is doing); an empty text takes it away.
    virtual void ShowToolStatus(const std::string&) {}
    // The program's one brush engine; every painting tool points it at its
    // target afresh at pen-down.
    virtual BrushEngine& Brush() {
        static BrushEngine engine;
        return engine;
    }
};
