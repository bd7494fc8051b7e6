// The codecs' own libraries, one by one. A library over them all would bring ImageMagick and some sixty packages more
// onto a user's machine, decode JPEG slower than libjpeg-turbo alone, and let nobody look at a header first.
#include "TavrinCore/Platform/PictureDecoder.h"

#include "TavrinCore/Platform/Linux/Pictures/PictureCodecs.h"

#include <array>
#include <string_view>

namespace tavrin {

std::optional<GreyPicture> decodeThumbnail(FileReader& file, const CancellationCallback& isCancelled) {
    PictureInput input(file, isCancelled);
    std::array<char, 12> bytes{};
    const std::string_view begin(bytes.data(), input.read(bytes.data(), bytes.size()));
    if (begin.size() < bytes.size()) return std::nullopt;
    input.seek(0);
    // By what stands in the file: many a picture bears the extension of another format.
    if (begin.starts_with("\xff\xd8\xff")) return readJPEG(input);
    if (begin.starts_with("\x89PNG\r\n\x1a\n")) return readPNG(input);
    if (begin.starts_with("GIF8")) return readGIF(input);
    if (begin.starts_with("RIFF") && begin.substr(8) == "WEBP") return readWebP(input);
    if (begin.substr(4, 4) == "ftyp") return readHEIF(input);
    if (begin.starts_with("II*") || begin.starts_with("II+") || begin.starts_with(std::string_view("MM\0", 3)))
        return readTIFF(input);
    if (begin.starts_with("BM")) return readBMP(input);
    return std::nullopt;
}

}  // namespace tavrin
