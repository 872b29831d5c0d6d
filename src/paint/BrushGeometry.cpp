// Dab and segment geometry of the brush engine: every shape becomes spans.
#include "paint/BrushEngine.h"

#include "image/CDibImage.h"
#include "image/DibHelpers.h"
#include "paint/RowExtents.h"

#include <algorithm>
#include <climits>
#include <utility>

namespace {
bool NeedsReference(int mode) {
    return mode == kModeLighten || mode == kModeDarken || mode == kModeClone;
}
} // namespace

bool BrushEngine::BeginCall(int mode, std::size_t workBytes, int fillPixels) {
    if (m_target == nullptr || !m_target->IsValid()) {
        return false;
    }
    m_spanProc = SpanProcOf(mode);
    m_mode = mode;
    m_workBlock = platform::HeapBlock::Allocate(workBytes + 8);
    m_work = m_workBlock.data();
    if (m_work == nullptr) {
        return false;
    }
    if (m_target->BitsPerPixel() == 24) {
        FillRow(m_work, m_foreground, fillPixels, kFillFormatTrueColor);
    }
    return true;
}

void BrushEngine::EndCall() {
    m_workBlock.reset();
    m_work = nullptr;
}

int BrushEngine::Dab(int x, int y, int size, int shape, int mode) {
    if (NeedsReference(mode) && m_reference == nullptr) {
        return 0;
    }
    if (size < 1 || !BeginCall(mode, static_cast<std::size_t>(6) * size, 2 * size)) {
        return 1;
    }
    DrawDab(x, y, size, shape);
    EndCall();
    return 1;
}

int BrushEngine::FillRect(int left, int top, int right, int bottom, int mode) {
    if (NeedsReference(mode) && m_reference == nullptr) {
        return 0;
    }
    if (m_target == nullptr ||
        !BeginCall(mode, 2 * static_cast<std::size_t>(m_target->RowBytes()), m_target->Width())) {
        return 1;
    }
    DrawRect(std::min(left, right), std::min(top, bottom), std::max(left, right), std::max(top, bottom));
    EndCall();
    return 1;
}

int BrushEngine::FillSpan(int left, int right, int row, int mode) {
    return FillRect(left, row, right, row, mode);
}

void BrushEngine::DrawRect(int left, int top, int right, int bottom) {
    top = std::max(top, 0);
    bottom = std::min(bottom, m_target->Height() - 1);
    for (int row = top; row <= bottom; ++row) {
        DrawSpan(left, right, row);
    }
}

void BrushEngine::DrawDab(int x, int y, int size, int shape) {
    const int h = size / 2;
    if (shape == kShapeOval && size > 2) {
        if (m_ovalValid == 0 || m_ovalSize != size) {
            BuildOvalTable(size);
        }
        for (int i = 0; i < size; ++i) {
            DrawSpan(x + m_ovalRows[i][0], x + m_ovalRows[i][1], y - h + i);
        }
        return;
    }
    switch (shape) {
    case kShapeHLine:
        DrawSpan(x - h, x - h + size - 1, y);
        return;
    case kShapeVLine:
        DrawRect(x, y - h, x, y - h + size - 1);
        return;
    case kShapeSlash:
    case kShapeBSlash: {
        // Only the part of the diagonal inside the image is walked.
        const int first = std::max({0, -(y - h)});
        const int last = std::min(size - 1, m_target->Height() - 1 - (y - h));
        for (int i = first; i <= last; ++i) {
            const int column = shape == kShapeSlash ? x - h + i : x - h + size - 1 - i;
            DrawSpan(column, column, y - h + i);
        }
        return;
    }
    default:
        DrawRect(x - h, y - h, x - h + size - 1, y - h + size - 1);
        return;
    }
}

