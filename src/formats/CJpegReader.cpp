#include "formats/CJpegReader.h"

#include "formats/DecodeBudget.h"
#include "formats/ExifOrientation.h"
#include "formats/InputFile.h"

#include <unistd.h>
#include <utility>

namespace {
// Room for the decoder's own tables and row buffers beyond the pictures.
constexpr std::uint64_t kSpareMemory = std::uint64_t{16} << 20;
} // namespace

CJpegReader::~CJpegReader() {
    Close();
}

int CJpegReader::Open(const std::string& path, int maxWidth, int maxHeight, int& fileWidth, int& fileHeight,
                      int& outWidth, int& outHeight) {
    Close();
    InputFile input;
    if (!input.Open(path)) {
        return 0;
    }
    const std::uint64_t fileBytes = input.Size();
    const int fd = input.Release();
    m_file = ::fdopen(fd, "rb");
    if (m_file == nullptr) {
        ::close(fd);
        return 0;
    }
    if (!StartDecoding(maxWidth, maxHeight, fileBytes)) {
        Close();
        return 0;
    }
    fileWidth = static_cast<int>(m_info.image_width);
    fileHeight = static_cast<int>(m_info.image_height);
    outWidth = static_cast<int>(m_info.output_width);
    outHeight = static_cast<int>(m_info.output_height);
    return 1;
}

int CJpegReader::StartDecoding(int maxWidth, int maxHeight, std::uint64_t fileBytes) {
    m_error.Install(reinterpret_cast<jpeg_common_struct*>(&m_info));
    if (setjmp(m_error.jump)) {
        return 0;
    }
    jpeg_create_decompress(&m_info);
    m_created = true;
    Limit(maxWidth, maxHeight);
    jpeg_stdio_src(&m_info, m_file);
    jpeg_save_markers(&m_info, JPEG_APP0 + 1, 0xFFFF);
    jpeg_read_header(&m_info, TRUE);
    m_work.Start(&m_info);
    if (!decode_budget::IsPlausible(m_info.image_width, m_info.image_height, fileBytes)) {
        return 0;
    }
    ReadOrientation();
    ChooseColors();
    ChooseScale(maxWidth, maxHeight);
    jpeg_start_decompress(&m_info);
    if (m_cmyk) {
        m_cmykRow = platform::HeapBlock::AllocateForOverwrite(static_cast<std::size_t>(m_info.output_width) * 4);
        return m_info.output_components == 4 && m_cmykRow ? 1 : 0;
    }
    return m_info.output_components == 3 ? 1 : 0;
}

// Whole-picture buffers of progressive and multi-scan files may take what
// four pictures of the box take; the work of their scans is metered.
void CJpegReader::Limit(int maxWidth, int maxHeight) {
    const std::uint64_t picture =
        static_cast<std::uint64_t>(maxWidth) * static_cast<std::uint64_t>(maxHeight) * 3;
    m_info.mem->max_memory_to_use = static_cast<long>(4 * picture + kSpareMemory);
    m_work.Install(&m_info);
}

void CJpegReader::ReadOrientation() {
    m_orientation = 1;
    for (jpeg_saved_marker_ptr marker = m_info.marker_list; marker != nullptr; marker = marker->next) {
        if (marker->marker == JPEG_APP0 + 1) {
            m_orientation = exif::ReadOrientation(marker->data, marker->data_length);
            if (m_orientation != 1) {
                return;
            }
        }
    }
}

void CJpegReader::ChooseColors() {
    m_cmyk = m_info.jpeg_color_space == JCS_CMYK || m_info.jpeg_color_space == JCS_YCCK;
    m_info.out_color_space = m_cmyk ? JCS_CMYK : JCS_EXT_BGR;
}

// The box is upright; the rows come in the stored orientation.
void CJpegReader::ChooseScale(int maxWidth, int maxHeight) {
    if (exif::SwapsSides(m_orientation)) {
        std::swap(maxWidth, maxHeight);
    }
    for (unsigned denominator = 1; denominator <= 8; denominator *= 2) {
        m_info.scale_num = 1;
        m_info.scale_denom = denominator;
        jpeg_calc_output_dimensions(&m_info);
        if (m_info.output_width <= static_cast<JDIMENSION>(maxWidth) &&
            m_info.output_height <= static_cast<JDIMENSION>(maxHeight)) {
            return;
        }
    }
}

// Adobe's files store CMYK inverted (255 = no ink); others store ink amounts.
void CJpegReader::CmykToBgr(std::uint8_t* row) const {
    const std::uint8_t* in = m_cmykRow.data();
    const bool inverted = m_info.saw_Adobe_marker;
    for (JDIMENSION x = 0; x < m_info.output_width; ++x, in += 4, row += 3) {
        // What each ink and the black leave of white paper.
        const int black = inverted ? in[3] : 255 - in[3];
        for (int c = 0; c < 3; ++c) {
            const int color = inverted ? in[c] : 255 - in[c];
            row[2 - c] = static_cast<std::uint8_t>((color * black + 127) / 255);
        }
    }
}

int CJpegReader::ReadRow(std::uint8_t* row) {
    if (!m_created) {
        return 0;
    }
    if (setjmp(m_error.jump)) {
        return 0;
    }
    JSAMPROW rows[1] = {m_cmyk ? m_cmykRow.data() : row};
    if (jpeg_read_scanlines(&m_info, rows, 1) != 1) {
        return 0;
    }
    if (m_cmyk) {
        CmykToBgr(row);
    }
    return 1;
}

void CJpegReader::Close() {
    if (m_created) {
        jpeg_destroy_decompress(&m_info);
        m_created = false;
    }
    if (m_file != nullptr) {
        std::fclose(m_file);
        m_file = nullptr;
    }
    m_cmykRow.reset();
}
