// How a camera was held, from the Exif data of a picture (Exif 2.3, tag 274; the container is TIFF's).
#pragma once

#include <cstdint>
#include <span>

namespace tavrin {

/// From 1 to 8, 1 where there is none. `data` begins with TIFF's own header, or with "Exif" and two zero bytes before
/// it.
[[nodiscard]] unsigned exifOrientation(std::span<const std::uint8_t> data);

}  // namespace tavrin
