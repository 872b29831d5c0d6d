#pragma once

#include <cstdint>
#include <vector>

class CDibImage;

// One entry of the outline list: (x, y) with both >= 0 is a screen point;
// (-n, 0) is a run of n pixels to the right of the last point, (0, -n) a run
// of n pixels downwards.
struct OutlineEntry {
    std::int16_t x;
    std::int16_t y;
    bool operator==(const OutlineEntry&) const = default;
};

// What part of the picture the view shows and how it maps it to the screen:
// for zoom z >= 1 screen = z * image - scroll + origin, for z <= -2
// screen = origin + image / |z| - scroll.
struct OutlineViewport {
    int firstX = 0;
    int firstY = 0;
    int visibleWidth = 0;
    int visibleHeight = 0;
    int zoom = 1;
    int scrollX = 0;
    int scrollY = 0;
    int originX = 0;
    int originY = 0;
};

// The marching outline of the floating selection: the border points of its
// mask for the visible area at the view's zoom, and the 8-phase animation that
// crawls diagonal dashes of four white and four black pixels along them.
class SelectionOutline {
public:
    // Rebuilds the point list from the floating mask at (floatX, floatY);
    // the animation restarts at phase 0 with a full draw. A null mask gives
    // an empty outline.
    void Build(const CDibImage* floatMask, int floatX, int floatY, const OutlineViewport& viewport);
    void Clear();

    const std::vector<OutlineEntry>& Entries() const { return m_entries; }
    bool IsEmpty() const { return m_entries.empty(); }
    int Phase() const { return m_phase; }
    bool FullDrawPending() const { return m_fullDraw; }

    // One timer tick: phase = (phase - 1) AND 7.
    void Tick() { m_phase = (m_phase - 1) & 7; }

    // Calls plot(x, y, white) for every outline pixel that must be drawn now:
    // on a full draw all of them (white when (phase + x + y) AND 7 is below 4),
    // afterwards only the pixels whose value is 0 (white) or 4 (black), the
    // only ones a phase step changes. Returns the number plotted.
    template <class Plot> int Draw(Plot&& plot) {
        int count = 0;
        const bool full = m_fullDraw;
        m_fullDraw = false;
        ForEachPixel([&](int x, int y) {
            const int v = (m_phase + x + y) & 7;
            if (full || v == 0 || v == 4) {
                plot(x, y, v < 4);
                ++count;
            }
        });
        return count;
    }

    // Every outline pixel, runs expanded.
    template <class Visit> void ForEachPixel(Visit&& visit) const {
        int lastX = 0;
        int lastY = 0;
        for (const OutlineEntry& e : m_entries) {
            if (e.x >= 0 && e.y >= 0) {
                lastX = e.x;
                lastY = e.y;
                visit(lastX, lastY);
            } else if (e.x < 0) {
                for (int i = 1; i <= -e.x; ++i) {
                    visit(lastX + i, lastY);
                }
            } else {
                for (int i = 1; i <= -e.y; ++i) {
                    visit(lastX, lastY + i);
                }
            }
        }
    }

private:
    void AddBorder(int x, int y, bool vertical, bool farEdge, const OutlineViewport& viewport);

    std::vector<OutlineEntry> m_entries;
    int m_phase = 0;
    bool m_fullDraw = true;
};
