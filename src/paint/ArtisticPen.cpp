#include "paint/ArtisticPen.h"

#include "paint/BrushEngine.h"

#include <algorithm>

namespace {

// round(step * (i + 1)), half up, at most 256.
int LayerOpacity(double step, int layer) {
    return std::min(256, static_cast<int>(step * (layer + 1) + 0.5));
}

struct Segment {
    BrushEngine& engine;
    int x1, y1, x2, y2, shape;

    int Draw(int size, int mode) const {
        if (size < 1) {
            return 1;
        }
        if (shape == kShapeOval) {
            engine.BuildOvalTable(size);
        }
        return engine.Segment(x1, y1, x2, y2, size, shape, mode);
    }
};

int GrainLayers(const Segment& segment, int kind, int size) {
    int layers = size / 3;
    if (kind == 11) {
        layers = std::min(layers, 1);
    }
    const double reach = kind == 9 ? 128.0 : kind == 10 ? 90.0 : 256.0;
    const double step = reach / (layers + 1);
    int density = kind == 10 ? 3 : kind == 11 ? 1 : 2;
    const int densityStep = kind == 9 ? 1 : kind == 10 ? 2 : 0;
    const int mode = kind == 11 ? kModeGrainBoth : kModeGrain;
    for (int i = 0; i <= layers; ++i) {
        segment.engine.SetGrain(LayerOpacity(step, i), density);
        segment.Draw(size, mode);
        size -= 2;
        density += densityStep;
    }
    return 1;
}

int WashLayers(const Segment& segment, int size) {
    if (size < 3) {
        return segment.Draw(size, kModeSolid);
    }
    const int layers = (size + 2) / 4;
    const double step = 256.0 / (layers + 3);
    for (int i = 0; i < layers; ++i) {
        segment.engine.SetWashOpacity(LayerOpacity(step, i));
        segment.Draw(size, kModeWash);
        size -= 2;
    }
    return segment.Draw(size, kModeSolid);
}

int SpeckleLayers(const Segment& segment, int size) {
    const int start = size;
    const int layers = std::max(size / 3, 1);
    const double step = 256.0 / (layers + 3);
    const int jitter = static_cast<int>(step / 2);
    int density = layers;
    for (int i = 0; i < layers; ++i) {
        segment.engine.SetSpeckle(LayerOpacity(step, i), jitter, density);
        segment.Draw(size, kModeSpeckle);
        size -= 2;
        --density;
    }
    segment.engine.SetSpeckle(256, jitter, 2);
    return segment.Draw(size < 1 ? start : size, kModeSpeckle);
}

} // namespace

bool IsArtisticPenKind(int kind) {
    return kind == 2 || kind == 3 || (kind >= 7 && kind <= 12);
}

int PaintArtisticSegment(BrushEngine& engine, int kind, int x1, int y1, int x2, int y2, int size, int shape) {
    const Segment segment{engine, x1, y1, x2, y2, shape};
    switch (kind) {
    case 2:
        return segment.Draw(size, kModeLighten);
    case 3:
        return segment.Draw(size, kModeDarken);
    case 7:
        return WashLayers(segment, size);
    case 8:
    case 9:
    case 10:
    case 11:
        return GrainLayers(segment, kind, size);
    case 12:
        return SpeckleLayers(segment, size);
    default:
        return 0;
    }
}
