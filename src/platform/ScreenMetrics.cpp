#include "platform/ScreenMetrics.h"

namespace platform {

namespace {
int g_dpiX = 96;
int g_dpiY = 96;
int g_width = 240;
int g_height = 320;
} // namespace

int ScreenMetrics::LogicalDpiX() {
    return g_dpiX;
}
int ScreenMetrics::LogicalDpiY() {
    return g_dpiY;
}
int ScreenMetrics::Width() {
    return g_width;
}
int ScreenMetrics::Height() {
    return g_height;
}

void ScreenMetrics::SetLogicalDpi(int dpiX, int dpiY) {
    g_dpiX = dpiX > 0 ? dpiX : 96;
    g_dpiY = dpiY > 0 ? dpiY : 96;
}

void ScreenMetrics::SetSize(int width, int height) {
    g_width = width;
    g_height = height;
}

} // namespace platform
