// libpng, row by row. An interlaced picture comes as seven sparse ones, of which each pixel finds its cell by itself:
// so it isn't held either.
#include "TavrinCore/Platform/Linux/Pictures/ExifOrientation.h"
#include "TavrinCore/Platform/Linux/Pictures/PictureCodecs.h"
#include "TavrinCore/Platform/Linux/Pictures/PictureSink.h"

#include <png.h>

#include <csetjmp>
#include <cstdlib>

namespace tavrin {
namespace {

/// Chunks that may be large and say nothing about the pixels that matters here.
constexpr png_byte kPassedOver[] = "iCCP\0iTXt\0tEXt\0zTXt\0sPLT\0hIST";
constexpr int kPassedOverCount = 6;
/// For any one thing. The library makes room for a chunk by the length that it claims, before any of it is read.
constexpr png_alloc_size_t kMostBytesAtOnce = png_alloc_size_t{64} << 20U;

/// As with JPEG: no destructor lies in the way of the library's jumps.
class PNGReader {
  public:
    PNGReader(PictureInput& input, PictureSink& sink) : input_(input), sink_(sink) {}
    ~PNGReader() { ::png_destroy_read_struct(&png_, &info_, nullptr); }
    PNGReader(const PNGReader&) = delete;
    PNGReader& operator=(const PNGReader&) = delete;

    bool read() {
        png_ = ::png_create_read_struct_2(
            PNG_LIBPNG_VER_STRING, this, [](png_structp png, png_const_charp) { ::png_longjmp(png, 1); },
            [](png_structp, png_const_charp) {}, nullptr,
            [](png_structp, png_alloc_size_t bytes) { return bytes > kMostBytesAtOnce ? nullptr : std::malloc(bytes); },
            [](png_structp, png_voidp memory) { std::free(memory); });
        if (png_ == nullptr) return false;
        info_ = ::png_create_info_struct(png_);
        if (info_ == nullptr || !readHeader()) return false;
        sink_.begin({.width = width(), .height = height(), .orientation = orientation()});
        row_.resize(::png_get_rowbytes(png_, info_));
        return isInterlaced() ? readPasses() : readRows();
    }

  private:
    [[nodiscard]] png_uint_32 width() const { return ::png_get_image_width(png_, info_); }
    [[nodiscard]] png_uint_32 height() const { return ::png_get_image_height(png_, info_); }
    [[nodiscard]] bool isInterlaced() const { return ::png_get_interlace_type(png_, info_) != PNG_INTERLACE_NONE; }

    [[nodiscard]] PixelKind kind() const {
        switch (::png_get_channels(png_, info_)) {
            case 1:
                return PixelKind::grey;
            case 2:
                return PixelKind::greyAlpha;
            case 3:
                return PixelKind::rgb;
            default:
                return PixelKind::rgba;
        }
    }

    bool readHeader() {
        if (setjmp(png_jmpbuf(png_)) != 0) return false;
        ::png_set_read_fn(png_, this, [](png_structp png, png_bytep to, png_size_t count) {
            if (!static_cast<PNGReader*>(::png_get_io_ptr(png))->input_.readAll(to, count)) ::png_longjmp(png, 1);
        });
        ::png_set_keep_unknown_chunks(png_, PNG_HANDLE_CHUNK_NEVER, kPassedOver, kPassedOverCount);
        ::png_set_user_limits(png_, kMostPixels, kMostPixels);
        ::png_read_info(png_, info_);
        if (!hasPixels(width(), height(), isInterlaced() ? kMostPixelsAtOnce : kMostPixels)) return false;
        ::png_set_expand(png_);
        ::png_set_scale_16(png_);
        ::png_read_update_info(png_, info_);
        return true;
    }

    bool readRows() {
        if (setjmp(png_jmpbuf(png_)) != 0) return false;
        const png_uint_32 rows = height();
        for (png_uint_32 y = 0; y < rows; ++y) {
            if (input_.isCancelled()) return false;
            ::png_read_row(png_, row_.data(), nullptr);
            sink_.add({.y = y, .samples = row_, .kind = kind()});
        }
        return true;
    }

    bool readPasses() {
        if (setjmp(png_jmpbuf(png_)) != 0) return false;
        for (int pass = 0; pass < PNG_INTERLACE_ADAM7_PASSES; ++pass) {
            if (!readPass(pass)) return false;
        }
        return true;
    }

    bool readPass(int pass) {
        const png_uint_32 columns = PNG_PASS_COLS(width(), pass);
        const png_uint_32 rows = columns == 0 ? 0 : PNG_PASS_ROWS(height(), pass);
        const std::size_t each = samplesOf(kind());
        for (png_uint_32 i = 0; i < rows; ++i) {
            if (input_.isCancelled()) return false;
            ::png_read_row(png_, row_.data(), nullptr);
            sink_.add({.x = PNG_COL_FROM_PASS_COL(0U, pass),
                       .y = PNG_ROW_FROM_PASS_ROW(i, pass),
                       .samples = {row_.data(), each * columns},
                       .kind = kind(),
                       .step = static_cast<std::size_t>(PNG_PASS_COL_OFFSET(pass))});
        }
        return true;
    }

    [[nodiscard]] unsigned orientation() const {
        png_uint_32 length = 0;
        png_bytep data = nullptr;
        if (::png_get_eXIf_1(png_, info_, &length, &data) == 0) return 1;
        return exifOrientation({data, length});
    }

    PictureInput& input_;
    PictureSink& sink_;
    png_structp png_ = nullptr;
    png_infop info_ = nullptr;
    std::vector<std::uint8_t> row_;
};

}  // namespace

bool readPNG(PictureInput& input, PictureSink& sink) {
    return PNGReader(input, sink).read();
}

}  // namespace tavrin
