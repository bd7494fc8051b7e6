// A small picture without colours.
#pragma once

#include <cstddef>
#include <vector>

namespace tavrin {

struct GreyPicture {
    std::size_t width = 0;
    std::size_t height = 0;
    /// Row by row from the top, each from the left; 0 is black, 255 is white. Means aren't rounded: in a clear sky or
    /// on a wall, neighbours differ by less than a step.
    std::vector<float> pixels = {};

    /// How much of the pixels there is a picture: of the last column and the last row, it may be a part only.
    struct Extent {
        double width;
        double height;
    };

    /// Squeezed to that size, neither of which may be 0: each pixel is the mean of all that it covers.
    [[nodiscard]] GreyPicture reducedTo(std::size_t newWidth, std::size_t newHeight) const;
    [[nodiscard]] GreyPicture reducedTo(std::size_t newWidth, std::size_t newHeight, Extent extent) const;

    friend bool operator==(const GreyPicture&, const GreyPicture&) = default;
};

}  // namespace tavrin
