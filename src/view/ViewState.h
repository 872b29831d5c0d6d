#pragma once

// The state of the view that every tool object carries and that a tool switch
// hands on to the next one. Client coordinates are device pixels.
struct ViewState {
    int zoom = 1;
    int centreOffsetX = 0;
    int centreOffsetY = 0;
    int originX = 0;
    int originY = 0;
    int firstVisibleX = 0;
    int firstVisibleY = 0;
    int visibleImageWidth = 0;
    int visibleImageHeight = 0;
    int imageWidth = 0;
    int imageHeight = 0;
    int visibleWidth = 0;
    int visibleHeight = 0;
    int lastPointX = -1;
    int lastPointY = -1;
    bool marginOn = false;
    bool outlineTimerOn = false;
    bool outlineEnabled = true;
    int toolFlag = 0;

    // Scroll sizes: the zoomed picture (plus margins), paging and line steps.
    int totalWidth = 0;
    int totalHeight = 0;
    int pageX = 0;
    int pageY = 0;
    int lineX = 0;
    int lineY = 0;
};
