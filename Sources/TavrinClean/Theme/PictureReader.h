// Pictures from the disk, for lists and the preview.
#pragma once

#include "TavrinCore/Models/URL.h"
#include "TavrinCore/Platform/PictureDecoder.h"

#include <QImage>

namespace tavrin {

/// The picture in `url`, the right way up, in that form; null when it is no picture, is broken, isn't a regular file,
/// or is larger than what is decoded of files that come from anywhere, and once cancelled. Blocks: call it off the main
/// thread.
///
/// The core decodes all formats that it knows. What the toolkit knows beside them, icons and drawings mostly, it reads
/// itself within its own limit of memory; there a square form is filled by the whole picture and not cut.
[[nodiscard]] QImage readPicture(const URL& url, const PictureForm& form,
                                 const CancellationCallback& isCancelled = neverCancelled);

/// The middle of `picture` as a square of `side` pixels, its corners rounded by `cornerShare` of the side.
[[nodiscard]] QImage roundedSquare(const QImage& picture, int side, double cornerShare);

}  // namespace tavrin
