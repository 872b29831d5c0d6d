#pragma once

#include <cstdint>

// The cells of one dab of a pen as row runs around the pen's centre, taken
// from the brush engine itself so that the touch-up brushes cover exactly the
// pixels a pen dab of the same size and shape would paint. Every pen shape has
// at most one run per row.
class DabCells {
public:
    struct Run {
        int dy;    // row offset from the centre
        int left;  // first column offset
        int right; // last column offset (inclusive)
    };

    static constexpr int kMaxRows = 32;

    // 1 on success, 0 when the scratch picture cannot be had. Sizes are
    // clamped to 1..32.
    int Build(int size, int shape);
    bool Matches(int size, int shape) const { return m_count > 0 && size == m_size && shape == m_shape; }

    int RunCount() const { return m_count; }
    const Run& RunAt(int i) const { return m_runs[i]; }
    int CellCount() const;

private:
    Run m_runs[kMaxRows] = {};
    int m_count = 0;
    int m_size = 0;
    int m_shape = 0;
};
