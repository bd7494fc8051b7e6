// libheif. It decodes a picture whole, so this asks for the planes as they are coded and takes the brightness alone: no
// copy in colours is made. It turns and mirrors by itself.
//
// It reads piece by piece, and what a camera of today writes consists of many tiles: there a cancel is noticed before
// each. A picture in one piece can't be cancelled while the library decodes it.
#include "TavrinCore/Platform/Linux/Pictures/LibHEIF.h"
#include "TavrinCore/Platform/Linux/Pictures/PictureCodecs.h"
#include "TavrinCore/Platform/Linux/Pictures/PictureShrinker.h"

#include <array>
#include <cstring>
#include <memory>

namespace tavrin {
namespace {

/// On each side; a panorama has 16,382.
constexpr int kMostOnASide = 16'384;
/// All of them are held at once. A panorama has 60 million, a photograph up to 50.
constexpr std::uint64_t kMostPixelsOfHEIF = 65'000'000;

/// Whoever calls it has seen that it is there.
const LibHEIF& heif() {
    return *LibHEIF::get();
}

struct FreeContext {
    void operator()(heif_context* context) const { heif().context_free(context); }
};
struct ReleaseHandle {
    void operator()(heif_image_handle* handle) const { heif().image_handle_release(handle); }
};
struct ReleaseImage {
    void operator()(heif_image* image) const { heif().image_release(image); }
};
struct FreeOptions {
    void operator()(heif_decoding_options* options) const { heif().decoding_options_free(options); }
};

/// The library ends the program (an assertion) when a part of the file that it knows to be there can't be read. So it
/// is given zeros instead, and what comes of them is thrown away.
struct Source {
    PictureInput& input;
    bool hasFailed = false;
};

Source& sourceOf(void* data) {
    return *static_cast<Source*>(data);
}

constexpr heif_reader kReader{
    .reader_api_version = 1,
    .get_position = [](void* data) { return static_cast<std::int64_t>(sourceOf(data).input.position()); },
    .read =
        [](void* to, std::size_t count, void* data) {
            Source& source = sourceOf(data);
            const std::size_t got = source.input.read(to, count);
            if (got < count) {
                source.hasFailed = true;
                std::memset(static_cast<char*>(to) + got, 0, count - got);
                source.input.skip(count - got);
            }
            return 0;
        },
    .seek =
        [](std::int64_t position, void* data) {
            sourceOf(data).input.seek(static_cast<std::uint64_t>(position));
            return 0;
        },
    .wait_for_file_size =
        [](std::int64_t wanted, void* data) {
            return wanted <= static_cast<std::int64_t>(sourceOf(data).input.size())
                       ? heif_reader_grow_status_size_reached
                       : heif_reader_grow_status_size_beyond_eof;
        },
};

/// One plane of an image, brought to 8 bits.
class Plane {
  public:
    Plane(const heif_image* image, heif_channel channel)
        : width_(heif().image_get_width(image, channel)),
          height_(heif().image_get_height(image, channel)),
          bits_(heif().image_get_bits_per_pixel_range(image, channel)),
          bytes_(heif().image_get_plane_readonly(image, channel, &stride_)) {}

    [[nodiscard]] bool isThere() const { return bytes_ != nullptr && width_ > 0 && height_ > 0 && bits_ >= 8; }
    [[nodiscard]] std::size_t width() const { return static_cast<std::size_t>(width_); }
    [[nodiscard]] std::size_t height() const { return static_cast<std::size_t>(height_); }
    [[nodiscard]] bool hasSizeOf(const Plane& other) const {
        return width_ == other.width_ && height_ == other.height_;
    }
    /// More than 8 bits stand in two bytes, in the order of this machine.
    [[nodiscard]] unsigned at(std::size_t x, std::size_t y) const {
        const std::uint8_t* row = bytes_ + y * static_cast<std::size_t>(stride_);
        if (bits_ == 8) return row[x];
        const unsigned value = row[2 * x] | static_cast<unsigned>(row[2 * x + 1]) << 8U;
        return (value >> static_cast<unsigned>(bits_ - 8)) & 0xFFU;
    }

