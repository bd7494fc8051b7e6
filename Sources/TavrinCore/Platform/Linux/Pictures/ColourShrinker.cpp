#include "TavrinCore/Platform/Linux/Pictures/ColourShrinker.h"

#include "TavrinCore/Platform/Linux/Pictures/Upright.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <utility>

namespace tavrin {
namespace {

/// Less of a pixel than this is a rounding error.
constexpr double kLeast = 1e-6;

using Colour = std::array<float, 4>;

/// Multiplied with its alpha value.
template <PixelKind kind>
Colour colourOf(const std::uint8_t* sample) {
    const auto at = [sample](std::size_t i) { return static_cast<float>(sample[i]); };
    if constexpr (kind == PixelKind::grey) {
        return {at(0), at(0), at(0), 255};
    } else if constexpr (kind == PixelKind::greyAlpha) {
        const float grey = at(0) * at(1) / 255;
        return {grey, grey, grey, at(1)};
    } else if constexpr (kind == PixelKind::rgb) {
        return {at(0), at(1), at(2), 255};
    } else if constexpr (kind == PixelKind::rgba) {
        const float share = at(3) / 255;
        return {at(0) * share, at(1) * share, at(2) * share, at(3)};
    } else {
        return {at(0), at(1), at(2), at(3)};
    }
}

void add(float* sums, const Colour& colour, float weight) {
    for (std::size_t i = 0; i < colour.size(); ++i)
        sums[i] += colour[i] * weight;
}

/// Pixels side by side, or `step` apart, from column `x` on.
template <PixelKind kind>
void addPixels(std::span<const std::uint8_t> samples, std::size_t x, std::size_t step, const PixelShares& columns,
               float* sums) {
    for (std::size_t i = 0; i < samples.size(); i += samplesOf(kind), x += step) {
        const PixelShares::Share share = columns.of(x);
        const Colour colour = colourOf<kind>(samples.data() + i);
        float* sum = sums + 4 * share.index;
        add(sum, colour, share.here);
        if (share.next > 0) add(sum + 4, colour, share.next);
    }
}

}  // namespace

PixelShares::PixelShares(double before, double length, std::size_t count)
    : before_(before),
      length_(length),
      scale_(static_cast<double>(count) / length),
      begin_(static_cast<std::size_t>(before)),
      end_(static_cast<std::size_t>(std::ceil(before + length))),
      count_(count) {}

PixelShares::Share PixelShares::of(std::size_t pixel) const {
    const double from = static_cast<double>(pixel) - before_;
    const double begin = std::max(from, 0.0) * scale_;
    const double end = std::min(from + 1, length_) * scale_;
    const std::size_t index = std::min(count_ - 1, static_cast<std::size_t>(begin));
    const double rest = index + 1 < count_ ? end - static_cast<double>(index + 1) : 0;
    const double next = rest > kLeast ? rest : 0;
    return {.index = index, .here = static_cast<float>(end - begin - next), .next = static_cast<float>(next)};
}

PictureSink::Wanted ColourShrinker::wanted() const {
    const bool isWhole = form_.shape == PictureForm::Shape::whole;
    return {.isInColours = true, .onLongest = isWhole ? form_.side : 0, .onShortest = isWhole ? 0 : form_.side};
}

void ColourShrinker::begin(const PictureFrame& frame) {
    auto [width, height] = frame.extent;
    if (width <= 0) {
        width = static_cast<double>(frame.width);
        height = static_cast<double>(frame.height);
    }
    const bool isSquare = form_.shape == PictureForm::Shape::square;
    const double shown = isSquare ? std::min(width, height) : std::max(width, height);
    const double scale = std::min(1.0, static_cast<double>(form_.side) / shown);
    const auto shares = [&](double length) {
        const double part = isSquare ? shown : length;
        const auto scaled =
            std::min(static_cast<std::size_t>(std::lround(part * scale)), static_cast<std::size_t>(part));
        return PixelShares((length - part) / 2, part, std::max<std::size_t>(1, scaled));
    };
    columns_ = shares(width);
    lines_ = shares(height);
    orientation_ = frame.orientation;
    picture_ = {.width = columns_.count(), .height = lines_.count(), .pixels = {}};
    picture_.pixels.resize(picture_.stride() * picture_.height);
    line_.assign(picture_.stride(), 0);
    rows_.assign(picture_.height, {});
    const std::uint64_t across = columns_.end() - columns_.begin();
    for (std::size_t y = lines_.begin(); y < lines_.end(); ++y) {
        const PixelShares::Share share = lines_.of(y);
        rows_[share.index].missing += across;
        if (share.next > 0) rows_[share.index + 1].missing += across;
    }
}

void ColourShrinker::add(const PixelRow& row) {
    if (row.y < lines_.begin() || row.y >= lines_.end()) return;
    // Of the pixels those that are shown.
    const auto until = [&row](std::size_t x) { return x <= row.x ? 0 : (x - row.x + row.step - 1) / row.step; };
    const std::size_t first = until(columns_.begin());
    const std::size_t last = std::min(row.samples.size() / samplesOf(row.kind), until(columns_.end()));
    if (first >= last) return;
    const std::size_t each = samplesOf(row.kind);
    const std::size_t x = row.x + first * row.step;
    const std::size_t lastX = row.x + (last - 1) * row.step;
    const std::size_t begin = 4 * columns_.of(x).index;
    const std::size_t end = std::min(line_.size(), 4 * (columns_.of(lastX).index + 2));
    std::fill(line_.begin() + static_cast<std::ptrdiff_t>(begin), line_.begin() + static_cast<std::ptrdiff_t>(end), 0);
    squeeze(row.samples.subspan(first * each, (last - first) * each), row.kind, x, row.step);
    const PixelShares::Share share = lines_.of(row.y);
    addLine(share.index, share.here, begin, end, last - first);
    if (share.next > 0) addLine(share.index + 1, share.next, begin, end, last - first);
}

void ColourShrinker::squeeze(std::span<const std::uint8_t> samples, PixelKind kind, std::size_t x, std::size_t step) {
    switch (kind) {
        case PixelKind::grey:
            return addPixels<PixelKind::grey>(samples, x, step, columns_, line_.data());
        case PixelKind::greyAlpha:
            return addPixels<PixelKind::greyAlpha>(samples, x, step, columns_, line_.data());
        case PixelKind::rgb:
            return addPixels<PixelKind::rgb>(samples, x, step, columns_, line_.data());
        case PixelKind::rgba:
            return addPixels<PixelKind::rgba>(samples, x, step, columns_, line_.data());
        case PixelKind::premultipliedRGBA:
            return addPixels<PixelKind::premultipliedRGBA>(samples, x, step, columns_, line_.data());
    }
}

void ColourShrinker::addLine(std::size_t index, float weight, std::size_t begin, std::size_t end, std::size_t pixels) {
    Row& to = rows_[index];
    // A pixel that comes twice is one too many.
    if (to.missing < pixels) return;
    if (to.sums.empty()) {
        to.sums.swap(spare_);
        to.sums.assign(picture_.stride(), 0);
    }
    for (std::size_t i = begin; i < end; ++i)
        to.sums[i] += line_[i] * weight;
    to.missing -= pixels;
    if (to.missing == 0) finish(index);
}

void ColourShrinker::finish(std::size_t index) {
    std::vector<float>& sums = rows_[index].sums;
    std::uint8_t* pixel = picture_.pixels.data() + index * picture_.stride();
    const auto rounded = [](float value, float most) {
        return static_cast<std::uint8_t>(std::min(value + 0.5F, most));
    };
    for (std::size_t i = 0; i < sums.size(); i += 4, pixel += 4) {
        pixel[3] = rounded(sums[i + 3], 255);
        // No colour is more than there is of the pixel.
        for (std::size_t colour = 0; colour < 3; ++colour)
            pixel[colour] = rounded(sums[i + colour], pixel[3]);
    }
    sums.clear();
    spare_.swap(sums);
    sums = {};
}

RGBAPicture ColourShrinker::picture() {
    for (std::size_t index = 0; index < rows_.size(); ++index)
        finish(index);
    rows_.clear();
    return upright<4>(std::move(picture_), orientation_);
}

}  // namespace tavrin
