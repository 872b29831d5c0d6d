#include "platform/WaitCursor.h"

namespace platform {

namespace {
int g_depth = 0;
std::function<void()> g_show;
std::function<void()> g_hide;
} // namespace

WaitCursor::WaitCursor() {
    if (g_depth++ == 0 && g_show) {
        g_show();
    }
}

WaitCursor::~WaitCursor() {
    if (--g_depth == 0 && g_hide) {
        g_hide();
    }
}

void WaitCursor::SetHandlers(std::function<void()> show, std::function<void()> hide) {
    g_show = std::move(show);
    g_hide = std::move(hide);
}

bool WaitCursor::IsShown() {
    return g_depth > 0;
}

} // namespace platform
