#include "selection/SelectionPolygon.h"

#include "image/CBriselDoc.h"
#include "image/CUndoHistory.h"
#include "image/CommandContext.h"
#include "image/DibHelpers.h"
#include "platform/HeapBlock.h"
#include "platform/MessagePresenter.h"
#include "platform/StringTable.h"
#include "platform/WaitCursor.h"

#include <algorithm>
#include <cmath>
#include <cstdlib>

namespace {

struct Box {
    int left, top, right, bottom;
};

void SetInBox(CDibImage& mask, const Box& box, int x, int y) {
    if (x >= box.left && x <= box.right && y >= box.top && y <= box.bottom) {
        mask.SetBit(x - box.left, y - box.top, true);
    }
}

// The pixels of one edge, as a one-pixel pen draws it.
void DrawEdge(CDibImage& mask, const Box& box, OutlineEntry from, OutlineEntry to) {
    int x = from.x;
    int y = from.y;
    const int dx = std::abs(to.x - x);
    const int dy = -std::abs(to.y - y);
    const int sx = x < to.x ? 1 : -1;
    const int sy = y < to.y ? 1 : -1;
    int error = dx + dy;
    while (true) {
        SetInBox(mask, box, x, y);
        if (x == to.x && y == to.y) {
            return;
        }
        const int twice = 2 * error;
        if (twice >= dy) {
            error += dy;
            x += sx;
        }
        if (twice <= dx) {
            error += dx;
            y += sy;
        }
    }
}

// Row y of the inside: the pixels whose centres lie between pairs of edge
// crossings of the line through the row's centres.
void FillRow(CDibImage& mask, const Box& box, const std::vector<OutlineEntry>& points, int y,
             double* crossings) {
    int count = 0;
    const double centre = y + 0.5;
    const std::size_t n = points.size();
    for (std::size_t i = 0; i < n; ++i) {
        const OutlineEntry a = points[i];
        const OutlineEntry b = points[(i + 1) % n];
        if ((a.y <= y) == (b.y <= y)) {
            continue;
        }
        crossings[count++] = a.x + (centre - a.y) * (b.x - a.x) / (b.y - a.y);
    }
    std::sort(crossings, crossings + count);
    for (int i = 0; i + 1 < count; i += 2) {
        const int first = std::max(static_cast<int>(std::ceil(crossings[i] - 0.5)), box.left);
        const int last = std::min(static_cast<int>(std::ceil(crossings[i + 1] - 0.5)) - 1, box.right);
        for (int x = first; x <= last; ++x) {
            mask.SetBit(x - box.left, y - box.top, true);
        }
    }
}

Box PathBounds(const std::vector<OutlineEntry>& points) {
    Box box{points[0].x, points[0].y, points[0].x, points[0].y};
    for (const OutlineEntry& p : points) {
        box.left = std::min<int>(box.left, p.x);
        box.top = std::min<int>(box.top, p.y);
        box.right = std::max<int>(box.right, p.x);
        box.bottom = std::max<int>(box.bottom, p.y);
    }
    return box;
}

// Mode 2 sets the work mask where the polygon is, mode 3 clears it there.
void CombineIntoWorkMask(CDibImage& work, const CDibImage& polygon, const Box& box, bool add) {
    for (int y = box.top; y <= box.bottom; ++y) {
        for (int x = box.left; x <= box.right; ++x) {
            if (polygon.GetBit(x - box.left, y - box.top)) {
                work.SetBit(x, y, add);
            }
        }
    }
}

} // namespace

std::unique_ptr<CDibImage> RasterizePolygon(const std::vector<OutlineEntry>& points, int left, int top,
                                            int right, int bottom) {
    if (points.empty() || right < left || bottom < top) {
        return nullptr;
    }
    std::unique_ptr<CDibImage> mask = CreateMask(right - left + 1, bottom - top + 1, true);
    platform::HeapBlock crossings = platform::HeapBlock::Allocate(sizeof(double) * (points.size() + 1));
    if (!mask || !crossings) {
        return nullptr;
    }
    const Box box{left, top, right, bottom};
    for (int y = top; y <= bottom; ++y) {
        FillRow(*mask, box, points, y, reinterpret_cast<double*>(crossings.data()));
    }
    for (std::size_t i = 0; i < points.size(); ++i) {
        DrawEdge(*mask, box, points[i], points[(i + 1) % points.size()]);
    }
    return mask;
}

int SelectPolygon(CommandContext& context, const std::vector<OutlineEntry>& points, WandCombine combine) {
    CBriselDoc& doc = context.doc;
    const CDibImage* picture = doc.GetPicture();
    if (picture == nullptr || doc.GetSelectionMask() == nullptr) {
        return 0;
    }
    platform::WaitCursor wait;
    Box box{};
    std::unique_ptr<CDibImage> polygon;
    if (points.size() > 1) {
        const Box path = PathBounds(points);
        box = Box{std::max(path.left, 0), std::max(path.top, 0), std::min(path.right, picture->Width() - 1),
                  std::min(path.bottom, picture->Height() - 1)};
        polygon = RasterizePolygon(points, box.left, box.top, box.right, box.bottom);
        if (!polygon) {
            platform::ShowMessage(platform::IDS_MEMORY_NOT_ENOUGH, platform::MB_ICONEXCLAMATION);
            return doc.GetFloatMask() != nullptr ? 1 : 0;
        }
    }
    if (combine != WandCombine::New) {
        doc.MergeFloatMask(false);
    }
    context.undo.RecordWithWarning(doc, 5);
    doc.PutFloating(false);
    doc.SetFloatPosition(0, 0);
    if (!polygon) {
        return 0;
    }
    if (combine == WandCombine::New) {
        if (!doc.CreateFloating(box.left, box.top, box.right, box.bottom, true)) {
            return 0;
        }
        doc.SetFloatMask(std::move(polygon));
        doc.SetFloatPosition(box.left, box.top);
        return 1;
    }
    CombineIntoWorkMask(*doc.GetSelectionMask(), *polygon, box, combine == WandCombine::Add);
    return doc.FloatSelection();
}
