// The codecs' own libraries, one by one. A library over them all would bring ImageMagick and some sixty packages more
// onto a user's machine, decode JPEG slower than libjpeg-turbo alone, and let nobody look at a header first.
#include "TavrinCore/Platform/PictureDecoder.h"

#include "TavrinCore/Platform/Linux/Pictures/ColourShrinker.h"
#include "TavrinCore/Platform/Linux/Pictures/GreyShrinker.h"
#include "TavrinCore/Platform/Linux/Pictures/PictureCodecs.h"

#include <array>
#include <string_view>

namespace tavrin {
namespace {

using Codec = bool (*)(PictureInput& input, PictureSink& sink);

/// The most pixels there may be, each of eight bytes, and room for what is said about them. What is longer, hardly any
/// of it on the disk perhaps, would be searched for the next piece of a picture to its far end.
constexpr std::uint64_t kMostBytes = std::uint64_t{2} << 30U;

/// By what stands in the file: many a picture bears the extension of another format. Null for what is none of them. The
/// input is at its beginning before and after.
Codec codecOf(PictureInput& input) {
    std::array<char, 12> bytes{};
    const std::string_view begin(bytes.data(), input.read(bytes.data(), bytes.size()));
    input.seek(0);
    if (begin.size() < bytes.size()) return nullptr;
    if (begin.starts_with("\xff\xd8")) return readJPEG;
    if (begin.starts_with("\x89PNG\r\n\x1a\n")) return readPNG;
    if (begin.starts_with("GIF8")) return readGIF;
    if (begin.starts_with("RIFF") && begin.substr(8) == "WEBP") return readWebP;
    if (begin.substr(4, 4) == "ftyp") return readHEIF;
    if (begin.starts_with("II*") || begin.starts_with("II+") || begin.starts_with(std::string_view("MM\0", 3)))
        return readTIFF;
    if (begin.starts_with("BM")) return readBMP;
    return nullptr;
}

bool decodeInto(PictureSink& sink, FileReader& file, const CancellationCallback& isCancelled) {
    PictureInput input(file, isCancelled);
    if (input.size() > kMostBytes) return false;
    const Codec codec = codecOf(input);
    return codec != nullptr && codec(input, sink);
}

}  // namespace

std::optional<GreyPicture> decodeThumbnail(FileReader& file, const CancellationCallback& isCancelled) {
    GreyShrinker shrinker;
    if (!decodeInto(shrinker, file, isCancelled)) return std::nullopt;
    return shrinker.thumbnail();
}

std::optional<RGBAPicture> decodePicture(FileReader& file, const PictureForm& form,
                                         const CancellationCallback& isCancelled) {
    ColourShrinker shrinker(form);
    if (!decodeInto(shrinker, file, isCancelled)) return std::nullopt;
    return shrinker.picture();
}

bool isPictureOfKnownFormat(FileReader& file) {
    const CancellationCallback isCancelled = neverCancelled;
    PictureInput input(file, isCancelled);
    return codecOf(input) != nullptr;
}

}  // namespace tavrin
