// Where the codecs' pixels go: each is handed on as it is decoded, and nobody holds the whole picture.
#pragma once

#include "TavrinCore/Models/GreyPicture.h"

#include <cstddef>
#include <cstdint>
#include <span>

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
[[nodiscard]] constexpr std::uint64_t light(std::uint64_t red, std::uint64_t green, std::uint64_t blue) {
    return 19'595U * red + 38'470U * green + 7'471U * blue;
}

[[nodiscard]] inline std::uint8_t brightness(unsigned red, unsigned green, unsigned blue) {
    return static_cast<std::uint8_t>((light(red, green, blue) + kLightParts / 2) / kLightParts);
}

/// A colour of which `alpha` of 255 parts are there, over black.
[[nodiscard]] inline unsigned times(unsigned value, unsigned alpha) {
    return (value * alpha + 127) / 255;
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

/// A picture that is about to come.
struct PictureFrame {
    /// Neither may be 0.
    std::size_t width = 0;
    std::size_t height = 0;
    /// As Exif has it, from 1 to 8; whoever takes the pixels turns them, when they are few. Others are taken for 1.
    unsigned orientation = 1;
    /// How much of the pixels there is a picture, where a codec scaled it down before and rounded up. 0: all.
    GreyPicture::Extent extent = {0, 0};
};

/// Pixels of one row.
struct PixelRow {
    /// Where the first one is.
    std::size_t x = 0;
    std::size_t y = 0;
    std::span<const std::uint8_t> samples;
    PixelKind kind = PixelKind::grey;
    /// From each pixel to the next one.
    std::size_t step = 1;
};

class PictureSink {
  public:
    /// What is wanted, so that codecs can spare themselves the rest.
    struct Wanted {
        /// Else its brightness is enough.
        bool isInColours = false;
        /// A codec that scales must leave this many pixels on the longest side, and this many on the shortest, as far
        /// as the picture has them.
        std::size_t onLongest = 0;
        std::size_t onShortest = 0;
    };

    PictureSink() = default;
    virtual ~PictureSink() = default;
    PictureSink(const PictureSink&) = delete;
    PictureSink& operator=(const PictureSink&) = delete;

    [[nodiscard]] virtual Wanted wanted() const = 0;
    /// Once, before the first pixel.
    virtual void begin(const PictureFrame& frame) = 0;
    /// Each pixel once, in any order. What lies outside of the frame is left out.
    virtual void add(const PixelRow& row) = 0;
};

}  // namespace tavrin
