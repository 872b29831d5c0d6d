#pragma once

#include "image/CDibImage.h"
#include "paint/BrushEngine.h"
#include "support/ImageFixtures.h"

#include <memory>

// A white picture with a brush engine painting black into it.
struct BrushCanvas {
    explicit BrushCanvas(int width = 40, int height = 30, ColorWord paper = 0xFFFFFF) {
        image = MakeImage(width, height);
        image->Clear(paper);
        engine.SetTargetImage(image.get());
        engine.SetForegroundColor(0x000000);
        engine.SetBackgroundColor(0xFFFFFF);
    }
    bool Painted(int x, int y) const { return image->GetPixel(x, y) == 0x000000; }
    int PaintedCount() const {
        int count = 0;
        for (int y = 0; y < image->Height(); ++y) {
            for (int x = 0; x < image->Width(); ++x) {
                count += Painted(x, y) ? 1 : 0;
            }
        }
        return count;
    }

    std::unique_ptr<CDibImage> image;
    BrushEngine engine;
};
