#pragma once

#include <functional>

namespace platform {

// Shows the wait cursor for its lifetime. Nested guards show it once. The
// window layer installs the show/hide pair; without one (headless) it does
// nothing.
class WaitCursor {
public:
    WaitCursor();
    ~WaitCursor();
    WaitCursor(const WaitCursor&) = delete;
    WaitCursor& operator=(const WaitCursor&) = delete;

    static void SetHandlers(std::function<void()> show, std::function<void()> hide);
    static bool IsShown();
};

} // namespace platform
