// Turns and mirrors pictures that were stored as the camera was held.
#pragma once

#include <algorithm>
#include <cstddef>

namespace tavrin {

/// `stored` as it is to be looked at (Exif 2.3, tag 274): its width and height, and its pixels of `samples` values
/// each.
template <std::size_t samples, class Picture>
[[nodiscard]] Picture upright(Picture stored, unsigned orientation) {
    if (orientation < 2 || orientation > 8) return stored;
    const bool isTurned = orientation >= 5;
    Picture result{.width = isTurned ? stored.height : stored.width,
                   .height = isTurned ? stored.width : stored.height,
                   .pixels = decltype(stored.pixels)(stored.pixels.size())};
    const bool isFromRight = orientation == 2 || orientation == 3 || orientation == 7 || orientation == 8;
    const bool isFromBottom = orientation == 3 || orientation == 4 || orientation == 6 || orientation == 7;
    auto to = result.pixels.begin();
    for (std::size_t y = 0; y < result.height; ++y) {
        for (std::size_t x = 0; x < result.width; ++x) {
            const std::size_t column = isTurned ? y : x;
            const std::size_t row = isTurned ? x : y;
            const std::size_t from = (isFromBottom ? stored.height - 1 - row : row) * stored.width +
                                     (isFromRight ? stored.width - 1 - column : column);
            to = std::copy_n(stored.pixels.begin() + static_cast<std::ptrdiff_t>(samples * from), samples, to);
        }
    }
    return result;
}

}  // namespace tavrin
