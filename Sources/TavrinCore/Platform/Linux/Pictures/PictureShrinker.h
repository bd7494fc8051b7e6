// Makes a thumbnail of pixels as a codec hands them on, without ever holding the whole picture.
#pragma once

#include "TavrinCore/Models/GreyPicture.h"

#include <cstddef>
#include <cstdint>
#include <span>
#include <vector>

namespace tavrin {

/// Pictures that are decoded piece by piece may have this many pixels,
inline constexpr std::uint64_t kMostPixels = 150'000'000;
/// and those of which all must be in hand, or that come interlaced, this many.
inline constexpr std::uint64_t kMostPixelsAtOnce = 40'000'000;

[[nodiscard]] inline bool hasPixels(std::uint64_t width, std::uint64_t height, std::uint64_t most) {
    return width > 0 && height > 0 && width <= most && height <= most && width * height <= most;
}

/// One step of brightness is divided into so many.
inline constexpr std::uint32_t kLightParts = 65'536;

/// Brightness as JPEG has it (ITU-R BT.601), in those parts. Of one colour all over, rounding would go one way.
[[nodiscard]] inline std::uint32_t light(unsigned red, unsigned green, unsigned blue) {
    return 19'595U * red + 38'470U * green + 7'471U * blue;
}

[[nodiscard]] inline std::uint8_t brightness(unsigned red, unsigned green, unsigned blue) {
    return static_cast<std::uint8_t>((light(red, green, blue) + kLightParts / 2) / kLightParts);
}

enum class PixelKind : std::uint8_t {
    grey,
    greyAlpha,
    rgb,
    rgba,
    /// The colours were multiplied with the alpha value already.
    premultipliedRGBA,
};

/// Bytes of one pixel.
[[nodiscard]] constexpr std::size_t samplesOf(PixelKind kind) {
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

/// Adds pixels up in cells of equal squares. Each pixel of the picture may be added once; what never comes is black.
class PictureShrinker {
  public:
    /// Neither may be 0.
    PictureShrinker(std::size_t width, std::size_t height);
    /// The same where a codec scaled the picture down before: what it gives is rounded up from `extent`.
    PictureShrinker(std::size_t width, std::size_t height, GreyPicture::Extent extent);

    [[nodiscard]] std::size_t width() const { return width_; }
    [[nodiscard]] std::size_t height() const { return height_; }

    /// Pixels side by side in row `y`, the first one at `x`. What lies outside is left out.
    void addRow(std::size_t x, std::size_t y, std::span<const std::uint8_t> samples, PixelKind kind);
    /// Not outside of the picture.
    void add(std::size_t x, std::size_t y, std::uint8_t grey) {
        sums_[y / step_ * columns_ + x / step_] += std::uint64_t{grey} * kLightParts;
    }

    /// `orientation` from 1 to 8 as Exif has it: what must be done for it is done. Others are taken for 1.
    [[nodiscard]] GreyPicture thumbnail(unsigned orientation) const;

  private:
    std::size_t width_;
    std::size_t height_;
    GreyPicture::Extent extent_;
    /// The side of a cell.
    std::size_t step_;
    std::size_t columns_;
    std::size_t rows_;
    std::vector<std::uint64_t> sums_;
};

}  // namespace tavrin
