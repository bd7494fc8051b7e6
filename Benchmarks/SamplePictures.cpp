#include "SamplePictures.h"

#include <cmath>
#include <cstdio>
#include <random>
#include <stdexcept>
#include <string>
#include <vector>
// After cstdio, whose types it uses without including it.
#include <jpeglib.h>
#include <png.h>

namespace tavrin::benchmarks {
namespace {

/// A picture that is as hard to code as a photograph: slow waves and grain.
class Drawing {
  public:
    Drawing(unsigned number, unsigned width) : number_(number), random_(number), row_(std::size_t{3} * width) {
        for (unsigned x = 0; x < width; ++x)
            columns_.push_back(std::sin(x / (90.0 + number % 50)));
    }

    /// Rows are drawn from the top. Valid until the next one.
    unsigned char* drawRow(unsigned y) {
        const double wave = std::cos(y / (70.0 + number_ % 40));
        for (std::size_t i = 0; i < row_.size(); ++i) {
            const auto grain = static_cast<double>(random_() % 24);
            row_[i] = static_cast<unsigned char>(110 + 45 * (columns_[i / 3] + wave) + grain);
        }
        return row_.data();
    }

  private:
    unsigned number_;
    std::mt19937 random_;
    std::vector<double> columns_;
    std::vector<unsigned char> row_;
};

void encodeJPEG(std::FILE* file, unsigned number, unsigned width, unsigned height) {
    jpeg_compress_struct info{};
    jpeg_error_mgr errors{};
    info.err = ::jpeg_std_error(&errors);
    ::jpeg_create_compress(&info);
    ::jpeg_stdio_dest(&info, file);
    info.image_width = width;
    info.image_height = height;
    info.input_components = 3;
    info.in_color_space = JCS_RGB;
    ::jpeg_set_defaults(&info);
    ::jpeg_set_quality(&info, 88, TRUE);
    if (number % 10 == 0) ::jpeg_simple_progression(&info);
    ::jpeg_start_compress(&info, TRUE);
    Drawing drawing(number, width);
    while (info.next_scanline < height) {
        JSAMPROW start = drawing.drawRow(info.next_scanline);
        ::jpeg_write_scanlines(&info, &start, 1);
    }
    ::jpeg_finish_compress(&info);
    ::jpeg_destroy_compress(&info);
}

void encodePNG(std::FILE* file, unsigned number, unsigned width, unsigned height) {
    png_structp png = ::png_create_write_struct(PNG_LIBPNG_VER_STRING, nullptr, nullptr, nullptr);
    png_infop information = ::png_create_info_struct(png);
    ::png_init_io(png, file);
    ::png_set_IHDR(png, information, width, height, 8, PNG_COLOR_TYPE_RGB, PNG_INTERLACE_NONE,
                   PNG_COMPRESSION_TYPE_DEFAULT, PNG_FILTER_TYPE_DEFAULT);
    ::png_set_compression_level(png, 1);
    ::png_write_info(png, information);
    Drawing drawing(number, width);
    for (unsigned y = 0; y < height; ++y)
        ::png_write_row(png, drawing.drawRow(y));
    ::png_write_end(png, nullptr);
    ::png_destroy_write_struct(&png, &information);
}

template <class Encode>
void write(const std::filesystem::path& path, const Encode& encode) {
    if (exists(path)) return;
    const std::filesystem::path part = path.native() + ".part";
    std::FILE* file = std::fopen(part.c_str(), "wb");
    if (file == nullptr) throw std::runtime_error("no place for pictures");
    encode(file);
    std::fclose(file);
    rename(part, path);
}

}  // namespace

void writeJPEG(const std::filesystem::path& path, unsigned number, unsigned width, unsigned height) {
    write(path, [&](std::FILE* file) { encodeJPEG(file, number, width, height); });
}

void writePNG(const std::filesystem::path& path, unsigned number, unsigned width, unsigned height) {
    write(path, [&](std::FILE* file) { encodePNG(file, number, width, height); });
}

}  // namespace tavrin::benchmarks
