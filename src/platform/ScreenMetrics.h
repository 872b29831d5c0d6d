#pragma once

namespace platform {

// Facts about the screen the core needs without knowing about windows: the
// logical resolution used when a picture carries none, and the screen size
// that the start-up picture takes. Headless values are 96 dpi and 240 x 320;
// the application sets the primary screen's values at start.
class ScreenMetrics {
public:
    static int LogicalDpiX();
    static int LogicalDpiY();
    static int Width();
    static int Height();

    static void SetLogicalDpi(int dpiX, int dpiY);
    static void SetSize(int width, int height);
};

} // namespace platform
