#include "formats/BmpWriter.h"

#include "formats/FileResult.h"
#include "formats/SafeFileWriter.h"
#include "image/CDibImage.h"

#include <cstdint>

namespace {
void Put16(std::uint8_t* p, std::uint32_t v) {
    p[0] = static_cast<std::uint8_t>(v);
    p[1] = static_cast<std::uint8_t>(v >> 8);
}
void Put32(std::uint8_t* p, std::uint32_t v) {
    Put16(p, v);
    Put16(p + 2, v >> 16);
}
} // namespace

int WriteBmp(const std::string& path, const CDibImage& image) {
    SafeFileWriter file(path);
    if (!file.Open()) {
        return kFileFailed;
    }
    const platform::HeapBlock packed = image.ToPackedDib();
    if (!packed) {
        return kFileOutOfMemory;
    }
    const auto packedBytes = static_cast<std::uint32_t>(image.PackedDibBytes());
    std::uint8_t header[14] = {'B', 'M'};
    Put32(header + 2, 14 + packedBytes);
    Put32(header + 10, 14 + 40 + 4 * static_cast<std::uint32_t>(image.ColorCount()));
    if (!file.Write(header, sizeof header) || !file.Write(packed.data(), packedBytes) || !file.Commit()) {
        return kFileFailed;
    }
    return kFileOk;
}
