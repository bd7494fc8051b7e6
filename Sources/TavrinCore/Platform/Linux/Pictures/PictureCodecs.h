// One reader for each format, of the file's first picture.
#pragma once

#include "TavrinCore/Platform/Linux/Pictures/PictureInput.h"
#include "TavrinCore/Platform/Linux/Pictures/PictureSink.h"

namespace tavrin {

// All of them begin at the position of the input, which is the beginning of the file. False when it holds no picture
// that can be read whole, and once cancelled; what the sink was given until then is worth nothing.
[[nodiscard]] bool readBMP(PictureInput& input, PictureSink& sink);
[[nodiscard]] bool readGIF(PictureInput& input, PictureSink& sink);
[[nodiscard]] bool readHEIF(PictureInput& input, PictureSink& sink);
[[nodiscard]] bool readJPEG(PictureInput& input, PictureSink& sink);
[[nodiscard]] bool readPNG(PictureInput& input, PictureSink& sink);
[[nodiscard]] bool readTIFF(PictureInput& input, PictureSink& sink);
[[nodiscard]] bool readWebP(PictureInput& input, PictureSink& sink);

}  // namespace tavrin
