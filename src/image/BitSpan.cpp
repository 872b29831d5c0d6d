#include "image/BitSpan.h"

namespace {

// Eight source bits starting at bit `bit`, which may lie before the first byte
// (those bits read as 0). Bytes at or past `byteLimit` are never touched.
std::uint8_t ReadEightBits(const std::uint8_t* src, int bit, int byteLimit) {
    const int byteIndex = bit >> 3; // arithmetic shift: floor for negatives
    const int offset = bit & 7;
    unsigned window = 0;
    if (byteIndex >= 0 && byteIndex < byteLimit) {
        window = static_cast<unsigned>(src[byteIndex]) << 8;
    }
    if (offset != 0 && byteIndex + 1 >= 0 && byteIndex + 1 < byteLimit) {
        window |= src[byteIndex + 1];
    }
    return static_cast<std::uint8_t>((window << offset) >> 8);
}

} // namespace

void CopyBitSpan(const std::uint8_t* src, int srcBit, std::uint8_t* dst, int dstBit, int count) {
    if (count <= 0) {
        return;
    }
    const int srcByteLimit = (srcBit + count + 7) >> 3;
    const int lastDstBit = dstBit + count - 1;
    const int firstByte = dstBit >> 3;
    const int lastByte = lastDstBit >> 3;
    const int shift = srcBit - dstBit;
    if ((shift & 7) == 0) {
        // Same alignment: whole inner bytes copy straight across.
        for (int j = firstByte; j <= lastByte; ++j) {
            std::uint8_t mask = 0xFF;
            if (j == firstByte) {
                mask &= static_cast<std::uint8_t>(0xFF >> (dstBit & 7));
            }
            if (j == lastByte) {
                mask &= static_cast<std::uint8_t>(0xFF << (7 - (lastDstBit & 7)));
            }
            const std::uint8_t value = src[j + (shift >> 3)];
            dst[j] = static_cast<std::uint8_t>((dst[j] & ~mask) | (value & mask));
        }
        return;
    }
    for (int j = firstByte; j <= lastByte; ++j) {
        std::uint8_t mask = 0xFF;
        if (j == firstByte) {
            mask &= static_cast<std::uint8_t>(0xFF >> (dstBit & 7));
        }
        if (j == lastByte) {
            mask &= static_cast<std::uint8_t>(0xFF << (7 - (lastDstBit & 7)));
        }
        const std::uint8_t value = ReadEightBits(src, j * 8 + shift, srcByteLimit);
        dst[j] = static_cast<std::uint8_t>((dst[j] & ~mask) | (value & mask));
    }
}
