// libtiff, one strip or tile at a time, by its own conversion to RGBA: it knows all the forms that a TIFF may have.
// Between them a cancel is noticed; one that is under way is decoded to its end.
#include "TavrinCore/Platform/Linux/Pictures/PictureCodecs.h"
#include "TavrinCore/Platform/Linux/Pictures/PictureSink.h"

#include <tiffio.h>

#include <algorithm>
#include <array>
#include <bit>
#include <cstdio>
#include <memory>

namespace tavrin {
namespace {

/// No honest file is cut into more pieces.
constexpr std::uint64_t kMostBlocks = 1'000'000;
/// Of one piece of memory that the library takes: a block of the most pixels that are allowed, of four samples.
constexpr tmsize_t kMostBytes = 4 * static_cast<tmsize_t>(kMostPixelsAtOnce);

PictureInput& inputOf(thandle_t handle) {
    return *static_cast<PictureInput*>(handle);
}

tmsize_t readBytes(thandle_t handle, void* to, tmsize_t count) {
    return count <= 0 ? 0 : static_cast<tmsize_t>(inputOf(handle).read(to, static_cast<std::size_t>(count)));
}

tmsize_t writeNothing(thandle_t /*handle*/, void* /*from*/, tmsize_t /*count*/) {
    return -1;
}

toff_t moveTo(thandle_t handle, toff_t offset, int whence) {
    PictureInput& input = inputOf(handle);
    switch (whence) {
        case SEEK_SET:
            input.seek(offset);
            break;
        case SEEK_CUR:
            input.seek(input.position() + offset);
            break;
        default:
            input.seek(input.size() + offset);
    }
    return input.position();
}

int closeNothing(thandle_t /*handle*/) {
    return 0;
}

toff_t sizeOf(thandle_t handle) {
    return inputOf(handle).size();
}

int saysNothing(TIFF* /*tiff*/, void* /*data*/, const char* /*module*/, const char* /*format*/, va_list /*arguments*/) {
    return 1;
}

struct FreeOptions {
    void operator()(TIFFOpenOptions* options) const { ::TIFFOpenOptionsFree(options); }
};
struct CloseTIFF {
    void operator()(TIFF* tiff) const { ::TIFFClose(tiff); }
};
using OpenTIFF = std::unique_ptr<TIFF, CloseTIFF>;

OpenTIFF open(PictureInput& input) {
    const std::unique_ptr<TIFFOpenOptions, FreeOptions> options(::TIFFOpenOptionsAlloc());
    if (options == nullptr) return nullptr;
    ::TIFFOpenOptionsSetMaxSingleMemAlloc(options.get(), kMostBytes);
    ::TIFFOpenOptionsSetErrorHandlerExtR(options.get(), saysNothing, nullptr);
    ::TIFFOpenOptionsSetWarningHandlerExtR(options.get(), saysNothing, nullptr);
    return OpenTIFF(::TIFFClientOpenExt("", "rm", &input, readBytes, writeNothing, moveTo, closeNothing, sizeOf,
                                        nullptr, nullptr, options.get()));
}

/// The library's conversion, for as long as it is under way.
class Conversion {
  public:
    explicit Conversion(TIFF* tiff) {
        std::array<char, 1024> complaint{};
        isOpen_ = ::TIFFRGBAImageOK(tiff, complaint.data()) != 0 &&
                  ::TIFFRGBAImageBegin(&image_, tiff, 1, complaint.data()) != 0;
        // Rows and columns as they are stored: what is to be turned is turned later, when it is small.
        image_.req_orientation = ORIENTATION_TOPLEFT;
        image_.orientation = ORIENTATION_TOPLEFT;
    }
    ~Conversion() {
        if (isOpen_) ::TIFFRGBAImageEnd(&image_);
    }
    Conversion(const Conversion&) = delete;
    Conversion& operator=(const Conversion&) = delete;

