// libFuzzer target: the whole loader (signature dispatch, BMP, JPEG through
// libjpeg-turbo, and Qt's decoders) on any bytes, with the limits of a
// desktop with plenty of memory, so that a file costing far more memory or
// time than its size justifies shows up as a timeout or an RSS overrun.
#include "formats/PictureLoader.h"
#include "image/CDibImage.h"

#include <cstdint>
#include <cstdio>
#include <string>
#include <unistd.h>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static const std::string path = "/tmp/tamrick-fuzz-load-" + std::to_string(::getpid()) + ".img";
    std::FILE* file = std::fopen(path.c_str(), "wb");
    if (file == nullptr) {
        return 0;
    }
    std::fwrite(data, 1, size, file);
    std::fclose(file);
    std::unique_ptr<CDibImage> picture;
    LoadPicture(path, LoadLimitSize{30000, 30000}, picture);
    return 0;
}
