#pragma once

#include <csetjmp>
#include <cstdio>
#include <jpeglib.h>

// libjpeg's error manager, set up so that nothing ends the process: a fatal
// error, and any warning that means the data is corrupt or cut short, jumps
// back to the caller's setjmp point. Nothing is printed.
struct JpegErrorHandler {
    jpeg_error_mgr manager;
    std::jmp_buf jump;

    // Points `common` (a compress or decompress object) at this handler.
    void Install(jpeg_common_struct* common);
};