  private:
    int stride_ = 0;
    int width_;
    int height_;
    int bits_;
    const std::uint8_t* bytes_;
};

std::optional<GreyPicture> thumbnailOf(const heif_image* image) {
    const bool hasColours = heif().image_get_colorspace(image) == heif_colorspace_RGB;
    const Plane first(image, hasColours ? heif_channel_R : heif_channel_Y);
    const Plane green(image, hasColours ? heif_channel_G : heif_channel_Y);
    const Plane blue(image, hasColours ? heif_channel_B : heif_channel_Y);
    const Plane alpha(image, heif_channel_Alpha);
    if (!first.isThere() || !green.isThere() || !blue.isThere()) return std::nullopt;
    if (!green.hasSizeOf(first) || !blue.hasSizeOf(first)) return std::nullopt;
    if (!hasPixels(first.width(), first.height(), kMostPixelsOfHEIF)) return std::nullopt;
    const bool hasAlpha = alpha.isThere() && alpha.hasSizeOf(first);
    PictureShrinker shrinker(first.width(), first.height());
    std::vector<std::uint8_t> row(2 * first.width());
    for (std::size_t y = 0; y < first.height(); ++y) {
        for (std::size_t x = 0; x < first.width(); ++x) {
            row[2 * x] = hasColours ? brightness(first.at(x, y), green.at(x, y), blue.at(x, y))
                                    : static_cast<std::uint8_t>(first.at(x, y));
            row[2 * x + 1] = hasAlpha ? static_cast<std::uint8_t>(alpha.at(x, y)) : 255;
        }
        shrinker.addRow(0, y, row, PixelKind::greyAlpha);
    }
    return shrinker.thumbnail(1);
}

bool isPicture(PictureInput& input) {
    std::array<std::uint8_t, 12> begin{};
    if (!input.readAll(begin.data(), begin.size())) return false;
    input.seek(0);
    return heif().check_filetype(begin.data(), static_cast<int>(begin.size())) != heif_filetype_no;
}

}  // namespace

std::optional<GreyPicture> readHEIF(PictureInput& input) {
    // Films have the same beginning.
    if (LibHEIF::get() == nullptr || !isPicture(input)) return std::nullopt;
    const std::unique_ptr<heif_context, FreeContext> context(heif().context_alloc());
    if (context == nullptr) return std::nullopt;
    heif().context_set_maximum_image_size_limit(context.get(), kMostOnASide);
    // Else tiles are read on threads of the library's own, and whether it was cancelled is asked there.
    heif().context_set_max_decoding_threads(context.get(), 0);
    Source source{input};
    if (heif().context_read_from_reader(context.get(), &kReader, &source, nullptr).code != heif_error_Ok)
        return std::nullopt;
    heif_image_handle* primary = nullptr;
    if (heif().context_get_primary_image_handle(context.get(), &primary).code != heif_error_Ok) return std::nullopt;
    const std::unique_ptr<heif_image_handle, ReleaseHandle> handle(primary);
    const int width = heif().image_handle_get_width(handle.get());
    const int height = heif().image_handle_get_height(handle.get());
    if (width <= 0 || height <= 0) return std::nullopt;
    if (!hasPixels(static_cast<std::uint64_t>(width), static_cast<std::uint64_t>(height), kMostPixelsOfHEIF))
        return std::nullopt;
    const std::unique_ptr<heif_decoding_options, FreeOptions> options(heif().decoding_options_alloc());
    heif_image* decoded = nullptr;
    const heif_error error =
        heif().decode_image(handle.get(), &decoded, heif_colorspace_undefined, heif_chroma_undefined, options.get());
    const std::unique_ptr<heif_image, ReleaseImage> image(decoded);
    if (error.code != heif_error_Ok || image == nullptr || source.hasFailed) return std::nullopt;
    return thumbnailOf(image.get());
}

}  // namespace tavrin
