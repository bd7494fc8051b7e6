// Pictures from the disk, read with the distrust that files of strangers deserve.
#pragma once

#include "TavrinCore/Models/URL.h"

#include <QImage>
#include <QSize>

class QIODevice;

namespace tavrin {

/// What a picture may claim to measure. A picture that must be decoded whole before any of it can be shown holds
/// several times its size in memory, so less of it is allowed.
inline constexpr std::int64_t pixelCap = 150'000'000;
inline constexpr std::int64_t interlacedPixelCap = 40'000'000;

/// Whether a picture of that size is decoded at all.
[[nodiscard]] bool isWithinCaps(QSize size, bool comesInPasses);

/// Whether the PNG or JPEG at the position of `device`, which stays there, says in its header that it is interlaced or
/// progressive.
[[nodiscard]] bool comesInPasses(QIODevice& device);

/// The picture in `url`, the right way up and scaled down (never up) to fit into `bounds`, or to fill them where `mode`
/// says so; null when it is no picture, is broken, isn't a regular file, or claims more pixels than the caps allow,
/// which its header tells before anything is decoded. Blocks: call it off the main thread.
[[nodiscard]] QImage readPicture(const URL& url, QSize bounds, Qt::AspectRatioMode mode = Qt::KeepAspectRatio);

/// The middle of `picture` as a square of `side` pixels, its corners rounded by `cornerShare` of the side.
[[nodiscard]] QImage roundedSquare(const QImage& picture, int side, double cornerShare);

}  // namespace tavrin