// Both end dabs, except in the random modes 8 and 12: there only the dab at the
// second point is drawn, with the density doubled for it, so that the dab the
// previous segment already ended with is not speckled twice.
void BrushEngine::DrawEndDabs(int firstX, int firstY, int secondX, int secondY, int size, int shape) {
    if (m_mode == kModeGrain) {
        const std::int16_t density = m_grainDensity;
        m_grainDensity = static_cast<std::int16_t>(density * 2);
        DrawDab(secondX, secondY, size, shape);
        m_grainDensity = density;
        return;
    }
    if (m_mode == kModeSpeckle) {
        const std::int16_t density = m_speckleDensity;
        m_speckleDensity = static_cast<std::int16_t>(density * 2);
        DrawDab(secondX, secondY, size, shape);
        m_speckleDensity = density;
        return;
    }
    DrawDab(firstX, firstY, size, shape);
    DrawDab(secondX, secondY, size, shape);
}

int BrushEngine::Segment(int x1, int y1, int x2, int y2, int size, int shape, int mode) {
    if (NeedsReference(mode) && m_reference == nullptr) {
        return 0;
    }
    if (size < 1 || m_target == nullptr ||
        !BeginCall(mode, 2 * static_cast<std::size_t>(m_target->RowBytes()), m_target->Width())) {
        return 1;
    }
    // The end dabs keep the caller's order: the second point is the new sample.
    const int firstX = x1;
    const int firstY = y1;
    const int secondX = x2;
    const int secondY = y2;
    if (y2 < y1) {
        std::swap(x1, x2);
        std::swap(y1, y2);
    }
    if (size == 1) {
        shape = kShapeHLine;
    } else if (shape == kShapeOval && size <= 2) {
        shape = kShapeRect;
    }
    const bool roundEnds = shape == kShapeOval;
    if (roundEnds && (m_ovalValid == 0 || m_ovalSize != size)) {
        BuildOvalTable(size);
    }
    if (x1 == x2 && y1 == y2) {
        if (m_mode == kModeGrain || m_mode == kModeSpeckle) {
            DrawEndDabs(firstX, firstY, secondX, secondY, size, shape);
        } else {
            DrawDab(x1, y1, size, shape);
        }
    } else if (y1 == y2) {
        if (roundEnds) {
            DrawEndDabs(firstX, firstY, secondX, secondY, size, shape);
        }
        DrawHorizontalSegment(x1, x2, y1, size, shape);
    } else if (x1 == x2) {
        if (roundEnds) {
            DrawEndDabs(firstX, firstY, secondX, secondY, size, shape);
        }
        DrawVerticalSegment(x1, y1, y2, size, shape);
    } else {
        if (shape == kShapeRect || roundEnds) {
            DrawEndDabs(firstX, firstY, secondX, secondY, size, shape);
        }
        DrawGeneralSegment(x1, y1, x2, y2, size, shape);
    }
    EndCall();
    return 1;
}

void BrushEngine::DrawHorizontalSegment(int x1, int x2, int y, int size, int shape) {
    const int h = size / 2;
    const int low = std::min(x1, x2);
    const int high = std::max(x1, x2);
    switch (shape) {
    case kShapeRect:
        DrawRect(low - h, y - h, high - h + size - 1, y - h + size - 1);
        return;
    case kShapeOval:
    case kShapeVLine:
        DrawRect(low, y - h, high, y - h + size - 1);
        return;
    case kShapeHLine:
        DrawSpan(low - h, high - h + size - 1, y);
        return;
    default:
        DrawSweptLine(x1, y, x2, y, size, shape);
        return;
    }
}

void BrushEngine::DrawVerticalSegment(int x, int y1, int y2, int size, int shape) {
    const int h = size / 2;
    switch (shape) {
    case kShapeRect:
        DrawRect(x - h, y1 - h, x - h + size - 1, y2 - h + size - 1);
        return;
    case kShapeOval:
        DrawRect(x - h, y1, x - h + size - 1, y2);
        return;
    case kShapeVLine:
        DrawRect(x, y1 - h, x, y2 - h + size - 1);
        return;
    default:
        DrawSweptLine(x, y1, x, y2, size, shape);
        return;
    }
}

