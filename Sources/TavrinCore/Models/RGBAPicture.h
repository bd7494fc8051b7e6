// A picture as a screen shows it.
#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

namespace tavrin {

struct RGBAPicture {
    std::size_t width = 0;
    std::size_t height = 0;
    /// Row by row from the top, each from the left, without gaps: red, green, blue and alpha of each pixel in sRGB, one
    /// byte each. The colours are multiplied with the alpha value already.
    std::vector<std::uint8_t> pixels = {};

    /// Bytes from the beginning of one row to that of the next.
    [[nodiscard]] std::size_t stride() const { return 4 * width; }

    friend bool operator==(const RGBAPicture&, const RGBAPicture&) = default;
};

}  // namespace tavrin
