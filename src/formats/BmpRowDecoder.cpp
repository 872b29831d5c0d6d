#include "formats/BmpRowDecoder.h"

#include <bit>
#include <cstring>

namespace {
constexpr int kWidestChannel = 12;
} // namespace

bool BmpRowDecoder::Prepare(const BmpFormat& format, const std::uint8_t* table) {
    m_width = format.width;
    m_bitCount = format.bitCount;
    for (Column& column : m_columns) {
        column.fill(0);
    }
    for (int i = 0; i < format.tableEntries && i < 256; ++i) {
        for (int c = 0; c < 3; ++c) {
            m_columns[static_cast<std::size_t>(c)][static_cast<std::size_t>(i)] = table[i * format.entryBytes + c];
        }
    }
    m_hasAlpha = false;
    m_fused = {};
    if (format.bitCount == 16 || format.bitCount == 32) {
        // Masks are red, green, blue, alpha; planes blue, green, red, alpha.
        const int planeOfMask[4] = {kRed, kGreen, kBlue, kAlpha};
        for (int m = 0; m < 4; ++m) {
            const auto plane = static_cast<std::size_t>(planeOfMask[m]);
            m_fields[plane] = PrepareField(format.masks[m], m_columns[plane]);
        }
        m_hasAlpha = format.masks[3] != 0;
        if (bmp_fused_kernels::Available()) {
            m_fused = bmp_fused_kernels::PlanFor(format.bitCount, {format.masks[0], format.masks[1],
                                                                   format.masks[2], format.masks[3]});
        }
    }
    m_planes = platform::HeapBlock::AllocateForOverwrite(kPlanes * static_cast<std::size_t>(m_width));
    return static_cast<bool>(m_planes);
}

BmpRowDecoder::Field BmpRowDecoder::PrepareField(std::uint32_t mask, Column& column) {
    Field field;
    if (mask == 0) {
        field.lookedUp = true; // every value 0
        return field;
    }
    const int shift = std::countr_zero(mask);
    const int bits = 32 - std::countl_zero(mask) - shift;
    const int dropBits = bits > kWidestChannel ? bits - kWidestChannel : 0;
    const int kept = bits - dropBits;
    const std::uint32_t most = (1u << kept) - 1;
    field.rule = {shift + dropBits, most, kept};
    field.scaled = kept > 8;
    field.lookedUp = kept < 8;
    for (std::uint32_t v = 0; field.lookedUp && v <= most; ++v) {
        column[v] = static_cast<std::uint8_t>((v * 255 + most / 2) / most);
    }
    return field;
}

void BmpRowDecoder::ExpandRow(const std::uint8_t* stored, std::uint8_t* dst) {
    if (m_bitCount == 24) {
        std::memcpy(dst, stored, static_cast<std::size_t>(m_width) * 3);
    } else if (m_bitCount == 8) {
        ExpandIndices(stored, dst);
    } else if (m_bitCount < 8) {
        UnpackIndices(stored, PlaneData(kIndices));
        ExpandIndices(PlaneData(kIndices), dst);
    } else {
        ExpandFields(stored, dst);
    }
}

// Indices of 1, 2 or 4 bits, most significant first, one per byte.
void BmpRowDecoder::UnpackIndices(const std::uint8_t* stored, std::uint8_t* indices) const {
    const int perByte = 8 / m_bitCount;
    const int mask = (1 << m_bitCount) - 1;
    for (int x = 0; x < m_width; ++x) {
        const int shift = 8 - m_bitCount * (x % perByte + 1);
        indices[x] = static_cast<std::uint8_t>((stored[x / perByte] >> shift) & mask);
    }
}

void BmpRowDecoder::ExpandIndices(const std::uint8_t* indices, std::uint8_t* dst) {
    bmp_kernels::LookUpInterleaved(indices, dst, m_width, m_columns[kBlue].data(), m_columns[kGreen].data(),
                                   m_columns[kRed].data());
}

void BmpRowDecoder::FieldPlane(const std::uint8_t* stored, int width, const Field& field, const Column& column,
                               Plane plane) {
    std::uint8_t* out = PlaneData(plane);
    if (m_bitCount == 16) {
        (field.scaled ? bmp_kernels::ScaledPlane16 : bmp_kernels::RawPlane16)(stored, out, width, field.rule);
    } else {
        (field.scaled ? bmp_kernels::ScaledPlane32 : bmp_kernels::RawPlane32)(stored, out, width, field.rule);
    }
    if (field.lookedUp) {
        bmp_kernels::LookUpBytes(out, out, static_cast<std::size_t>(width), column.data());
    }
}

// The fused decoder takes the row's leading blocks where it can, the planes
// the rest.
void BmpRowDecoder::ExpandFields(const std::uint8_t* stored, std::uint8_t* dst) {
    const int done = bmp_fused_kernels::Expand(m_fused, stored, dst, m_width, m_opaque);
    if (done == m_width) {
        return;
    }
    const auto skipped = static_cast<std::size_t>(done);
    ExpandFieldPlanes(stored + skipped * static_cast<std::size_t>(m_bitCount / 8), dst + 3 * skipped,
                      m_width - done);
}

void BmpRowDecoder::ExpandFieldPlanes(const std::uint8_t* stored, std::uint8_t* dst, int width) {
    const auto count = static_cast<std::size_t>(width);
    if (m_hasAlpha) {
        FieldPlane(stored, width, m_fields[kAlpha], m_columns[kAlpha], kAlpha);
        const std::uint8_t* alpha = PlaneData(kAlpha);
        std::uint8_t opaque = m_opaque;
        for (std::size_t i = 0; i < count; ++i) {
            opaque &= alpha[i];
        }
        m_opaque = opaque;
    }
    for (Plane plane : {kBlue, kGreen, kRed}) {
        FieldPlane(stored, width, m_fields[plane], m_columns[plane], plane);
        if (m_hasAlpha) {
            bmp_kernels::OverWhite(PlaneData(plane), PlaneData(kAlpha), count);
        }
    }
    bmp_kernels::Interleave(PlaneData(kBlue), PlaneData(kGreen), PlaneData(kRed), dst, width);
}
