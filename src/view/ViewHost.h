#pragma once

#include "image/CommandContext.h"

#include <string>

class CDisplayRenderer;

// What the main window offers the view and the tools: the editing context
// (document, undo record, colours), the shared display renderer, and a place
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
};
