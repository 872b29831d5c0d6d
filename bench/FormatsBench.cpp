// Picture files on a 4000 x 3000 photo-like picture: BMP read and write, JPEG
// read and write at quality 80 beside the bare libjpeg-turbo library doing the
// same work in memory and beside its djpeg/cjpeg tools, and the GIF save
// (colour reduction, diffusion, LZW) beside its pieces and ImageMagick's
// `convert in.bmp out.gif`. The ratios of the times in one run are the figures
// that matter. BM_BmpReadVariant reads the same picture stored in each BMP
// variant (compare with variant 0, 24 bits), BM_JpegReadOriented the JPEG with
// EXIF orientation 1 and 6, BM_BmpReadTall a BMP one pixel wide.
#include "formats/ColorReducer.h"
#include "formats/FileResult.h"
#include "formats/PictureLoader.h"
#include "formats/PictureSaver.h"
#include "image/CDibImage.h"
#include "image/DibHelpers.h"
#include "platform/HeapBlock.h"

#include <benchmark/benchmark.h>

#include <chrono>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <jpeglib.h>
#include <memory>
#include <string>
#include <unistd.h>
#include <vector>

namespace {

constexpr int kWidth = 4000;
constexpr int kHeight = 3000;
constexpr LoadLimitSize kWholePicture{kWidth, kHeight};

// Smooth shapes with fine noise: compresses and quantizes like a photograph.
std::unique_ptr<CDibImage> MakePhoto() {
    BitmapInfoHeader header;
    InitDibHeader(header, kWidth, kHeight, 24, 72, 72);
    auto image = std::make_unique<CDibImage>();
    image->Create(&header, nullptr);
    platform::HeapBlock row = platform::HeapBlock::Allocate(image->RowBytes());
    std::uint32_t seed = 12345;
    for (int y = 0; y < kHeight; ++y) {
        std::uint8_t* p = row.data();
        for (int x = 0; x < kWidth; ++x) {
            seed = seed * 1664525u + 1013904223u;
            const int noise = static_cast<int>(seed >> 28) - 8;
            const double u = x / 4000.0;
            const double v = y / 3000.0;
            const double sky = 120 + 80 * std::sin(3.1 * u + 1.7 * v) * std::cos(2.3 * v);
            const double hill = 100 + 70 * std::sin(9.0 * u * v + 4 * u);
            const double leaf = 90 + 60 * std::cos(13.0 * u - 7.0 * v * v);
            p[0] = static_cast<std::uint8_t>(std::clamp(static_cast<int>(sky) + noise, 0, 255));
            p[1] = static_cast<std::uint8_t>(std::clamp(static_cast<int>(hill) + noise, 0, 255));
            p[2] = static_cast<std::uint8_t>(
                std::clamp(static_cast<int>(leaf * 0.6 + sky * 0.4) + noise, 0, 255));
            p += 3;
        }
        image->SetRow(y, row.data());
    }
    return image;
}

struct Fixture {
    std::string dir;
    std::unique_ptr<CDibImage> photo;
    std::string Path(const char* name) const { return dir + "/" + name; }
};

const Fixture& Files() {
    static const Fixture fixture = [] {
        Fixture f;
        char pattern[] = "/tmp/tamrick-bench-XXXXXX";
        f.dir = ::mkdtemp(pattern);
        static const std::string folder = f.dir;
        std::atexit([] { std::system(("rm -rf '" + folder + "'").c_str()); });
        f.photo = MakePhoto();
        SavePicture(f.Path("photo.bmp"), *f.photo, 80);
        SavePicture(f.Path("photo.jpg"), *f.photo, 80);
        return f;
    }();
    return fixture;
}

void Check(benchmark::State& state, int result) {
    if (result != kFileOk) {
        state.SkipWithError("file operation failed");
    }
}

void BM_BmpRead(benchmark::State& state) {
    Files(); // built outside the timed loop
    for (auto _ : state) {
        std::unique_ptr<CDibImage> picture;
        Check(state, LoadPicture(Files().Path("photo.bmp"), kWholePicture, picture));
    }
}
BENCHMARK(BM_BmpRead)->Unit(benchmark::kMillisecond);

// The photo stored as a BMP variant: bits per pixel, compression, masks
// (written after a 40-byte header) and a pixel encoder.
struct Variant {
    const char* name;
    int bits;
    std::uint32_t compression;
    std::vector<std::uint32_t> masks;
};

const Variant kVariants[] = {
    {"24-bit", 24, 0, {}},
    {"32-bit 10-10-10-2", 32, 3, {0x3FF00000, 0x000FFC00, 0x000003FF}},
    {"32-bit with alpha", 32, 6, {0xFF0000, 0xFF00, 0xFF, 0xFF000000}},
    {"16-bit 565", 16, 3, {0xF800, 0x07E0, 0x001F}},
    {"8-bit palette", 8, 0, {}},
    {"RLE8", 8, 1, {}},
};

void Put(std::vector<std::uint8_t>& out, std::uint32_t value, int bytes) {
    for (int i = 0; i < bytes; ++i) {
        out.push_back(static_cast<std::uint8_t>(value >> (8 * i)));
    }
}

// One stored row (bottom first) of picture row y in the variant's coding.
void EncodeRow(const Variant& v, const std::uint8_t* bgr, std::vector<std::uint8_t>& out) {
    const std::size_t start = out.size();
    std::vector<std::uint8_t> indices;
    for (int x = 0; x < kWidth; ++x, bgr += 3) {
        const std::uint32_t b = bgr[0], g = bgr[1], r = bgr[2];
        if (v.bits == 24) {
            out.insert(out.end(), bgr, bgr + 3);
        } else if (v.bits == 32 && v.compression == 3) {
            Put(out, (r << 22) | (g << 12) | (b << 2), 4);
        } else if (v.bits == 32) {
            Put(out, 0xC0000000 | (r << 16) | (g << 8) | b, 4);
        } else if (v.bits == 16) {
            Put(out, ((r >> 3) << 11) | ((g >> 2) << 5) | (b >> 3), 2);
        } else {
            indices.push_back(static_cast<std::uint8_t>((r & 0xE0) | ((g >> 3) & 0x1C) | (b >> 6)));
        }
    }
    if (v.compression == 1) {
        for (std::size_t x = 0; x < indices.size();) {
            std::size_t run = 1;
            while (x + run < indices.size() && run < 255 && indices[x + run] == indices[x]) {
                ++run;
            }
            out.insert(out.end(), {static_cast<std::uint8_t>(run), indices[x]});
            x += run;
        }
        out.insert(out.end(), {0, 0});
        return;
    }
    out.insert(out.end(), indices.begin(), indices.end());
    out.resize(start + (out.size() - start + 3) / 4 * 4, 0);
}

std::string WriteVariant(const Variant& v, const CDibImage& photo, const std::string& path) {
    std::vector<std::uint8_t> body;
    Put(body, 40, 4);
    Put(body, kWidth, 4);
    Put(body, kHeight, 4);
    Put(body, 1, 2);
    Put(body, static_cast<std::uint32_t>(v.bits), 2);
    for (std::uint32_t field : {v.compression, 0u, 2835u, 2835u, 0u, 0u}) {
        Put(body, field, 4);
    }
    for (std::uint32_t mask : v.masks) {
        Put(body, mask, 4);
    }
    if (v.bits == 8) {
        for (std::uint32_t i = 0; i < 256; ++i) {
            Put(body, ((i & 0xE0) << 16) | ((i & 0x1C) << 11) | ((i & 3) << 6), 4);
        }
    }
    const auto offset = static_cast<std::uint32_t>(14 + body.size());
    for (int y = kHeight - 1; y >= 0; --y) {
        EncodeRow(v, photo.RowData(y), body);
    }
    if (v.compression == 1) {
        body.insert(body.end(), {0, 1});
    }
    std::vector<std::uint8_t> file = {'B', 'M'};
    Put(file, static_cast<std::uint32_t>(14 + body.size()), 4);
    Put(file, 0, 4);
    Put(file, offset, 4);
    file.insert(file.end(), body.begin(), body.end());
    std::FILE* out = std::fopen(path.c_str(), "wb");
    std::fwrite(file.data(), 1, file.size(), out);
    std::fclose(out);
    return path;
}

void BM_BmpReadVariant(benchmark::State& state) {
    const Variant& variant = kVariants[state.range(0)];
    static std::string paths[std::size(kVariants)];
    std::string& path = paths[state.range(0)];
    if (path.empty()) {
        path = WriteVariant(variant, *Files().photo, Files().Path("variant.bmp") + std::to_string(state.range(0)));
    }
    state.SetLabel(variant.name);
    for (auto _ : state) {
        std::unique_ptr<CDibImage> picture;
        Check(state, LoadPicture(path, LoadLimitSize{kWidth, kHeight}, picture));
    }
}
BENCHMARK(BM_BmpReadVariant)->DenseRange(0, static_cast<int>(std::size(kVariants)) - 1)->Unit(benchmark::kMillisecond);

// The photo's JPEG with an EXIF orientation segment after its start marker.
std::string OrientedJpeg(int orientation) {
    const std::string path = Files().Path("oriented") + std::to_string(orientation) + ".jpg";
    std::FILE* in = std::fopen(Files().Path("photo.jpg").c_str(), "rb");
    std::vector<std::uint8_t> jpeg;
    for (int c = std::fgetc(in); c != EOF; c = std::fgetc(in)) {
        jpeg.push_back(static_cast<std::uint8_t>(c));
    }
    std::fclose(in);
    const std::vector<std::uint8_t> exif = {0xFF, 0xE1, 0, 34, 'E', 'x', 'i', 'f', 0, 0, 'I', 'I', 42, 0, 8, 0, 0,
                                            0, 1, 0, 0x12, 0x01, 3, 0, 1, 0, 0, 0,
                                            static_cast<std::uint8_t>(orientation), 0, 0, 0, 0, 0, 0, 0};
    jpeg.insert(jpeg.begin() + 2, exif.begin(), exif.end());
    std::FILE* out = std::fopen(path.c_str(), "wb");
    std::fwrite(jpeg.data(), 1, jpeg.size(), out);
    std::fclose(out);
    return path;
}

void BM_JpegReadOriented(benchmark::State& state) {
    const std::string path = OrientedJpeg(static_cast<int>(state.range(0)));
    for (auto _ : state) {
        std::unique_ptr<CDibImage> picture;
        Check(state, LoadPicture(path, LoadLimitSize{kWidth, kWidth}, picture));
    }
}
BENCHMARK(BM_JpegReadOriented)->Arg(1)->Arg(6)->Unit(benchmark::kMillisecond);

// 1 x 4,000,000 pixels: the time follows the file's bytes, not its rows.
void BM_BmpReadTall(benchmark::State& state) {
    const std::string path = Files().Path("tall.bmp");
    std::vector<std::uint8_t> file = {'B', 'M'};
    constexpr std::uint32_t kRows = 4000000;
    Put(file, 54 + 4 * kRows, 4);
    Put(file, 0, 4);
    Put(file, 54, 4);
    for (std::uint32_t field : {40u, 1u, kRows}) {
        Put(file, field, 4);
    }
    Put(file, 1, 2);
    Put(file, 24, 2);
    file.resize(54, 0); // no compression, default resolution and table
    file.resize(54 + 4 * std::size_t{kRows}, 0x5A);
    std::FILE* out = std::fopen(path.c_str(), "wb");
    std::fwrite(file.data(), 1, file.size(), out);
    std::fclose(out);
    for (auto _ : state) {
        std::unique_ptr<CDibImage> picture;
        Check(state, LoadPicture(path, LoadLimitSize{30000, 30000}, picture));
    }
}
BENCHMARK(BM_BmpReadTall)->Unit(benchmark::kMillisecond);

void BM_BmpWrite(benchmark::State& state) {
    Files(); // built outside the timed loop
    for (auto _ : state) {
        Check(state, SavePicture(Files().Path("out.bmp"), *Files().photo, 80));
    }
}
BENCHMARK(BM_BmpWrite)->Unit(benchmark::kMillisecond);

void BM_JpegRead(benchmark::State& state) {
    Files(); // built outside the timed loop
    for (auto _ : state) {
        std::unique_ptr<CDibImage> picture;
        Check(state, LoadPicture(Files().Path("photo.jpg"), kWholePicture, picture));
    }
}
BENCHMARK(BM_JpegRead)->Unit(benchmark::kMillisecond);

// Decodes photo.jpg with the library alone, handing scanline n to rowFor(n).
template <typename RowFor> void BareDecode(RowFor rowFor) {
    std::FILE* file = std::fopen(Files().Path("photo.jpg").c_str(), "rb");
    jpeg_decompress_struct info{};
    jpeg_error_mgr error{};
    info.err = jpeg_std_error(&error);
    jpeg_create_decompress(&info);
    jpeg_stdio_src(&info, file);
    jpeg_read_header(&info, TRUE);
    info.out_color_space = JCS_EXT_BGR;
    jpeg_start_decompress(&info);
    while (info.output_scanline < info.output_height) {
        JSAMPROW rows[1] = {rowFor(info.output_scanline)};
        jpeg_read_scanlines(&info, rows, 1);
    }
    jpeg_finish_decompress(&info);
    jpeg_destroy_decompress(&info);
    std::fclose(file);
}

// The library alone: the same file decoded into one reused row.
void BM_BareLibjpegDecode(benchmark::State& state) {
    Files(); // built outside the timed loop
    std::vector<std::uint8_t> row(kWidth * 3);
    for (auto _ : state) {
        BareDecode([&](unsigned) { return row.data(); });
    }
}
BENCHMARK(BM_BareLibjpegDecode)->Unit(benchmark::kMillisecond);

// The library alone again, but keeping the picture: every row goes into one
// fresh 36 MB block, as any loader must store it. The first touch of that
// memory is a large part of the cost on virtual machines.
void BM_BareLibjpegDecodeKept(benchmark::State& state) {
    Files(); // built outside the timed loop
    const std::size_t rowBytes = DibRowBytes(kWidth, 24);
    for (auto _ : state) {
        platform::HeapBlock pixels = platform::HeapBlock::Allocate(rowBytes * kHeight);
        BareDecode([&](unsigned scanline) { return pixels.data() + (kHeight - 1 - scanline) * rowBytes; });
        benchmark::DoNotOptimize(pixels.data());
    }
}
BENCHMARK(BM_BareLibjpegDecodeKept)->Unit(benchmark::kMillisecond);

void BM_JpegWrite(benchmark::State& state) {
    Files(); // built outside the timed loop
    for (auto _ : state) {
        Check(state, SavePicture(Files().Path("out.jpg"), *Files().photo, 80));
    }
}
BENCHMARK(BM_JpegWrite)->Unit(benchmark::kMillisecond);

// The library alone: the picture's rows straight from memory into a file.
void BM_BareLibjpegEncode(benchmark::State& state) {
    Files(); // built outside the timed loop
    const CDibImage& photo = *Files().photo;
    for (auto _ : state) {
        std::FILE* file = std::fopen(Files().Path("bare.jpg").c_str(), "wb");
        jpeg_compress_struct info{};
        jpeg_error_mgr error{};
        info.err = jpeg_std_error(&error);
        jpeg_create_compress(&info);
        jpeg_stdio_dest(&info, file);
        info.image_width = kWidth;
        info.image_height = kHeight;
        info.input_components = 3;
        info.in_color_space = JCS_EXT_BGR;
        jpeg_set_defaults(&info);
        jpeg_set_quality(&info, 80, TRUE);
        jpeg_start_compress(&info, TRUE);
        for (int y = 0; y < kHeight; ++y) {
            JSAMPROW rows[1] = {const_cast<std::uint8_t*>(photo.Bits()) +
                                static_cast<std::size_t>(kHeight - 1 - y) * photo.RowBytes()};
            jpeg_write_scanlines(&info, rows, 1);
        }
        jpeg_finish_compress(&info);
        jpeg_destroy_compress(&info);
        std::fclose(file);
    }
}
BENCHMARK(BM_BareLibjpegEncode)->Unit(benchmark::kMillisecond);

void BM_ColorReduction(benchmark::State& state) {
    Files(); // built outside the timed loop
    for (auto _ : state) {
        benchmark::DoNotOptimize(ColorReducer::Reduce(*Files().photo));
    }
}
BENCHMARK(BM_ColorReduction)->Unit(benchmark::kMillisecond);

void BM_GifWrite(benchmark::State& state) {
    Files(); // built outside the timed loop
    for (auto _ : state) {
        Check(state, SavePicture(Files().Path("out.gif"), *Files().photo, 80));
    }
}
BENCHMARK(BM_GifWrite)->Unit(benchmark::kMillisecond);

// Whole tool runs, process start included, timed by the wall clock.
void RunTool(benchmark::State& state, const std::string& command) {
    Files();
    for (auto _ : state) {
        const auto start = std::chrono::steady_clock::now();
        if (std::system((command + " >/dev/null 2>&1").c_str()) != 0) {
            state.SkipWithError(("tool failed or missing: " + command).c_str());
            break;
        }
        state.SetIterationTime(
            std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count());
    }
}

void BM_DjpegTool(benchmark::State& state) {
    Files(); // built outside the timed loop
    RunTool(state, "djpeg -bmp -outfile " + Files().Path("djpeg.bmp") + " " + Files().Path("photo.jpg"));
}
BENCHMARK(BM_DjpegTool)->UseManualTime()->Unit(benchmark::kMillisecond);

void BM_CjpegTool(benchmark::State& state) {
    Files(); // built outside the timed loop
    RunTool(state,
            "cjpeg -quality 80 -outfile " + Files().Path("cjpeg.jpg") + " " + Files().Path("photo.bmp"));
}
BENCHMARK(BM_CjpegTool)->UseManualTime()->Unit(benchmark::kMillisecond);

void BM_ImageMagickGif(benchmark::State& state) {
    Files(); // built outside the timed loop
    RunTool(state, "convert " + Files().Path("photo.bmp") + " " + Files().Path("magick.gif"));
}
BENCHMARK(BM_ImageMagickGif)->UseManualTime()->Unit(benchmark::kMillisecond);

} // namespace
