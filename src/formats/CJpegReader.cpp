#include "formats/CJpegReader.h"

#include "formats/InputFile.h"

#include <unistd.h>

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
    const int fd = input.Release();
    m_file = ::fdopen(fd, "rb");
    if (m_file == nullptr) {
        ::close(fd);
        return 0;
    }
    if (!StartDecoding(maxWidth, maxHeight)) {
        Close();
        return 0;
    }
    fileWidth = static_cast<int>(m_info.image_width);
    fileHeight = static_cast<int>(m_info.image_height);
    outWidth = static_cast<int>(m_info.output_width);
    outHeight = static_cast<int>(m_info.output_height);
    return 1;
}

int CJpegReader::StartDecoding(int maxWidth, int maxHeight) {
    m_error.Install(reinterpret_cast<jpeg_common_struct*>(&m_info));
    if (setjmp(m_error.jump)) {
        return 0;
    }
    jpeg_create_decompress(&m_info);
    m_created = true;
    jpeg_stdio_src(&m_info, m_file);
    jpeg_read_header(&m_info, TRUE);
    m_info.out_color_space = JCS_EXT_BGR;
    ChooseScale(maxWidth, maxHeight);
    jpeg_start_decompress(&m_info);
    return m_info.output_components == 3 ? 1 : 0;
}

void CJpegReader::ChooseScale(int maxWidth, int maxHeight) {
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

int CJpegReader::ReadRow(std::uint8_t* row) {
    if (!m_created) {
        return 0;
    }
    if (setjmp(m_error.jump)) {
        return 0;
    }
    JSAMPROW rows[1] = {row};
    return jpeg_read_scanlines(&m_info, rows, 1) == 1 ? 1 : 0;
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
}
