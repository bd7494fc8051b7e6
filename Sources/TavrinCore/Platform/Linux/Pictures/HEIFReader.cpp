// libheif. It decodes a picture whole, and turns and mirrors by itself.
//
// It reads piece by piece, and what a camera of today writes consists of many tiles: there a cancel is noticed before
// each. A picture in one piece can't be cancelled while the library decodes it.
#include "TavrinCore/Platform/Linux/Pictures/HEIFPixels.h"
#include "TavrinCore/Platform/Linux/Pictures/LibHEIF.h"
#include "TavrinCore/Platform/Linux/Pictures/PictureCodecs.h"

#include <array>
#include <cstring>
#include <memory>

namespace tavrin {
namespace {

/// On each side; a panorama has 16,382.
constexpr int kMostOnASide = 16'384;

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

bool isPicture(PictureInput& input) {
    std::array<std::uint8_t, 12> begin{};
    if (!input.readAll(begin.data(), begin.size())) return false;
    input.seek(0);
    return heif().check_filetype(begin.data(), static_cast<int>(begin.size())) != heif_filetype_no;
}

}  // namespace

bool readHEIF(PictureInput& input, PictureSink& sink) {
    // Films have the same beginning.
    if (LibHEIF::get() == nullptr || !isPicture(input)) return false;
    const std::unique_ptr<heif_context, FreeContext> context(heif().context_alloc());
    if (context == nullptr) return false;
    heif().context_set_maximum_image_size_limit(context.get(), kMostOnASide);
    // Else tiles are read on threads of the library's own, and whether it was cancelled is asked there.
    heif().context_set_max_decoding_threads(context.get(), 0);
    Source source{input};
    if (heif().context_read_from_reader(context.get(), &kReader, &source, nullptr).code != heif_error_Ok) return false;
    heif_image_handle* primary = nullptr;
    if (heif().context_get_primary_image_handle(context.get(), &primary).code != heif_error_Ok) return false;
    const std::unique_ptr<heif_image_handle, ReleaseHandle> handle(primary);
    const int width = heif().image_handle_get_width(handle.get());
    const int height = heif().image_handle_get_height(handle.get());
    if (width <= 0 || height <= 0) return false;
    if (!hasPixels(static_cast<std::uint64_t>(width), static_cast<std::uint64_t>(height), kMostPixelsOfHEIF))
        return false;
    const std::unique_ptr<heif_decoding_options, FreeOptions> options(heif().decoding_options_alloc());
    heif_image* decoded = nullptr;
    // Planes of colours, because the library knows what the numbers in the file mean; where brightness is enough, what
    // it gives by itself.
    const bool isInColours = sink.wanted().isInColours;
    const heif_error error =
        heif().decode_image(handle.get(), &decoded, isInColours ? heif_colorspace_RGB : heif_colorspace_undefined,
                            isInColours ? heif_chroma_444 : heif_chroma_undefined, options.get());
    const std::unique_ptr<heif_image, ReleaseImage> image(decoded);
    if (error.code != heif_error_Ok || image == nullptr || source.hasFailed) return false;
    return addPixels(image.get(), input, sink);
}

}  // namespace tavrin
