// What a BMP says about its pixels. Shapes after Microsoft's BITMAPINFOHEADER and its older and newer forms.
#pragma once

#include "TavrinCore/Platform/Linux/Pictures/PictureInput.h"

#include <bit>
#include <cstdint>
#include <optional>

namespace tavrin {

/// The number that stands in up to four bytes, the lowest first.
[[nodiscard]] inline std::uint32_t littleEndian(const std::uint8_t* bytes, unsigned count) {
    std::uint32_t value = 0;
    for (unsigned i = 0; i < count; ++i)
        value |= static_cast<std::uint32_t>(bytes[i]) << (8U * i);
    return value;
}

struct BMPHeader {
    enum class Compression : std::uint8_t {
        none = 0,
        runs8 = 1,
        runs4 = 2,
        masks = 3,
        masksWithAlpha = 6,
    };

    /// One colour's bits in a pixel.
    struct Mask {
        std::uint32_t bits = 0;

        [[nodiscard]] std::uint8_t in(std::uint32_t pixel) const {
            if (bits == 0) return 0;
            const auto shift = static_cast<unsigned>(std::countr_zero(bits));
            return static_cast<std::uint8_t>(std::uint64_t{(pixel & bits) >> shift} * 255 / (bits >> shift));
        }
    };

    std::size_t width = 0;
    std::size_t height = 0;
    /// Rows are stored from the bottom, unless the height was negative.
    bool isTopDown = false;
    /// Of a pixel.
    std::uint32_t bits = 0;
    Compression compression = Compression::none;
    /// All 0 where bytes are the colours.
    Mask red;
    Mask green;
    Mask blue;
    /// 0 where there is no alpha value.
    Mask alpha;
    /// Of the palette: where it begins in the file, how many colours it has, the bytes of each.
    std::uint32_t palette = 0;
    std::uint32_t colours = 0;
    std::uint32_t colourBytes = 4;
    /// Where they begin in the file.
    std::uint32_t pixels = 0;

    [[nodiscard]] bool hasPalette() const { return bits <= 8; }
    [[nodiscard]] bool hasRuns() const {
        return compression == Compression::runs8 || compression == Compression::runs4;
    }
    [[nodiscard]] bool hasMasks() const { return (red.bits | green.bits | blue.bits) != 0; }
    /// Where the row stands in the picture that is the `row`th in the file.
    [[nodiscard]] std::size_t placeOf(std::size_t row) const { return isTopDown ? row : height - 1 - row; }
};

/// Nil when it is of no form that is known. How large the picture is isn't looked at.
[[nodiscard]] std::optional<BMPHeader> readBMPHeader(PictureInput& input);

}  // namespace tavrin
