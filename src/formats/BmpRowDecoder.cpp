#include "formats/BmpRowDecoder.h"

#include <bit>
#include <cstring>

namespace {
constexpr int kWidestChannel = 12;

std::uint32_t LoadPixel(const std::uint8_t* p, int bytes) {
    std::uint32_t pixel = p[0] | (static_cast<std::uint32_t>(p[1]) << 8);
    if (bytes == 4) {
        pixel |= (static_cast<std::uint32_t>(p[2]) << 16) | (static_cast<std::uint32_t>(p[3]) << 24);
    }
    return pixel;
}

std::uint8_t OverWhite(std::uint8_t value, std::uint8_t alpha) {
    return static_cast<std::uint8_t>((value * alpha + 255 * (255 - alpha) + 127) / 255);
}
} // namespace

void BmpRowDecoder::Prepare(const BmpFormat& format, const std::uint8_t* table) {
    m_width = format.width;
    m_bitCount = format.bitCount;
    m_table.fill(0);
    for (int i = 0; i < format.tableEntries && i < 256; ++i) {
        std::memcpy(&m_table[3 * static_cast<std::size_t>(i)], table + i * format.entryBytes, 3);
    }
    m_hasAlpha = format.masks[3] != 0;
    m_plainBgrx = format.bitCount == 32 && !m_hasAlpha && format.masks[0] == 0xFF0000 &&
                  format.masks[1] == 0xFF00 && format.masks[2] == 0xFF;
    if (format.bitCount == 16 || format.bitCount == 32) {
        for (int c = 0; c < 4; ++c) {
            PrepareChannel(format.masks[c], m_channels[c]);
        }
    }
    m_sixteen.clear();
    if (format.bitCount == 16) {
        PrepareSixteen();
    }
}

// Every 16-bit pixel decoded once, so that a row costs one lookup per pixel.
void BmpRowDecoder::PrepareSixteen() {
    m_sixteen.resize(3 * 65536);
    std::uint8_t* out = m_sixteen.data();
    for (std::uint32_t pixel = 0; pixel < 65536; ++pixel, out += 3) {
        std::uint8_t stored[2] = {static_cast<std::uint8_t>(pixel), static_cast<std::uint8_t>(pixel >> 8)};
        ExpandFieldPixel(stored, out);
    }
}

void BmpRowDecoder::PrepareChannel(std::uint32_t mask, Channel& channel) const {
    if (mask == 0) {
        channel = Channel{0, 0, std::vector<std::uint8_t>(1, 0)};
        return;
    }
    channel.shift = std::countr_zero(mask);
    const int bits = 32 - std::countl_zero(mask) - channel.shift;
    channel.dropBits = bits > kWidestChannel ? bits - kWidestChannel : 0;
    const int kept = bits - channel.dropBits;
    const std::uint32_t most = (1u << kept) - 1;
    channel.to8.resize(std::size_t{1} << kept);
    for (std::uint32_t v = 0; v <= most; ++v) {
        channel.to8[v] = static_cast<std::uint8_t>(most == 0 ? 255 : (v * 255 + most / 2) / most);
    }
}

void BmpRowDecoder::ExpandRow(const std::uint8_t* stored, std::uint8_t* dst) const {
    if (m_bitCount == 24) {
        std::memcpy(dst, stored, static_cast<std::size_t>(m_width) * 3);
    } else if (m_bitCount <= 8) {
        ExpandPalette(stored, dst);
    } else if (m_bitCount == 16) {
        ExpandSixteen(stored, dst);
    } else if (m_plainBgrx) {
        for (int x = 0; x < m_width; ++x, stored += 4, dst += 3) {
            dst[0] = stored[0];
            dst[1] = stored[1];
            dst[2] = stored[2];
        }
    } else {
        ExpandFields(stored, dst);
    }
}

void BmpRowDecoder::ExpandPalette(const std::uint8_t* stored, std::uint8_t* dst) const {
    if (m_bitCount == 8) {
        ExpandIndices(stored, dst);
        return;
    }
    const int perByte = 8 / m_bitCount;
    const int mask = (1 << m_bitCount) - 1;
    for (int x = 0; x < m_width; ++x, dst += 3) {
        const int shift = 8 - m_bitCount * (x % perByte + 1);
        const int index = (stored[x / perByte] >> shift) & mask;
        std::memcpy(dst, &m_table[3 * static_cast<std::size_t>(index)], 3);
    }
}

void BmpRowDecoder::ExpandIndices(const std::uint8_t* indices, std::uint8_t* dst) const {
    for (int x = 0; x < m_width; ++x, dst += 3) {
        std::memcpy(dst, &m_table[3 * static_cast<std::size_t>(indices[x])], 3);
    }
}

void BmpRowDecoder::ExpandFieldPixel(const std::uint8_t* stored, std::uint8_t* dst) const {
    const std::uint32_t pixel = LoadPixel(stored, m_bitCount / 8);
    dst[0] = Scale(m_channels[2], pixel);
    dst[1] = Scale(m_channels[1], pixel);
    dst[2] = Scale(m_channels[0], pixel);
    if (m_hasAlpha) {
        const std::uint8_t alpha = Scale(m_channels[3], pixel);
        for (int c = 0; c < 3; ++c) {
            dst[c] = OverWhite(dst[c], alpha);
        }
    }
}

void BmpRowDecoder::ExpandSixteen(const std::uint8_t* stored, std::uint8_t* dst) const {
    const std::uint8_t* table = m_sixteen.data();
    for (int x = 0; x < m_width; ++x, stored += 2, dst += 3) {
        std::memcpy(dst, table + 3 * (stored[0] | (stored[1] << 8)), 3);
    }
}

void BmpRowDecoder::ExpandFields(const std::uint8_t* stored, std::uint8_t* dst) const {
    if (m_hasAlpha) {
        for (int x = 0; x < m_width; ++x, stored += 4, dst += 3) {
            ExpandFieldPixel(stored, dst);
        }
        return;
    }
    // Without alpha each channel is a shift, a mask and a lookup.
    const Channel& red = m_channels[0];
    const Channel& green = m_channels[1];
    const Channel& blue = m_channels[2];
    const std::uint8_t* redTable = red.to8.data();
    const std::uint8_t* greenTable = green.to8.data();
    const std::uint8_t* blueTable = blue.to8.data();
    const int redShift = red.shift + red.dropBits;
    const int greenShift = green.shift + green.dropBits;
    const int blueShift = blue.shift + blue.dropBits;
    const auto redMask = static_cast<std::uint32_t>(red.to8.size() - 1);
    const auto greenMask = static_cast<std::uint32_t>(green.to8.size() - 1);
    const auto blueMask = static_cast<std::uint32_t>(blue.to8.size() - 1);
    for (int x = 0; x < m_width; ++x, stored += 4, dst += 3) {
        std::uint32_t pixel;
        std::memcpy(&pixel, stored, 4); // little-endian, as the file
        dst[0] = blueTable[(pixel >> blueShift) & blueMask];
        dst[1] = greenTable[(pixel >> greenShift) & greenMask];
        dst[2] = redTable[(pixel >> redShift) & redMask];
    }
}
