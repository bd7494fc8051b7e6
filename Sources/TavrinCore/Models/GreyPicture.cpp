#include "TavrinCore/Models/GreyPicture.h"

#include <algorithm>

namespace tavrin {
namespace {

/// What one of `count` equal pieces of a line covers of its pixels.
class Cover {
  public:
    /// The line has `pixels`, but is only `length` of them long.
    Cover(std::size_t piece, std::size_t count, double length, std::size_t pixels)
        : begin_(static_cast<double>(piece) * length / static_cast<double>(count)),
          end_(static_cast<double>(piece + 1) * length / static_cast<double>(count)),
          pixels_(pixels) {}

    [[nodiscard]] std::size_t first() const { return std::min(pixels_ - 1, static_cast<std::size_t>(begin_)); }
    /// One past it.
    [[nodiscard]] std::size_t last() const { return std::min(pixels_, static_cast<std::size_t>(end_) + 1); }
    /// How much of a pixel, from 0 to 1.
    [[nodiscard]] double of(std::size_t pixel) const {
        const auto left = static_cast<double>(pixel);
        return std::max(0.0, std::min(end_, left + 1) - std::max(begin_, left));
    }

  private:
    double begin_;
    double end_;
    std::size_t pixels_;
};

}  // namespace

GreyPicture GreyPicture::reducedTo(std::size_t newWidth, std::size_t newHeight) const {
    return reducedTo(newWidth, newHeight, {static_cast<double>(width), static_cast<double>(height)});
}

GreyPicture GreyPicture::reducedTo(std::size_t newWidth, std::size_t newHeight, Extent extent) const {
    // First the columns of each row, then the rows: the weights of the two don't depend on each other.
    std::vector<double> narrow(newWidth * height);
    for (std::size_t column = 0; column < newWidth; ++column) {
        const Cover cover(column, newWidth, extent.width, width);
        for (std::size_t x = cover.first(); x < cover.last(); ++x) {
            const double weight = cover.of(x);
            for (std::size_t y = 0; y < height; ++y)
                narrow[y * newWidth + column] += weight * pixels[y * width + x];
        }
    }
    GreyPicture small{.width = newWidth, .height = newHeight, .pixels = std::vector<float>(newWidth * newHeight)};
    const double area = extent.width * extent.height / static_cast<double>(newWidth * newHeight);
    for (std::size_t row = 0; row < newHeight; ++row) {
        const Cover cover(row, newHeight, extent.height, height);
        for (std::size_t column = 0; column < newWidth; ++column) {
            double sum = 0;
            for (std::size_t y = cover.first(); y < cover.last(); ++y)
                sum += cover.of(y) * narrow[y * newWidth + column];
            small.pixels[row * newWidth + column] = static_cast<float>(sum / area);
        }
    }
    return small;
}

}  // namespace tavrin
