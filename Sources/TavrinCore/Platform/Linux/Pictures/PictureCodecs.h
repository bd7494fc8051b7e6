// One reader for each format: a thumbnail of the file's first picture, nil when it isn't one that can be read whole.
#pragma once

#include "TavrinCore/Models/GreyPicture.h"
#include "TavrinCore/Platform/Linux/Pictures/PictureInput.h"

#include <optional>

namespace tavrin {

// All of them begin at the position of the input, which is the beginning of the file.
[[nodiscard]] std::optional<GreyPicture> readBMP(PictureInput& input);
[[nodiscard]] std::optional<GreyPicture> readGIF(PictureInput& input);
[[nodiscard]] std::optional<GreyPicture> readHEIF(PictureInput& input);
[[nodiscard]] std::optional<GreyPicture> readJPEG(PictureInput& input);
[[nodiscard]] std::optional<GreyPicture> readPNG(PictureInput& input);
[[nodiscard]] std::optional<GreyPicture> readTIFF(PictureInput& input);
[[nodiscard]] std::optional<GreyPicture> readWebP(PictureInput& input);

}  // namespace tavrin
