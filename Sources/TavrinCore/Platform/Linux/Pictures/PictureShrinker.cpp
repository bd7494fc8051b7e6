#include "TavrinCore/Platform/Linux/Pictures/PictureShrinker.h"

#include "TavrinCore/Platform/PictureDecoder.h"

#include <algorithm>
#include <cmath>

namespace tavrin {
namespace {

/// More cells than a thumbnail has pixels, so that uneven edges of cells don't show.
constexpr std::size_t kFewestCells = 256;

/// The light of pixels side by side. The kind is known where this is compiled: asking for each pixel takes as long as
/// adding it.
template <PixelKind kind>
std::uint64_t sumOf(const std::uint8_t* sample, const std::uint8_t* end) {
    constexpr std::size_t each = samplesOf(kind);
    std::uint64_t sum = 0;
    for (; sample != end; sample += each) {
        if constexpr (kind == PixelKind::grey)
            sum += sample[0];
        else if constexpr (kind == PixelKind::greyAlpha)
            sum += std::uint64_t{kLightParts} * sample[0] * sample[1] / 255;
        else if constexpr (kind == PixelKind::rgba)
            sum += std::uint64_t{light(sample[0], sample[1], sample[2])} * sample[3] / 255;
        else
            sum += light(sample[0], sample[1], sample[2]);
    }
    return kind == PixelKind::grey ? sum * kLightParts : sum;
}

std::uint64_t sumOf(PixelKind kind, const std::uint8_t* sample, const std::uint8_t* end) {
    switch (kind) {
        case PixelKind::grey:
            return sumOf<PixelKind::grey>(sample, end);
        case PixelKind::greyAlpha:
            return sumOf<PixelKind::greyAlpha>(sample, end);
        case PixelKind::rgb:
            return sumOf<PixelKind::rgb>(sample, end);
        case PixelKind::rgba:
            return sumOf<PixelKind::rgba>(sample, end);
        case PixelKind::premultipliedRGBA:
            return sumOf<PixelKind::premultipliedRGBA>(sample, end);
    }
    return 0;
}

/// Where the pixel of the upright picture stands in the stored one (Exif 2.3, tag 274).
GreyPicture upright(const GreyPicture& stored, unsigned orientation) {
    if (orientation < 2 || orientation > 8) return stored;
    const bool isTurned = orientation >= 5;
    GreyPicture result{.width = isTurned ? stored.height : stored.width,
                       .height = isTurned ? stored.width : stored.height,
                       .pixels = std::vector<float>(stored.pixels.size())};
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
        const std::uint8_t* next = sample + (cellEnd - x) * each;
        sums[cell] += sumOf(kind, sample, next);
        sample = next;
        x = cellEnd;
    }
}

GreyPicture PictureShrinker::thumbnail(unsigned orientation) const {
    GreyPicture cells{.width = columns_, .height = rows_, .pixels = std::vector<float>(sums_.size())};
    for (std::size_t row = 0; row < rows_; ++row) {
        for (std::size_t column = 0; column < columns_; ++column) {
            const std::uint64_t pixels = static_cast<std::uint64_t>(std::min(step_, width_ - column * step_)) *
                                         std::min(step_, height_ - row * step_);
            const std::size_t cell = row * columns_ + column;
            cells.pixels[cell] =
                static_cast<float>(static_cast<double>(sums_[cell]) / static_cast<double>(pixels * kLightParts));
        }
    }
    const double longest = std::max(extent_.width, extent_.height);
    const double scale = std::min(1.0, static_cast<double>(kThumbnailSide) / longest);
    const auto scaled = [&](double length, std::size_t unit) {
        const auto pixels = std::max<std::size_t>(1, static_cast<std::size_t>(std::lround(length * scale)));
        return pixels < unit ? pixels : pixels - pixels % unit;
    };
    const bool isTurned = orientation >= 5 && orientation <= 8;
    const std::size_t width = scaled(extent_.width, isTurned ? kThumbnailRows : kThumbnailColumns);
    const std::size_t height = scaled(extent_.height, isTurned ? kThumbnailColumns : kThumbnailRows);
    const auto side = static_cast<double>(step_);
    return upright(cells.reducedTo(width, height, {extent_.width / side, extent_.height / side}), orientation);
}

}  // namespace tavrin
