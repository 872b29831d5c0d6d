#pragma once

#include <memory>

class CBriselView;
class CViewWindow;
class CBriselDoc;
class ViewHost;

// Replaces the object bound to the view window by `next`, keeping the window,
// its scroll bars and timer: the old tool is told it is leaving, the whole view
// state is copied across, and the new tool is activated (and resumed when the
// outline may animate). Without a document nothing changes and `next` is
// dropped. Returns true when the switch happened.
bool SwitchToolView(CViewWindow& window, CBriselDoc* doc, ViewHost* host, std::unique_ptr<CBriselView> next);
