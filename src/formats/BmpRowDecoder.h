#pragma once

#include "formats/BmpFusedKernels.h"
#include "formats/BmpHeader.h"
#include "formats/BmpPixelKernels.h"
#include "platform/HeapBlock.h"

#include <array>
#include <cstdint>

// Turns the stored pixels of one BMP row into 3 bytes per pixel (blue, green,
// red): colour-table indices of 1, 2, 4 and 8 bits (most significant first;
// indices beyond the table are black), 24-bit pixels as they are, and 16- and
// 32-bit pixels through their bit-field masks, each channel scaled from its
// own width to 8 bits with rounding. Pixels with an alpha mask are laid over
// white, as every other format's transparency is.
//
// Common bit-field layouts are decoded in one pass where the machine has the
// vector instructions for it (`bmp_fused_kernels`), and indices are looked
// up in the table's blue, green and red columns straight into the row.
// Other bit fields are decoded a channel plane at a time (`bmp_kernels`): a
// field is extracted (channels wider than 8 bits scaled by arithmetic,
// narrower ones through a 256-entry table) and laid over white; then the
// planes are interleaved.
class BmpRowDecoder {
public:
    // `table` holds format.tableEntries entries of format.entryBytes bytes.
    // False when the work rows cannot be had.
    bool Prepare(const BmpFormat& format, const std::uint8_t* table);
    // A stored row (format.bitCount bits per pixel) into `dst`.
    void ExpandRow(const std::uint8_t* stored, std::uint8_t* dst);
    // One colour-table index per byte (what the RLE decoder produces).
    void ExpandIndices(const std::uint8_t* indices, std::uint8_t* dst);
    // Some pixel decoded so far had an alpha below full: the file has
    // transparent or translucent parts.
    bool SawTransparency() const { return m_opaque != 0xFF; }

private:
    using Column = std::array<std::uint8_t, 256>;
    enum Plane { kBlue, kGreen, kRed, kAlpha, kIndices, kPlanes };
    struct Field {
        bmp_kernels::FieldRule rule;
        bool scaled = false;   // wider than 8 bits: scaled by the kernel
        bool lookedUp = false; // narrower than 8 bits (or absent): through `column`
    };
    // How `mask` becomes a byte.
    static Field PrepareField(std::uint32_t mask, Column& column);
    void ExpandFields(const std::uint8_t* stored, std::uint8_t* dst);
    void ExpandFieldPlanes(const std::uint8_t* stored, std::uint8_t* dst, int width);
    void FieldPlane(const std::uint8_t* stored, int width, const Field& field, const Column& column, Plane plane);
    void UnpackIndices(const std::uint8_t* stored, std::uint8_t* indices) const;
    std::uint8_t* PlaneData(Plane plane) const {
        return m_planes.data() + static_cast<std::size_t>(plane) * static_cast<std::size_t>(m_width);
    }

    int m_width = 0;
    int m_bitCount = 0;
    bool m_hasAlpha = false;
    std::uint8_t m_opaque = 0xFF; // the AND of every alpha decoded
    std::array<Column, 4> m_columns{}; // blue, green, red, alpha: the table's columns or channel scales
    std::array<Field, 4> m_fields{};
    bmp_fused_kernels::Plan m_fused; // the common layouts in one pass, where the machine can
    platform::HeapBlock m_planes; // kPlanes rows of m_width bytes
};
