// libFuzzer target: the BMP reader (every header, table, bit-field and RLE
// path) and its streaming scaler on any bytes, with desktop limits and with
// small ones so that the shrinking path runs as often as the direct one.
#include "formats/BmpLoader.h"
#include "image/CDibImage.h"

#include <cstdint>
#include <cstdio>
#include <string>
#include <unistd.h>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static const std::string path = "/tmp/tamrick-fuzz-bmp-" + std::to_string(::getpid()) + ".bmp";
    std::FILE* file = std::fopen(path.c_str(), "wb");
    if (file == nullptr) {
        return 0;
    }
    std::fwrite(data, 1, size, file);
    std::fclose(file);
    for (const LoadLimitSize limits : {LoadLimitSize{30000, 30000}, LoadLimitSize{3, 2}}) {
        CDibImage picture;
        int fileWidth = 0;
        int fileHeight = 0;
        LoadBmpPicture(path, limits, picture, fileWidth, fileHeight);
    }
    return 0;
}