    [[nodiscard]] bool isOpen() const { return isOpen_; }

    bool read(std::uint32_t x, std::uint32_t y, std::uint32_t width, std::uint32_t height,
              std::vector<std::uint32_t>& raster) {
        image_.col_offset = static_cast<int>(x);
        image_.row_offset = static_cast<int>(y);
        raster.resize(std::size_t{width} * height);
        return ::TIFFRGBAImageGet(&image_, raster.data(), width, height) != 0;
    }

  private:
    TIFFRGBAImage image_{};
    bool isOpen_ = false;
};

struct Extent {
    std::uint32_t width = 0;
    std::uint32_t height = 0;
};

/// The pieces that the file is cut into.
Extent blocksOf(TIFF* tiff, const Extent& picture) {
    Extent block = picture;
    if (::TIFFIsTiled(tiff)) {
        ::TIFFGetField(tiff, TIFFTAG_TILEWIDTH, &block.width);
        ::TIFFGetField(tiff, TIFFTAG_TILELENGTH, &block.height);
    } else {
        ::TIFFGetFieldDefaulted(tiff, TIFFTAG_ROWSPERSTRIP, &block.height);
    }
    return {std::min(block.width, picture.width), std::min(block.height, picture.height)};
}

void add(const std::vector<std::uint32_t>& raster, std::uint32_t x, std::uint32_t y, const Extent& block,
         PictureSink& sink) {
    // The library packs a pixel into a number, of which red is the lowest byte.
    static_assert(std::endian::native == std::endian::little);
    const std::span pixels(reinterpret_cast<const std::uint8_t*>(raster.data()), 4 * raster.size());
    const std::size_t stride = std::size_t{4} * block.width;
    // Where there is an alpha value, the library multiplied the colours with it.
    for (std::size_t row = 0; row < block.height; ++row)
        sink.add({.x = x,
                  .y = y + row,
                  .samples = pixels.subspan(row * stride, stride),
                  .kind = PixelKind::premultipliedRGBA});
}

bool readBlocks(Conversion& conversion, const PictureInput& input, const Extent& picture, const Extent& block,
                PictureSink& sink) {
    std::vector<std::uint32_t> raster;
    for (std::uint32_t y = 0; y < picture.height; y += block.height) {
        for (std::uint32_t x = 0; x < picture.width; x += block.width) {
            const Extent here{std::min(block.width, picture.width - x), std::min(block.height, picture.height - y)};
            if (input.isCancelled() || !conversion.read(x, y, here.width, here.height, raster)) return false;
            add(raster, x, y, here, sink);
        }
    }
    return true;
}

}  // namespace

bool readTIFF(PictureInput& input, PictureSink& sink) {
    const OpenTIFF tiff = open(input);
    if (tiff == nullptr) return false;
    Extent picture;
    ::TIFFGetField(tiff.get(), TIFFTAG_IMAGEWIDTH, &picture.width);
    ::TIFFGetField(tiff.get(), TIFFTAG_IMAGELENGTH, &picture.height);
    if (!hasPixels(picture.width, picture.height, kMostPixels)) return false;
    const Extent block = blocksOf(tiff.get(), picture);
    if (!hasPixels(block.width, block.height, kMostPixelsAtOnce)) return false;
    const std::uint64_t blocks = ((std::uint64_t{picture.width} + block.width - 1) / block.width) *
                                 ((std::uint64_t{picture.height} + block.height - 1) / block.height);
    if (blocks > kMostBlocks) return false;
    std::uint16_t orientation = ORIENTATION_TOPLEFT;
    ::TIFFGetFieldDefaulted(tiff.get(), TIFFTAG_ORIENTATION, &orientation);
    Conversion conversion(tiff.get());
    if (!conversion.isOpen()) return false;
    sink.begin({.width = picture.width, .height = picture.height, .orientation = orientation});
    return readBlocks(conversion, input, picture, block, sink);
}

}  // namespace tavrin
