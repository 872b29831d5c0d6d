#pragma once

#include "image/CDibImage.h"

#include <QTemporaryDir>

#include <cmath>

#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>
#include <vector>

// Files for format tests: a private temporary folder, whole-file reads and
// writes, hand-built BMP files and a check for the independent command-line
// decoders the round-trip tests compare against.
class TempFolder {
public:
    std::string Path(const std::string& name) const {
        return m_dir.filePath(QString::fromStdString(name)).toStdString();
    }

private:
    QTemporaryDir m_dir;
};

inline std::vector<std::uint8_t> ReadBytes(const std::string& path) {
    std::ifstream in(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>()};
}

inline void WriteBytes(const std::string& path, const std::vector<std::uint8_t>& bytes) {
    std::ofstream out(path, std::ios::binary | std::ios::trunc);
    out.write(reinterpret_cast<const char*>(bytes.data()), static_cast<std::streamsize>(bytes.size()));
}

inline bool FileExists(const std::string& path) {
    return std::ifstream(path).good();
}

// Temporary files saves leave in a folder (there should be none).
inline int CountTemporaries(const std::string& folder) {
    int count = 0;
    for (const auto& entry : std::filesystem::directory_iterator(folder)) {
        count += entry.path().filename().string().starts_with(".tamrick-") ? 1 : 0;
    }
    return count;
}

inline bool ToolAvailable(const char* tool) {
    return std::system((std::string("command -v ") + tool + " >/dev/null 2>&1").c_str()) == 0;
}

inline int RunQuiet(const std::string& command) {
    return std::system((command + " >/dev/null 2>&1").c_str());
}

inline void Put16(std::vector<std::uint8_t>& out, std::uint32_t v) {
    out.push_back(static_cast<std::uint8_t>(v));
    out.push_back(static_cast<std::uint8_t>(v >> 8));
}
inline void Put32(std::vector<std::uint8_t>& out, std::uint32_t v) {
    Put16(out, v);
    Put16(out, v >> 16);
}

// A BMP file: file header, an info header of `headerSize` bytes (12, 40, 64
// or anything for bad-input tests), the table bytes and the row bytes as given.
inline std::vector<std::uint8_t> MakeBmpFile(std::uint32_t headerSize, std::int32_t width,
                                             std::int32_t height, std::uint16_t bitCount,
                                             const std::vector<std::uint8_t>& table,
                                             const std::vector<std::uint8_t>& rows) {
    std::vector<std::uint8_t> out = {'B', 'M'};
    const auto offset = static_cast<std::uint32_t>(14 + headerSize + table.size());
    Put32(out, static_cast<std::uint32_t>(offset + rows.size()));
    Put32(out, 0);
    Put32(out, offset);
    Put32(out, headerSize);
    if (headerSize == 12) {
        Put16(out, static_cast<std::uint32_t>(width));
        Put16(out, static_cast<std::uint32_t>(height));
        Put16(out, 1);
        Put16(out, bitCount);
    } else {
        Put32(out, static_cast<std::uint32_t>(width));
        Put32(out, static_cast<std::uint32_t>(height));
        Put16(out, 1);
        Put16(out, bitCount);
        out.resize(14 + std::max<std::uint32_t>(headerSize, 16), 0);
    }
    out.insert(out.end(), table.begin(), table.end());
    out.insert(out.end(), rows.begin(), rows.end());
    return out;
}

// A colour table of 4-byte entries (blue, green, red, 0) from 0x00RRGGBB words.
inline std::vector<std::uint8_t> MakeTable(std::initializer_list<std::uint32_t> colors, std::size_t entries) {
    std::vector<std::uint8_t> table(entries * 4, 0);
    std::size_t i = 0;
    for (std::uint32_t rgb : colors) {
        table[4 * i] = static_cast<std::uint8_t>(rgb);
        table[4 * i + 1] = static_cast<std::uint8_t>(rgb >> 8);
        table[4 * i + 2] = static_cast<std::uint8_t>(rgb >> 16);
        ++i;
    }
    return table;
}

// Peak signal-to-noise ratio of two 24-bit pictures of one size, in dB.
inline double Psnr(const CDibImage& a, const CDibImage& b) {
    std::vector<std::uint8_t> rowA(a.RowBytes());
    std::vector<std::uint8_t> rowB(b.RowBytes());
    double sum = 0;
    for (int y = 0; y < a.Height(); ++y) {
        a.GetRow(y, rowA.data());
        b.GetRow(y, rowB.data());
        for (std::size_t i = 0; i < static_cast<std::size_t>(a.Width()) * 3; ++i) {
            const double d = static_cast<double>(rowA[i]) - rowB[i];
            sum += d * d;
        }
    }
    const double samples = 3.0 * a.Width() * a.Height();
    return sum == 0 ? 99.0 : 10 * std::log10(255.0 * 255.0 * samples / sum);
}
