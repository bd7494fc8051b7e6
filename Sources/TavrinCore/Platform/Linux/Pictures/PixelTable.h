// The colours of a file in which each pixel is a number.
#pragma once

#include "TavrinCore/Platform/Linux/Pictures/PictureSink.h"

#include <algorithm>
#include <array>
#include <vector>

namespace tavrin {

/// Numbers without a colour are black. Where brightness is enough, it is computed here, once for each colour.
class PixelTable {
  public:
    explicit PixelTable(const PictureSink& sink)
        : kind_(sink.wanted().isInColours ? PixelKind::rgba : PixelKind::grey) {
        colours_.fill({0, 0, 0, 255});
    }

    void set(std::size_t number, const std::array<std::uint8_t, 4>& rgba) {
        colours_[number] = rgba;
        greys_[number] = static_cast<std::uint8_t>(times(brightness(rgba[0], rgba[1], rgba[2]), rgba[3]));
    }

    /// The pixels of `numbers`, of which none is above 255, for the sink. They stand until the next call.
    [[nodiscard]] PixelRow row(std::size_t x, std::size_t y, std::span<const std::uint8_t> numbers) {
        samples_.resize(numbers.size() * samplesOf(kind_));
        std::uint8_t* to = samples_.data();
        for (const std::uint8_t number : numbers) {
            if (kind_ == PixelKind::grey)
                *to++ = greys_[number];
            else
                to = std::copy(colours_[number].begin(), colours_[number].end(), to);
        }
        return {.x = x, .y = y, .samples = samples_, .kind = kind_};
    }

  private:
    PixelKind kind_;
    std::array<std::array<std::uint8_t, 4>, 256> colours_{};
    std::array<std::uint8_t, 256> greys_{};
    std::vector<std::uint8_t> samples_;
};

}  // namespace tavrin