// (x1, y1) is the upper end, x1 != x2, y1 < y2.
void BrushEngine::DrawGeneralSegment(int x1, int y1, int x2, int y2, int size, int shape) {
    const int h = size / 2;
    const int far = size - 1 - h;
    if (shape == kShapeRect) {
        // The outer corners away from the line's direction: top-right and
        // bottom-left going down-right, top-left and bottom-right going
        // down-left.
        const int cornerX = x2 > x1 ? far : -h;
        const int otherX = x2 > x1 ? -h : far;
        const int corners[4][2] = {
            {x1 + cornerX, y1 - h}, {x2 + cornerX, y2 - h}, {x2 + otherX, y2 + far}, {x1 + otherX, y1 + far}};
        DrawParallelogram(corners);
        return;
    }
    if (shape == kShapeOval) {
        // The oval's two tangent points: its cells with the largest and the
        // smallest projection on the line's normal (row difference, minus
        // column difference).
        const int dx = x2 - x1;
        const int dy = y2 - y1;
        long best = LONG_MIN;
        long worst = LONG_MAX;
        int top[2] = {0, 0};
        int bottom[2] = {0, 0};
        for (int i = 0; i < size; ++i) {
            for (const int column : {m_ovalRows[i][0], m_ovalRows[i][1]}) {
                const long projection = static_cast<long>(column) * dy - static_cast<long>(i - h) * dx;
                if (projection > best) {
                    best = projection;
                    top[0] = column;
                    top[1] = i - h;
                }
                if (projection < worst) {
                    worst = projection;
                    bottom[0] = column;
                    bottom[1] = i - h;
                }
            }
        }
        const int corners[4][2] = {{x1 + top[0], y1 + top[1]},
                                   {x2 + top[0], y2 + top[1]},
                                   {x2 + bottom[0], y2 + bottom[1]},
                                   {x1 + bottom[0], y1 + bottom[1]}};
        DrawParallelogram(corners);
        return;
    }
    if (shape == kShapeHLine) {
        DrawLineRows(x1, y1, x2, y2, size);
        return;
    }
    DrawSweptLine(x1, y1, x2, y2, size, shape);
}

// The parallelogram swept by a line-shaped dab (shapes 3 to 6) between the
// two points.
void BrushEngine::DrawSweptLine(int x1, int y1, int x2, int y2, int size, int shape) {
    const int h = size / 2;
    const int far = size - 1 - h;
    int from[2] = {-h, 0};
    int to[2] = {far, 0};
    if (shape == kShapeVLine) {
        from[0] = 0, from[1] = -h, to[0] = 0, to[1] = far;
    } else if (shape == kShapeSlash) {
        from[0] = -h, from[1] = -h, to[0] = far, to[1] = far;
    } else if (shape == kShapeBSlash) {
        from[0] = far, from[1] = -h, to[0] = -h, to[1] = far;
    }
    const int corners[4][2] = {{x1 + from[0], y1 + from[1]},
                               {x1 + to[0], y1 + to[1]},
                               {x2 + to[0], y2 + to[1]},
                               {x2 + from[0], y2 + from[1]}};
    DrawParallelogram(corners);
}

// A horizontal line pen walked along the Bresenham line of the centre: each
// row gets the run of the centre line in it, widened to the pen.
void BrushEngine::DrawLineRows(int x1, int y1, int x2, int y2, int size) {
    const int h = size / 2;
    RowExtents rows(std::max(std::min(y1, y2), 0), std::min(std::max(y1, y2), m_target->Height() - 1));
    rows.AddLine(x1, y1, x2, y2);
    rows.ForEachSpan([&](int left, int right, int row) { DrawSpan(left - h, right - h + size - 1, row); });
}

void BrushEngine::DrawParallelogram(const int (&corners)[4][2]) {
    int top = INT_MAX;
    int bottom = INT_MIN;
    for (const auto& corner : corners) {
        top = std::min(top, corner[1]);
        bottom = std::max(bottom, corner[1]);
    }
    RowExtents rows(std::max(top, 0), std::min(bottom, m_target->Height() - 1));
    for (int i = 0; i < 4; ++i) {
        const auto& a = corners[i];
        const auto& b = corners[(i + 1) % 4];
        rows.AddLine(a[0], a[1], b[0], b[1]);
    }
    rows.ForEachSpan([&](int left, int right, int row) { DrawSpan(left, right, row); });
}
