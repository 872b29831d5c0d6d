#pragma once

#include <cstdint>
#include <cstdio>
#include <jpeglib.h>

// libjpeg's progress monitor, used to stop files whose decoding would cost
// far more than their picture. Progressive and multi-scan files are read
// scan by scan into whole-picture coefficient buffers before the first row
// comes out, and a scan may walk every coefficient of every block whatever
// its bytes hold. The meter counts the coefficients each scan walks, one row
// of blocks at a time, and ends decoding (through the error handler) when
// they pass kWholePasses walks over every coefficient of the picture, or the
// file passes kMostScans scans. The usual progressive scripts take two to
// three passes.
struct JpegWorkMeter {
    static constexpr int kMostScans = 64;
    static constexpr std::uint64_t kWholePasses = 8;

    jpeg_progress_mgr manager; // first, so that libjpeg's pointer is the meter's
    std::uint64_t budget = 0;
    std::uint64_t spent = 0;
    int lastScan = 0;
    JDIMENSION lastRow = 0;

    // Attaches the meter to `info` (before its header is read).
    void Install(j_decompress_ptr info);
    // Sets the budget from the picture's blocks (after the header is read).
    void Start(j_decompress_ptr info);

private:
    static void Monitor(j_common_ptr common);
    void Count(j_decompress_ptr info);
};
