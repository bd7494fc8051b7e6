// Any picture file as a thumbnail.
//
// Files come from anywhere and may be broken, cut off or made to hurt. What a picture claims about its size is checked
// before anything is decoded; one that isn't whole is no picture; and what is held in memory hardly depends on its
// size.
#pragma once

#include "TavrinCore/Models/GreyPicture.h"
#include "TavrinCore/Models/Models.h"
#include "TavrinCore/Platform/FileReader.h"

#include <cstddef>
#include <optional>

namespace tavrin {

/// The longest side of a thumbnail, in pixels.
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

}  // namespace tavrin
