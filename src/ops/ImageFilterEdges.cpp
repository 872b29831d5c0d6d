// Find Edge: four directional sums per pixel, the strongest direction deciding
// whether the pixel is an edge and how dark it becomes.
//
// The rows are read as channel planes (PlanarRows.h), so that the whole rule
// of a pixel is one loop body without branches that the compiler vectorises.
// Everything is 16-bit: sums of three bytes, their differences (within
// -510..1275) and the three-channel strengths (at most 3825) fit signed 16
// bits, and the darkening and blending products (at most 65152 and 25550) fit
// unsigned 16 bits.
#include "image/CDibImage.h"
#include "ops/CImageFilter.h"
#include "ops/FilterMath.h"
#include "ops/PlanarRows.h"

namespace {

using I = std::int16_t;
using U = std::uint16_t;

// How Find Edge colours a pixel; the same for the whole picture.
struct EdgeColouring {
    U transparency;
    U keepMask;       // all ones for "Original Image"
    U darkenMask;     // all ones for "Darken Color" rather than "Default Line"
    U exactMask;      // all ones when the transparency is below 1
    U background[3];  // blue, green, red
    U blendBase;      // (100 - t) x the background's blue, plus the rounding half
};

inline I Abs(I v) {
    return static_cast<I>(v < 0 ? -v : v);
}

// The four absolute directional sums of one channel at pixel x.
struct ChannelSums {
    I a1, a2, a3, a4;
};

inline ChannelSums SumsAt(const I* __restrict p, const I* __restrict c, const I* __restrict n, int x) {
    const I pl = p[x - 1], pc = p[x], pr = p[x + 1];
    const I cl = c[x - 1], cr = c[x + 1];
    const I nl = n[x - 1], nc = n[x], nr = n[x + 1];
    const I a1 = Abs(static_cast<I>((pl + pc + pr) - (nl + nc + nr)));
    const I a2 = Abs(static_cast<I>(cl + nl + a1 - cr - pr));
    const I a3 = Abs(static_cast<I>((pl + cl + nl) - (pr + cr + nr)));
    const I a4 = Abs(static_cast<I>((pc + pr + cr) - (cl + nl + nc)));
    return {a1, a2, a3, a4};
}

// One output byte of a channel with source value o and winning absolute sum a.
// With no transparency (Opaque) both blends reduce to their second term: an
// edge is e, the background exactly the background colour.
template <bool Opaque>
inline std::uint8_t EdgeByte(U o, I a, U back, U k, U edgeMask, const EdgeColouring& how) {
    const U base = static_cast<U>((o & how.keepMask) | (back & ~how.keepMask));
    const U darkened = static_cast<U>(static_cast<U>(base * static_cast<U>(255 - k) + 127) >> 8);
    const U line = static_cast<U>(static_cast<I>(255 - (a < 255 ? a : I{255})));
    const U e = static_cast<U>((darkened & how.darkenMask) | (line & ~how.darkenMask));
    if constexpr (Opaque) {
        const U plain = static_cast<U>((o & how.keepMask) | (back & ~how.keepMask));
        return static_cast<std::uint8_t>((e & edgeMask) | (plain & ~edgeMask));
    } else {
        const U rest = static_cast<U>(100 - how.transparency);
        const U edgeOut = ops::DivideBy100Narrow(static_cast<U>(o * how.transparency + 50 + e * rest));
        // Blended, the background gives its blue to every channel.
        const U blend = ops::DivideBy100Narrow(static_cast<U>(how.blendBase + o * how.transparency));
        const U blended = static_cast<U>((back & how.exactMask) | (blend & ~how.exactMask));
        const U plain = static_cast<U>((o & how.keepMask) | (blended & ~how.keepMask));
        return static_cast<std::uint8_t>((edgeOut & edgeMask) | (plain & ~edgeMask));
    }
}

// Always inlined, so that it is compiled (and vectorised) for each clone of
// the row function that calls it.
template <bool Opaque>
[[gnu::always_inline]] inline void FindEdgePixels(ops::RowPlanes prev, ops::RowPlanes cur, ops::RowPlanes next,
                           std::uint8_t* __restrict out, int width, EdgeColouring how) {
    for (int x = 0; x < width; ++x) {
        const ChannelSums b = SumsAt(prev.blue, cur.blue, next.blue, x);
        const ChannelSums g = SumsAt(prev.green, cur.green, next.green, x);
        const ChannelSums r = SumsAt(prev.red, cur.red, next.red, x);
        // The strongest direction, an earlier one keeping its place on a tie.
        I top = static_cast<I>(b.a1 + g.a1 + r.a1);
        I ab = b.a1, ag = g.a1, ar = r.a1;
        const auto consider = [&](I sum, I cb, I cg, I cr) {
            const bool wins = sum > top;
            top = wins ? sum : top;
            ab = wins ? cb : ab;
            ag = wins ? cg : ag;
            ar = wins ? cr : ar;
        };
        consider(static_cast<I>(b.a2 + g.a2 + r.a2), b.a2, g.a2, r.a2);
        consider(static_cast<I>(b.a3 + g.a3 + r.a3), b.a3, g.a3, r.a3);
        consider(static_cast<I>(b.a4 + g.a4 + r.a4), b.a4, g.a4, r.a4);
        const bool edge = (ab > 32) | (ag > 32) | (ar > 32);
        const U edgeMask = static_cast<U>(edge ? 0xFFFF : 0);
        const I third = static_cast<I>((top + 1) / 3);
        const U k = static_cast<U>(third < 255 ? third : 255);
        out[3 * x] =
            EdgeByte<Opaque>(static_cast<U>(cur.blue[x]), ab, how.background[0], k, edgeMask, how);
        out[3 * x + 1] =
            EdgeByte<Opaque>(static_cast<U>(cur.green[x]), ag, how.background[1], k, edgeMask, how);
        out[3 * x + 2] =
            EdgeByte<Opaque>(static_cast<U>(cur.red[x]), ar, how.background[2], k, edgeMask, how);
    }
}

// One loop for each case, so that each is vectorised without the other's work.
TAMRICK_VECTOR_CLONES void FindEdgeRow(ops::RowPlanes prev, ops::RowPlanes cur, ops::RowPlanes next,
                                       std::uint8_t* __restrict out, int width, EdgeColouring how) {
    if (how.transparency == 0) {
        FindEdgePixels<true>(prev, cur, next, out, width, how);
    } else {
        FindEdgePixels<false>(prev, cur, next, out, width, how);
    }
}

} // namespace

int CImageFilter::FindEdge(int keepOriginal, int colorMode, int transparency, ColorWord background) {
    SetColorA(background);
    m_percent = static_cast<std::int16_t>(transparency);
    if (!Ready()) {
        return 1;
    }
    const int t = m_percent;
    const auto mask = [](bool on) { return static_cast<U>(on ? 0xFFFF : 0); };
    const EdgeColouring how{static_cast<U>(t),
                            mask(keepOriginal != 0),
                            mask(colorMode != 0),
                            mask(t < 1),
                            {static_cast<U>(m_colorA[2]), static_cast<U>(m_colorA[1]), static_cast<U>(m_colorA[0])},
                            static_cast<U>((100 - t) * m_colorA[2] + 50)};
    const int width = m_width;
    return ops::ForEachRowAsPlanes(m_src->Bits(), m_dst->MutableBits(), width, m_height, m_rowBytes,
                                   [&](const ops::RowPlanes& prev, const ops::RowPlanes& cur,
                                       const ops::RowPlanes& next, std::uint8_t* out) {
                                       FindEdgeRow(prev, cur, next, out, width, how);
                                   });
}
