// The library for HEIC and AVIF, fetched when the first such picture is met.
#pragma once

#include <libheif/heif.h>

#define TAVRIN_HEIF_FUNCTIONS(FUNCTION)            \
    FUNCTION(check_filetype)                       \
    FUNCTION(context_alloc)                        \
    FUNCTION(context_free)                         \
    FUNCTION(context_get_primary_image_handle)     \
    FUNCTION(context_read_from_reader)             \
    FUNCTION(context_set_max_decoding_threads)     \
    FUNCTION(context_set_maximum_image_size_limit) \
    FUNCTION(decode_image)                         \
    FUNCTION(decoding_options_alloc)               \
    FUNCTION(decoding_options_free)                \
    FUNCTION(image_get_bits_per_pixel_range)       \
    FUNCTION(image_get_colorspace)                 \
    FUNCTION(image_get_height)                     \
    FUNCTION(image_get_plane_readonly)             \
    FUNCTION(image_get_width)                      \
    FUNCTION(image_handle_get_height)              \
    FUNCTION(image_handle_get_width)               \
    FUNCTION(image_handle_release)                 \
    FUNCTION(image_release)

namespace tavrin {

/// What is used of libheif, each under its name without the "heif_".
///
/// It isn't linked: with the codecs that it brings it takes longer to load than the window takes to paint its ground,
/// and most people start the program without having such a picture looked at.
struct LibHEIF {
#define TAVRIN_HEIF_MEMBER(name) decltype(&::heif_##name) name = nullptr;  // NOLINT(bugprone-macro-parentheses): a name
    TAVRIN_HEIF_FUNCTIONS(TAVRIN_HEIF_MEMBER)
#undef TAVRIN_HEIF_MEMBER

    /// Nil where it isn't installed. Stays loaded. From any thread.
    [[nodiscard]] static const LibHEIF* get();
};

/// Whoever calls it has seen that it is there.
[[nodiscard]] inline const LibHEIF& heif() {
    return *LibHEIF::get();
}

}  // namespace tavrin
