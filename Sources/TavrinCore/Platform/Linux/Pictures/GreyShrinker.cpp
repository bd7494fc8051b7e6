#include "TavrinCore/Platform/Linux/Pictures/GreyShrinker.h"

#include "TavrinCore/Platform/Linux/Pictures/Upright.h"
#include "TavrinCore/Platform/PictureDecoder.h"

#include <algorithm>
#include <array>
#include <cmath>

namespace tavrin {
namespace {

/// More cells than a thumbnail has pixels, so that uneven edges of cells don't show.
constexpr std::size_t kFewestCells = 256;

/// The light of pixels side by side. Their colours are added up first, which is the same and takes no product for each.
/// The kind is known where this is compiled: asking for each pixel takes as long as adding it.
template <PixelKind kind>
std::uint64_t sumOf(const std::uint8_t* sample, const std::uint8_t* end) {
    constexpr std::size_t each = samplesOf(kind);
    constexpr bool isGrey = kind == PixelKind::grey || kind == PixelKind::greyAlpha;
    constexpr bool hasAlpha = kind == PixelKind::greyAlpha || kind == PixelKind::rgba;
    std::array<std::uint64_t, isGrey ? 1 : 3> sums{};
    for (; sample != end; sample += each) {
        const unsigned share = hasAlpha ? sample[each - 1] : 1;
        for (std::size_t colour = 0; colour < sums.size(); ++colour)
            sums[colour] += sample[colour] * share;
    }
    std::uint64_t sum = kLightParts * sums[0];
    if constexpr (!isGrey) sum = light(sums[0], sums[1], sums[2]);
    return hasAlpha ? sum / 255 : sum;
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

}  // namespace

void GreyShrinker::begin(const PictureFrame& frame) {
    frame_ = frame;
    if (frame.extent.width <= 0) frame_.extent = {static_cast<double>(frame.width), static_cast<double>(frame.height)};
    step_ = std::max<std::size_t>(1, std::max(frame.width, frame.height) / kFewestCells);
    columns_ = (frame.width + step_ - 1) / step_;
    rows_ = (frame.height + step_ - 1) / step_;
    sums_.assign(columns_ * rows_, 0);
}

void GreyShrinker::add(const PixelRow& row) {
    if (row.y >= frame_.height || row.x >= frame_.width) return;
    const std::size_t each = samplesOf(row.kind);
    const std::size_t most = (frame_.width - row.x + row.step - 1) / row.step;
    const std::size_t end = row.x + std::min(row.samples.size() / each, most) * row.step;
    std::uint64_t* sums = sums_.data() + row.y / step_ * columns_;
    const std::uint8_t* sample = row.samples.data();
    for (std::size_t x = row.x; x < end;) {
        const std::size_t cell = x / step_;
        const std::size_t count = (std::min(end, (cell + 1) * step_) - x + row.step - 1) / row.step;
        sums[cell] += sumOf(row.kind, sample, sample + count * each);
        sample += count * each;
        x += count * row.step;
    }
}

GreyPicture GreyShrinker::thumbnail() const {
    GreyPicture cells{.width = columns_, .height = rows_, .pixels = std::vector<float>(sums_.size())};
    for (std::size_t row = 0; row < rows_; ++row) {
        for (std::size_t column = 0; column < columns_; ++column) {
            const std::uint64_t pixels = static_cast<std::uint64_t>(std::min(step_, frame_.width - column * step_)) *
                                         std::min(step_, frame_.height - row * step_);
            const std::size_t cell = row * columns_ + column;
            cells.pixels[cell] =
                static_cast<float>(static_cast<double>(sums_[cell]) / static_cast<double>(pixels * kLightParts));
        }
    }
    const auto [width, height] = frame_.extent;
    const double scale = std::min(1.0, static_cast<double>(kThumbnailSide) / std::max(width, height));
    const auto scaled = [scale](double length, std::size_t unit) {
        const auto pixels = std::max<std::size_t>(1, static_cast<std::size_t>(std::lround(length * scale)));
        return pixels < unit ? pixels : pixels - pixels % unit;
    };
    const bool isTurned = frame_.orientation >= 5 && frame_.orientation <= 8;
    const std::size_t columns = scaled(width, isTurned ? kThumbnailRows : kThumbnailColumns);
    const std::size_t rows = scaled(height, isTurned ? kThumbnailColumns : kThumbnailRows);
    const auto side = static_cast<double>(step_);
    return upright<1>(cells.reducedTo(columns, rows, {width / side, height / side}), frame_.orientation);
}

}  // namespace tavrin
