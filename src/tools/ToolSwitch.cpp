#include "tools/ToolSwitch.h"

#include "view/CBriselView.h"
#include "view/CViewWindow.h"

bool SwitchToolView(CViewWindow& window, CBriselDoc* doc, ViewHost* host, std::unique_ptr<CBriselView> next) {
    if (doc == nullptr || next == nullptr) {
        return false;
    }
    CBriselView* old = window.View();
    old->ToolDeactivate();
    next->Attach(&window, doc, host);
    next->State() = old->State();
    window.ReplaceView(std::move(next));
    CBriselView* current = window.View();
    current->ToolActivate();
    if (current->State().outlineEnabled) {
        current->ToolResume();
    }
    return true;
}
