// The codecs' own writers, at their simplest. A writer that fails throws: the test fails.
#include "Support/Pictures.h"

#include <gif_lib.h>
#include <png.h>
#include <tiffio.h>
#include <webp/encode.h>

#include <algorithm>
#include <array>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <memory>
#include <stdexcept>
// After cstdio, whose types it uses without including it.
#include <jpeglib.h>

namespace tavrin::test {
namespace {

void require(bool holds, const char* what) {
    if (!holds) throw std::runtime_error(what);
}

void addLittle(std::string& bytes, std::uint64_t value, int count) {
    for (int i = 0; i < count; ++i)
        bytes.push_back(static_cast<char>(value >> (8 * i)));
}

unsigned greyOf(const std::uint8_t* pixel) {
    return (pixel[0] * 299U + pixel[1] * 587U + pixel[2] * 114U) / 1000;
}

/// A TIFF structure with the orientation alone.
std::string exifData(unsigned orientation) {
    std::string data("II*\0\x08\0\0\0\x01\0", 10);
    addLittle(data, 274, 2);
    addLittle(data, 3, 2);
    addLittle(data, 1, 4);
    addLittle(data, orientation, 4);
    addLittle(data, 0, 4);
    return data;
}

}  // namespace

std::string asJPEG(const ColourPicture& picture, const JPEGForm& form) {
    jpeg_compress_struct info{};
    jpeg_error_mgr errors{};
    info.err = ::jpeg_std_error(&errors);
    ::jpeg_create_compress(&info);
    unsigned char* memory = nullptr;
    unsigned long size = 0;
    ::jpeg_mem_dest(&info, &memory, &size);
    info.image_width = static_cast<JDIMENSION>(picture.width);
    info.image_height = static_cast<JDIMENSION>(picture.height);
    info.input_components = form.isFourInks ? 4 : 3;
    info.in_color_space = form.isFourInks ? JCS_CMYK : JCS_RGB;
    ::jpeg_set_defaults(&info);
    if (form.isGrey) ::jpeg_set_colorspace(&info, JCS_GRAYSCALE);
    ::jpeg_set_quality(&info, form.quality, TRUE);
    if (form.isProgressive) ::jpeg_simple_progression(&info);
    info.restart_in_rows = form.restartRows;
    if (form.isFourInks) info.write_Adobe_marker = TRUE;
    ::jpeg_start_compress(&info, TRUE);
    if (form.orientation > 0) {
        const std::string exif = std::string("Exif\0\0", 6) + exifData(form.orientation);
        ::jpeg_write_marker(&info, JPEG_APP0 + 1, reinterpret_cast<const JOCTET*>(exif.data()),
                            static_cast<unsigned>(exif.size()));
    }
    std::vector<std::uint8_t> row(4 * picture.width);
    while (info.next_scanline < info.image_height) {
        const std::uint8_t* pixels = picture.at(0, info.next_scanline);
        if (!form.isFourInks) std::copy_n(pixels, 3 * picture.width, row.data());
        for (std::size_t x = 0; form.isFourInks && x < picture.width; ++x) {
            // Inks as they are found in files: inverted, and no black.
            std::copy_n(pixels + 3 * x, 3, row.data() + 4 * x);
            row[4 * x + 3] = 255;
        }
        JSAMPROW start = row.data();
        ::jpeg_write_scanlines(&info, &start, 1);
    }
    ::jpeg_finish_compress(&info);
    ::jpeg_destroy_compress(&info);
    std::string bytes(reinterpret_cast<const char*>(memory), size);
    std::free(memory);
    return bytes;
}

ColourPicture plainlyDecoded(const std::string& jpeg) {
    jpeg_decompress_struct info{};
    jpeg_error_mgr errors{};
    info.err = ::jpeg_std_error(&errors);
    ::jpeg_create_decompress(&info);
    ::jpeg_mem_src(&info, reinterpret_cast<const unsigned char*>(jpeg.data()), jpeg.size());
    ::jpeg_read_header(&info, TRUE);
    info.out_color_space = JCS_RGB;
    ::jpeg_start_decompress(&info);
    ColourPicture picture{.width = info.output_width, .height = info.output_height};
    picture.rgb.resize(3 * picture.width * picture.height);
    while (info.output_scanline < info.output_height) {
        JSAMPROW row = picture.at(0, info.output_scanline);
        ::jpeg_read_scanlines(&info, &row, 1);
    }
    ::jpeg_finish_decompress(&info);
    ::jpeg_destroy_decompress(&info);
    return picture;
}

std::string asPNG(const ColourPicture& picture, const PNGForm& form) {
    png_structp png = ::png_create_write_struct(PNG_LIBPNG_VER_STRING, nullptr, nullptr, nullptr);
    png_infop info = ::png_create_info_struct(png);
    std::string bytes;
    ::png_set_write_fn(
        png, &bytes,
        [](png_structp writer, png_bytep data, png_size_t count) {
            static_cast<std::string*>(::png_get_io_ptr(writer))->append(reinterpret_cast<char*>(data), count);
        },
        nullptr);
    const bool hasAlpha = form.alpha != 255;
    const std::size_t samples = (form.isGrey ? 1U : 3U) + (hasAlpha ? 1U : 0U);
    const int type = (form.isGrey ? PNG_COLOR_TYPE_GRAY : PNG_COLOR_TYPE_RGB) | (hasAlpha ? PNG_COLOR_MASK_ALPHA : 0);
    ::png_set_IHDR(png, info, static_cast<png_uint_32>(picture.width), static_cast<png_uint_32>(picture.height),
                   form.is16Bit ? 16 : 8, type, form.isInterlaced ? PNG_INTERLACE_ADAM7 : PNG_INTERLACE_NONE,
                   PNG_COMPRESSION_TYPE_DEFAULT, PNG_FILTER_TYPE_DEFAULT);
    std::string exif = exifData(form.orientation);
    if (form.orientation > 0)
        ::png_set_eXIf_1(png, info, static_cast<png_uint_32>(exif.size()), reinterpret_cast<png_bytep>(exif.data()));
    ::png_set_compression_level(png, form.isPacked ? 1 : 0);
    if (!form.isPacked) ::png_set_filter(png, PNG_FILTER_TYPE_BASE, PNG_FILTER_NONE);
    ::png_write_info(png, info);
    const std::size_t each = form.is16Bit ? 2 : 1;
    const bool isAsItIs = !hasAlpha && !form.isGrey && !form.is16Bit;
    std::vector<std::uint8_t> pixels;
    if (isAsItIs) pixels = picture.rgb;
    for (std::size_t i = 0; !isAsItIs && i < picture.width * picture.height; ++i) {
        const std::uint8_t* pixel = picture.rgb.data() + 3 * i;
        for (std::size_t k = 0; k < samples; ++k) {
            const bool isAlpha = hasAlpha && k + 1 == samples;
            const auto value = isAlpha ? form.alpha : form.isGrey ? static_cast<std::uint8_t>(greyOf(pixel)) : pixel[k];
            pixels.insert(pixels.end(), each, value);
        }
    }
    std::vector<png_bytep> rows;
    for (std::size_t y = 0; y < picture.height; ++y)
        rows.push_back(pixels.data() + y * picture.width * samples * each);
    ::png_write_image(png, rows.data());
    ::png_write_end(png, nullptr);
    ::png_destroy_write_struct(&png, &info);
    return bytes;
}

namespace {

/// Writing for libtiff, which wants to go back and forth.
struct TIFFMemory {
    std::string bytes;
    std::size_t position = 0;
};

TIFF* openForWriting(TIFFMemory& memory) {
    return ::TIFFClientOpen(
        "", "w", &memory, [](thandle_t, void*, tmsize_t) -> tmsize_t { return 0; },
        [](thandle_t handle, void* from, tmsize_t count) -> tmsize_t {
            auto& to = *static_cast<TIFFMemory*>(handle);
            const auto length = static_cast<std::size_t>(count);
            to.bytes.resize(std::max(to.bytes.size(), to.position + length));
            std::memcpy(to.bytes.data() + to.position, from, length);
            to.position += length;
            return count;
        },
        [](thandle_t handle, toff_t offset, int whence) -> toff_t {
            auto& to = *static_cast<TIFFMemory*>(handle);
            const std::size_t base = whence == SEEK_SET ? 0 : whence == SEEK_CUR ? to.position : to.bytes.size();
            return to.position = base + offset;
        },
        [](thandle_t) { return 0; },
        [](thandle_t handle) -> toff_t { return static_cast<TIFFMemory*>(handle)->bytes.size(); },
        [](thandle_t, void**, toff_t*) { return 0; }, [](thandle_t, void*, toff_t) {});
}

void writeTiles(TIFF* tiff, const ColourPicture& picture, std::uint32_t side) {
    std::vector<std::uint8_t> tile(std::size_t{3} * side * side);
    for (std::uint32_t top = 0; top < picture.height; top += side) {
        for (std::uint32_t left = 0; left < picture.width; left += side) {
            for (std::size_t y = 0; y < side; ++y) {
                for (std::size_t x = 0; x < side; ++x) {
                    const std::size_t column = std::min(picture.width - 1, left + x);
                    const std::size_t row = std::min(picture.height - 1, top + y);
                    std::copy_n(picture.at(column, row), 3, tile.data() + 3 * (y * side + x));
                }
            }
            require(::TIFFWriteTile(tiff, tile.data(), left, top, 0, 0) >= 0, "TIFFWriteTile");
        }
    }
}

std::vector<std::uint8_t> tiffRow(const ColourPicture& picture, std::size_t y, const TIFFForm& form) {
    std::vector<std::uint8_t> row;
    for (std::size_t i = 0; i < 3 * picture.width; ++i) {
        const std::uint8_t sample = picture.at(0, y)[i];
        row.insert(row.end(), form.is16Bit ? 2 : 1, form.isFourInks ? static_cast<std::uint8_t>(255 - sample) : sample);
        // No black.
        if (form.isFourInks && i % 3 == 2) row.push_back(0);
    }
    return row;
}

}  // namespace

std::string asTIFF(const ColourPicture& picture, const TIFFForm& form) {
    TIFFMemory memory;
    TIFF* tiff = openForWriting(memory);
    require(tiff != nullptr, "TIFFClientOpen");
    ::TIFFSetField(tiff, TIFFTAG_IMAGEWIDTH, static_cast<std::uint32_t>(picture.width));
    ::TIFFSetField(tiff, TIFFTAG_IMAGELENGTH, static_cast<std::uint32_t>(picture.height));
    ::TIFFSetField(tiff, TIFFTAG_BITSPERSAMPLE, form.is16Bit ? 16 : 8);
    ::TIFFSetField(tiff, TIFFTAG_SAMPLESPERPIXEL, form.isFourInks ? 4 : 3);
    ::TIFFSetField(tiff, TIFFTAG_PHOTOMETRIC, form.isFourInks ? PHOTOMETRIC_SEPARATED : PHOTOMETRIC_RGB);
    ::TIFFSetField(tiff, TIFFTAG_PLANARCONFIG, PLANARCONFIG_CONTIG);
    ::TIFFSetField(tiff, TIFFTAG_COMPRESSION, form.compression);
    ::TIFFSetField(tiff, TIFFTAG_ORIENTATION, form.orientation);
    if (form.tileSide > 0) {
        ::TIFFSetField(tiff, TIFFTAG_TILEWIDTH, form.tileSide);
        ::TIFFSetField(tiff, TIFFTAG_TILELENGTH, form.tileSide);
        writeTiles(tiff, picture, form.tileSide);
    } else {
        ::TIFFSetField(tiff, TIFFTAG_ROWSPERSTRIP, form.rowsPerStrip);
        for (std::uint32_t y = 0; y < picture.height; ++y) {
            std::vector<std::uint8_t> row = tiffRow(picture, y, form);
            require(::TIFFWriteScanline(tiff, row.data(), y, 0) >= 0, "TIFFWriteScanline");
        }
    }
    ::TIFFClose(tiff);
    return memory.bytes;
}

std::string asGIF(const ColourPicture& picture, const GIFForm& form) {
    // 6 x 7 x 6 colours.
    std::vector<GifColorType> colours(256);
    for (unsigned i = 0; i < 252; ++i)
        colours[i] = {static_cast<GifByteType>(i / 42 * 51), static_cast<GifByteType>(i / 6 % 7 * 42),
                      static_cast<GifByteType>(i % 6 * 51)};
    ColorMapObject* map = ::GifMakeMapObject(256, colours.data());
    std::string bytes;
    const auto write = [](GifFileType* gif, const GifByteType* data, int count) {
        static_cast<std::string*>(gif->UserData)
            ->append(reinterpret_cast<const char*>(data), static_cast<std::size_t>(count));
        return count;
    };
    GifFileType* gif = ::EGifOpen(&bytes, write, nullptr);
    require(gif != nullptr, "EGifOpen");
    const auto width = static_cast<int>(picture.width);
    const auto height = static_cast<int>(picture.height);
    ::EGifPutScreenDesc(gif, std::max(width, static_cast<int>(form.canvasWidth)),
                        std::max(height, static_cast<int>(form.canvasHeight)), 8, 0, map);
    ::EGifPutImageDesc(gif, static_cast<int>(form.left), static_cast<int>(form.top), width, height, form.isInterlaced,
                       nullptr);
    std::vector<std::size_t> order;
    if (form.isInterlaced) {
        constexpr std::array<std::array<std::size_t, 2>, 4> passes{{{0, 8}, {4, 8}, {2, 4}, {1, 2}}};
        for (const auto& [first, step] : passes) {
            for (std::size_t y = first; y < picture.height; y += step)
                order.push_back(y);
        }
    } else {
        for (std::size_t y = 0; y < picture.height; ++y)
            order.push_back(y);
    }
    std::vector<GifPixelType> row(picture.width);
    for (const std::size_t y : order) {
        for (std::size_t x = 0; x < picture.width; ++x) {
            const std::uint8_t* pixel = picture.at(x, y);
            row[x] = static_cast<GifPixelType>((pixel[0] + 25) / 51 * 42 + std::min(6, (pixel[1] + 21) / 42) * 6 +
                                               (pixel[2] + 25) / 51);
        }
        ::EGifPutLine(gif, row.data(), width);
    }
    ::EGifCloseFile(gif, nullptr);
    ::GifFreeMapObject(map);
    return bytes;
}

namespace {

std::string bmpPixels(const ColourPicture& picture, BMPForm form) {
    std::string bytes;
    for (std::size_t i = 0; i < picture.height; ++i) {
        const std::size_t y = form == BMPForm::topDown32 ? i : picture.height - 1 - i;
        const std::size_t start = bytes.size();
        for (std::size_t x = 0; x < picture.width; ++x) {
            const std::uint8_t* pixel = picture.at(x, y);
            const auto grey = static_cast<char>(greyOf(pixel));
            switch (form) {
                case BMPForm::core24:
                case BMPForm::rgb24:
                    addLittle(bytes, pixel[2] | pixel[1] << 8U | pixel[0] << 16U, 3);
                    break;
                case BMPForm::topDown32:
                    addLittle(bytes, pixel[2] | pixel[1] << 8U | pixel[0] << 16U, 4);
                    break;
                case BMPForm::masks16:
                    addLittle(bytes, pixel[0] >> 3U << 11U | pixel[1] >> 2U << 5U | pixel[2] >> 3U, 2);
                    break;
                case BMPForm::grey8:
                    bytes.push_back(grey);
                    break;
                case BMPForm::runs8:
                    // By turns a run of one and three as they are, where three are left.
                    if (x % 4 == 0 || picture.width - x / 4 * 4 < 4) {
                        bytes.append({1, grey});
                    } else if (x % 4 == 1) {
                        bytes.append({0, 3});
                        for (std::size_t k = 0; k < 3; ++k)
                            bytes.push_back(static_cast<char>(greyOf(picture.at(x + k, y))));
                        bytes.push_back(0);
                    }
                    break;
            }
        }
        if (form == BMPForm::runs8)
            bytes.append(2, '\0');
        else
            bytes.append((4 - (bytes.size() - start) % 4) % 4, '\0');
    }
    if (form == BMPForm::runs8) bytes.append({0, 1});
    return bytes;
}

}  // namespace

std::string asBMP(const ColourPicture& picture, BMPForm form) {
    const bool hasPalette = form == BMPForm::grey8 || form == BMPForm::runs8;
    const std::string pixels = bmpPixels(picture, form);
    std::string header;
    const int bits = hasPalette ? 8 : form == BMPForm::masks16 ? 16 : form == BMPForm::topDown32 ? 32 : 24;
    if (form == BMPForm::core24) {
        addLittle(header, 12, 4);
        addLittle(header, picture.width, 2);
        addLittle(header, picture.height, 2);
        addLittle(header, 1, 2);
        addLittle(header, 24, 2);
    } else {
        addLittle(header, 40, 4);
        addLittle(header, picture.width, 4);
        addLittle(header, form == BMPForm::topDown32 ? -picture.height : picture.height, 4);
        addLittle(header, 1, 2);
        addLittle(header, static_cast<std::uint64_t>(bits), 2);
        addLittle(header, form == BMPForm::runs8 ? 1 : form == BMPForm::masks16 ? 3 : 0, 4);
        for (int i = 0; i < 5; ++i)
            addLittle(header, 0, 4);
    }
    if (form == BMPForm::masks16) {
        for (const unsigned mask : {0xF800U, 0x07E0U, 0x001FU})
            addLittle(header, mask, 4);
    }
    for (unsigned i = 0; hasPalette && i < 256; ++i)
        addLittle(header, i | i << 8U | i << 16U, 4);
    std::string bytes = "BM";
    addLittle(bytes, 14 + header.size() + pixels.size(), 4);
    addLittle(bytes, 0, 4);
    addLittle(bytes, 14 + header.size(), 4);
    return bytes + header + pixels;
}

std::string asWebP(const ColourPicture& picture, const WebPForm& form) {
    std::uint8_t* memory = nullptr;
    const auto width = static_cast<int>(picture.width);
    const auto height = static_cast<int>(picture.height);
    const std::size_t size = form.isLossless
                                 ? ::WebPEncodeLosslessRGB(picture.rgb.data(), width, height, 3 * width, &memory)
                                 : ::WebPEncodeRGB(picture.rgb.data(), width, height, 3 * width, 90, &memory);
    require(size > 0, "WebPEncodeRGB");
    const std::string plain(reinterpret_cast<const char*>(memory), size);
    ::WebPFree(memory);
    if (form.orientation == 0) return plain;
    // The extended form of the file: a header that says that there is Exif data, and a chunk with it.
    const std::string exif = exifData(form.orientation);
    std::string chunks("WEBPVP8X\x0a\0\0\0\x08\0\0\0", 16);
    addLittle(chunks, picture.width - 1, 3);
    addLittle(chunks, picture.height - 1, 3);
    chunks.append(plain, 12).append("EXIF");
    addLittle(chunks, exif.size(), 4);
    chunks += exif;
    std::string bytes = "RIFF";
    addLittle(bytes, chunks.size(), 4);
    return bytes + chunks;
}

std::map<std::string, std::string> inEveryFormat(const ColourPicture& picture) {
    return {{"JPEG", asJPEG(picture)},
            {"progressive JPEG", asJPEG(picture, {.isProgressive = true})},
            {"PNG", asPNG(picture)},
            {"interlaced PNG", asPNG(picture, {.isInterlaced = true})},
            {"GIF", asGIF(picture)},
            {"TIFF", asTIFF(picture)},
            {"BMP", asBMP(picture)},
            {"WebP", asWebP(picture)},
            {"lossless WebP", asWebP(picture, {.isLossless = true})},
            {"HEIC", asHEIC(picture)}};
}

}  // namespace tavrin::test
