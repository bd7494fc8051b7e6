#include "TavrinCore/Platform/Linux/Pictures/PictureShrinker.h"

#include "TavrinCore/Platform/PictureDecoder.h"

#include <algorithm>
#include <cmath>

namespace tavrin {
namespace {

/// More cells than a thumbnail has pixels, so that uneven edges of cells don't show.
constexpr std::size_t kFewestCells = 256;

unsigned times(unsigned value, unsigned alpha) {
    return (value * alpha + 127) / 255;
}

std::uint8_t greyOf(const std::uint8_t* sample, PixelKind kind) {
    switch (kind) {
        case PixelKind::grey:
            return sample[0];
        case PixelKind::greyAlpha:
            return static_cast<std::uint8_t>(times(sample[0], sample[1]));
        case PixelKind::rgba:
            return static_cast<std::uint8_t>(times(brightness(sample[0], sample[1], sample[2]), sample[3]));
        case PixelKind::rgb:
        case PixelKind::premultipliedRGBA:
            return brightness(sample[0], sample[1], sample[2]);
    }
    return 0;
}

/// Where the pixel of the upright picture stands in the stored one (Exif 2.3, tag 274).
GreyPicture upright(const GreyPicture& stored, unsigned orientation) {
    if (orientation < 2 || orientation > 8) return stored;
    const bool isTurned = orientation >= 5;
    GreyPicture result{.width = isTurned ? stored.height : stored.width,
                       .height = isTurned ? stored.width : stored.height,
                       .pixels = std::vector<std::uint8_t>(stored.pixels.size())};
    const bool isFromRight = orientation == 2 || orientation == 3 || orientation == 7 || orientation == 8;
    const bool isFromBottom = orientation == 3 || orientation == 4 || orientation == 6 || orientation == 7;
    for (std::size_t y = 0; y < result.height; ++y) {
        for (std::size_t x = 0; x < result.width; ++x) {
            const std::size_t column = isTurned ? y : x;
            const std::size_t row = isTurned ? x : y;
            result.pixels[y * result.width + x] =
                stored.pixels[(isFromBottom ? stored.height - 1 - row : row) * stored.width +
                              (isFromRight ? stored.width - 1 - column : column)];
        }
    }
    return result;
}

}  // namespace

std::size_t samplesOf(PixelKind kind) {
    switch (kind) {
        case PixelKind::grey:
            return 1;
        case PixelKind::greyAlpha:
            return 2;
        case PixelKind::rgb:
            return 3;
        case PixelKind::rgba:
        case PixelKind::premultipliedRGBA:
            return 4;
    }
    return 1;
}

PictureShrinker::PictureShrinker(std::size_t width, std::size_t height)
    : PictureShrinker(width, height, {static_cast<double>(width), static_cast<double>(height)}) {}

PictureShrinker::PictureShrinker(std::size_t width, std::size_t height, GreyPicture::Extent extent)
    : width_(width),
      height_(height),
      extent_(extent),
      step_(std::max<std::size_t>(1, std::max(width, height) / kFewestCells)),
      columns_((width + step_ - 1) / step_),
      rows_((height + step_ - 1) / step_),
      sums_(columns_ * rows_) {}

void PictureShrinker::addRow(std::size_t x, std::size_t y, std::span<const std::uint8_t> samples, PixelKind kind) {
    if (y >= height_ || x >= width_) return;
    const std::size_t each = samplesOf(kind);
    const std::size_t end = x + std::min(samples.size() / each, width_ - x);
    std::uint64_t* sums = sums_.data() + y / step_ * columns_;
    const std::uint8_t* sample = samples.data();
    while (x < end) {
        const std::size_t cell = x / step_;
        const std::size_t cellEnd = std::min(end, (cell + 1) * step_);
        std::uint64_t sum = 0;
        for (; x < cellEnd; ++x, sample += each)
            sum += greyOf(sample, kind);
        sums[cell] += sum;
    }
}

GreyPicture PictureShrinker::thumbnail(unsigned orientation) const {
    GreyPicture cells{.width = columns_, .height = rows_, .pixels = std::vector<std::uint8_t>(sums_.size())};
    for (std::size_t row = 0; row < rows_; ++row) {
        for (std::size_t column = 0; column < columns_; ++column) {
            const std::uint64_t pixels = static_cast<std::uint64_t>(std::min(step_, width_ - column * step_)) *
                                         std::min(step_, height_ - row * step_);
            const std::size_t cell = row * columns_ + column;
            cells.pixels[cell] = static_cast<std::uint8_t>((sums_[cell] + pixels / 2) / pixels);
        }
    }
    const double longest = std::max(extent_.width, extent_.height);
    const double scale = std::min(1.0, static_cast<double>(kThumbnailSide) / longest);
    const auto scaled = [&](double length) {
        return std::max<std::size_t>(1, static_cast<std::size_t>(std::lround(length * scale)));
    };
    const auto side = static_cast<double>(step_);
    return upright(
        cells.reducedTo(scaled(extent_.width), scaled(extent_.height), {extent_.width / side, extent_.height / side}),
        orientation);
}

}  // namespace tavrin
