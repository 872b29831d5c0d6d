#pragma once

class CMainFrame;
struct SystemFigures;

// The frame's own dialogs: Options, Image Information, System Information.
class FrameDialogs {
public:
    static void Options(CMainFrame& frame);
    static void ImageInformation(CMainFrame& frame);
    static void SystemInformation(CMainFrame& frame);
    // Physical memory from /proc/meminfo and the file system holding the
    // user's pictures folder.
    static SystemFigures ReadSystemFigures();
};
