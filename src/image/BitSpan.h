#pragma once

#include <cstdint>

// Copies `count` bits (most significant bit first) from bit position `srcBit`
// of `src` to bit position `dstBit` of `dst`. Destination bits outside the
// copied run keep their values. Works a byte at a time.
void CopyBitSpan(const std::uint8_t* src, int srcBit, std::uint8_t* dst, int dstBit, int count);
