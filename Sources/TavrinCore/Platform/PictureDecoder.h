// Any picture file as a thumbnail, grey or in colours.
//
// Files come from anywhere and may be broken, cut off or made to hurt. What a picture claims about its size is checked
// before anything is decoded; one that isn't whole is no picture; and what is held in memory hardly depends on its
// size.
#pragma once

#include "TavrinCore/Models/GreyPicture.h"
#include "TavrinCore/Models/Models.h"
#include "TavrinCore/Models/RGBAPicture.h"
#include "TavrinCore/Platform/FileReader.h"

#include <cstddef>
#include <cstdint>
#include <optional>

namespace tavrin {

/// The longest side of a grey thumbnail, in pixels.
inline constexpr std::size_t kThumbnailSide = 64;
/// Its width is a multiple of the one and its height of the other, once it has as many pixels: so it can be squeezed to
/// 9 by 8 without cutting a pixel, which moved bits of hashes.
inline constexpr std::size_t kThumbnailColumns = 9;
inline constexpr std::size_t kThumbnailRows = 8;

/// The first picture in the file, upright (the stored orientation is applied), made from the full picture and never
/// from a thumbnail that lies in the file, at most kThumbnailSide on its longest side and never enlarged. What is
/// transparent is black.
///
/// JPEG, PNG, GIF, TIFF, BMP, WebP and HEIF, whatever the file is called. Nil for everything else, for a picture that
/// is broken, cut off or too large, and once cancelled. Safe from any thread.
[[nodiscard]] std::optional<GreyPicture> decodeThumbnail(FileReader& file,
                                                         const CancellationCallback& isCancelled = neverCancelled);

/// What is wanted of a picture in colours.
struct PictureForm {
    enum class Shape : std::uint8_t {
        /// All of it.
        whole,
        /// The square in its middle.
        square,
    };

    /// The most pixels on any side, at least 1. A smaller picture isn't enlarged.
    std::size_t side = 1;
    Shape shape = Shape::whole;
};

/// The same in colours, which are taken for sRGB whatever profile the file holds, and with its alpha values. Besides
/// what a codec holds it takes the memory of its result, or of twice that for one that must be turned.
[[nodiscard]] std::optional<RGBAPicture> decodePicture(FileReader& file, const PictureForm& form,
                                                       const CancellationCallback& isCancelled = neverCancelled);

/// Whether the file begins as one of these formats, and so is for nobody else to decode.
[[nodiscard]] bool isPictureOfKnownFormat(FileReader& file);

}  // namespace tavrin
