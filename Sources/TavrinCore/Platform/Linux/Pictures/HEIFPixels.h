// What libheif decoded, as the pixels of a picture.
#pragma once

#include "TavrinCore/Platform/Linux/Pictures/PictureInput.h"
#include "TavrinCore/Platform/Linux/Pictures/PictureSink.h"

#include <libheif/heif.h>

namespace tavrin {

/// All of them are held at once. A panorama has 60 million, a photograph up to 50.
inline constexpr std::uint64_t kMostPixelsOfHEIF = 65'000'000;

/// Colours where the library gave them, else brightness. False when the planes don't fit together, and once `input` is
/// cancelled.
[[nodiscard]] bool addPixels(const heif_image* image, const PictureInput& input, PictureSink& sink);

}  // namespace tavrin
