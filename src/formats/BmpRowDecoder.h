#pragma once

#include "formats/BmpHeader.h"

#include <array>
#include <cstdint>
#include <vector>

// Turns the stored pixels of one BMP row into 3 bytes per pixel (blue, green,
// red): colour-table indices of 1, 2, 4 and 8 bits (most significant first;
// indices beyond the table are black), 24-bit pixels as they are, and 16- and
// 32-bit pixels through their bit-field masks, each channel scaled from its
// own width to 8 bits with rounding. Pixels with an alpha mask are laid over
// white, as every other format's transparency is.
class BmpRowDecoder {
public:
    // `table` holds format.tableEntries entries of format.entryBytes bytes.
    void Prepare(const BmpFormat& format, const std::uint8_t* table);
    // A stored row (format.bitCount bits per pixel) into `dst`.
    void ExpandRow(const std::uint8_t* stored, std::uint8_t* dst) const;
    // One colour-table index per byte (what the RLE decoder produces).
    void ExpandIndices(const std::uint8_t* indices, std::uint8_t* dst) const;

private:
    struct Channel {
        int shift = 0;
        int dropBits = 0;              // low bits dropped from channels wider than 12 bits
        std::vector<std::uint8_t> to8; // channel value -> 0..255
    };
    void PrepareChannel(std::uint32_t mask, Channel& channel) const;
    void ExpandPalette(const std::uint8_t* stored, std::uint8_t* dst) const;
    void ExpandFields(const std::uint8_t* stored, std::uint8_t* dst) const;
    void ExpandFieldPixel(const std::uint8_t* stored, std::uint8_t* dst) const;
    void ExpandSixteen(const std::uint8_t* stored, std::uint8_t* dst) const;
    void PrepareSixteen();
    std::uint8_t Scale(const Channel& channel, std::uint32_t pixel) const {
        return channel.to8[(pixel >> channel.shift >> channel.dropBits) & (channel.to8.size() - 1)];
    }

    int m_width = 0;
    int m_bitCount = 0;
    bool m_plainBgrx = false; // 32 bits, 8-bit channels at bytes 0..2, no alpha
    bool m_hasAlpha = false;
    std::array<std::uint8_t, 256 * 3> m_table{};
    Channel m_channels[4];
    std::vector<std::uint8_t> m_sixteen; // 16-bit pixel -> blue, green, red (alpha applied)
};
