#pragma once

#include "image/CDibImage.h"
#include "support/ImageFixtures.h"

#include <functional>
#include <initializer_list>
#include <memory>

// Pictures for the image-operation tests, written as rows from the top.
inline std::unique_ptr<CDibImage> SolidImage(int width, int height, ColorWord color) {
    auto image = MakeImage(width, height);
    for (int y = 0; y < height; ++y) {
        for (int x = 0; x < width; ++x) {
            image->SetPixel(x, y, color);
        }
    }
    return image;
}

inline ColorWord Grey(int level) {
    return MakeColorWord(level, level, level);
}

// A picture from grey levels given row by row from the top.
inline std::unique_ptr<CDibImage> GreyImage(int width, std::initializer_list<int> levels) {
    const int height = static_cast<int>(levels.size()) / width;
    auto image = MakeImage(width, height);
    int i = 0;
    for (int level : levels) {
        image->SetPixel(i % width, i / width, Grey(level));
        ++i;
    }
    return image;
}

// Runs `operation` from `source` into a new blank picture of the same size.
template <class Engine>
std::unique_ptr<CDibImage> RunInto(const CDibImage& source, const std::function<int(Engine&)>& operation,
                                   int width = 0, int height = 0) {
    auto target = MakeImage(width > 0 ? width : source.Width(), height > 0 ? height : source.Height(),
                            source.BitsPerPixel());
    Engine engine;
    engine.SetTarget(target.get());
    engine.SetSource(&source);
    return operation(engine) == 1 ? std::move(target) : nullptr;
}
