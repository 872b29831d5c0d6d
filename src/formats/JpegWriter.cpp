#include "formats/JpegWriter.h"

#include "formats/FileResult.h"
#include "formats/JpegErrorHandler.h"
#include "formats/SafeFileWriter.h"
#include "image/CDibImage.h"
#include "platform/HeapBlock.h"

#include <algorithm>
#include <jerror.h>

namespace {
constexpr std::size_t kOutputBytes = 1 << 16;

// libjpeg's output goes into a buffer that is handed to the safe writer
// whenever it fills; a failed write stops the codec through its error path.
struct WriterDestination {
    jpeg_destination_mgr manager;
    SafeFileWriter* file;
    JOCTET* buffer;
};

WriterDestination* DestinationOf(j_compress_ptr info) {
    return reinterpret_cast<WriterDestination*>(info->dest);
}

void StartOutput(j_compress_ptr info) {
    WriterDestination* dest = DestinationOf(info);
    dest->manager.next_output_byte = dest->buffer;
    dest->manager.free_in_buffer = kOutputBytes;
}

boolean FlushFullBuffer(j_compress_ptr info) {
    WriterDestination* dest = DestinationOf(info);
    if (!dest->file->Write(dest->buffer, kOutputBytes)) {
        ERREXIT(info, JERR_FILE_WRITE);
    }
    StartOutput(info);
    return TRUE;
}

void FinishOutput(j_compress_ptr info) {
    WriterDestination* dest = DestinationOf(info);
    const std::size_t used = kOutputBytes - dest->manager.free_in_buffer;
    if (used > 0 && !dest->file->Write(dest->buffer, used)) {
        ERREXIT(info, JERR_FILE_WRITE);
    }
}

void SetUp(jpeg_compress_struct& info, const CDibImage& image, int quality) {
    info.image_width = static_cast<JDIMENSION>(image.Width());
    info.image_height = static_cast<JDIMENSION>(image.Height());
    info.input_components = 3;
    info.in_color_space = JCS_EXT_BGR;
    jpeg_set_defaults(&info);
    jpeg_set_quality(&info, std::clamp(quality, 1, 100), TRUE);
    info.write_JFIF_header = TRUE;
    info.density_unit = 1; // dots per inch
    info.X_density = static_cast<UINT16>(std::max(image.DpiX(), 1));
    info.Y_density = static_cast<UINT16>(std::max(image.DpiY(), 1));
}

// Everything libjpeg may jump out of happens here, with no object that needs
// a destructor created after the jump point.
int Compress(jpeg_compress_struct& info, JpegErrorHandler& error, WriterDestination& dest,
             const CDibImage& image, int quality, std::uint8_t* scratch) {
    error.Install(reinterpret_cast<jpeg_common_struct*>(&info));
    if (setjmp(error.jump)) {
        jpeg_destroy_compress(&info);
        return 0;
    }
    jpeg_create_compress(&info);
    dest.manager.init_destination = StartOutput;
    dest.manager.empty_output_buffer = FlushFullBuffer;
    dest.manager.term_destination = FinishOutput;
    info.dest = &dest.manager;
    SetUp(info, image, quality);
    jpeg_start_compress(&info, TRUE);
    JSAMPROW rows[1] = {scratch};
    for (int y = 0; y < image.Height(); ++y) {
        image.GetRow(y, scratch);
        jpeg_write_scanlines(&info, rows, 1);
    }
    jpeg_finish_compress(&info);
    jpeg_destroy_compress(&info);
    return 1;
}
} // namespace

int WriteJpeg(const std::string& path, const CDibImage& image, int quality) {
    if (image.BitsPerPixel() != 24) {
        return kFileFailed;
    }
    SafeFileWriter file(path);
    if (!file.Open()) {
        return kFileFailed;
    }
    platform::HeapBlock scratch = platform::HeapBlock::Allocate(image.RowBytes());
    platform::HeapBlock buffer = platform::HeapBlock::Allocate(kOutputBytes);
    if (!scratch || !buffer) {
        return kFileOutOfMemory;
    }
    jpeg_compress_struct info{};
    JpegErrorHandler error{};
    WriterDestination dest{};
    dest.file = &file;
    dest.buffer = buffer.data();
    if (!Compress(info, error, dest, image, quality, scratch.data()) || !file.Commit()) {
        return kFileFailed;
    }
    return kFileOk;
}
