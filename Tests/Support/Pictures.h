// Pictures for tests: scenes drawn from a number, and files of them in every format that the program reads.
#pragma once

#include <cstddef>
#include <cstdint>
#include <map>
#include <string>
#include <vector>

namespace tavrin::test {

/// Three bytes a pixel, row by row from the top.
struct ColourPicture {
    std::size_t width = 0;
    std::size_t height = 0;
    std::vector<std::uint8_t> rgb = {};

    [[nodiscard]] std::uint8_t* at(std::size_t x, std::size_t y) { return rgb.data() + 3 * (y * width + x); }
    [[nodiscard]] const std::uint8_t* at(std::size_t x, std::size_t y) const {
        return rgb.data() + 3 * (y * width + x);
    }
};

/// Something like a photograph: light from one side, hills of noise, shapes before them, grain. The same for the same
/// number, another for any other.
[[nodiscard]] ColourPicture drawnScene(unsigned number, std::size_t width, std::size_t height);
[[nodiscard]] ColourPicture uniform(std::uint8_t grey, std::size_t width, std::size_t height);
/// As seen by a camera that was held so: what an upright picture looks like where Exif's orientation says 1 to 8.
[[nodiscard]] ColourPicture storedFor(unsigned orientation, const ColourPicture& upright);
/// By the mean of each square of `factor` pixels.
[[nodiscard]] ColourPicture shrunk(const ColourPicture& picture, std::size_t factor);

struct JPEGForm {
    int quality = 90;
    bool isProgressive = false;
    bool isGrey = false;
    bool isFourInks = false;
    /// 0: no Exif data.
    unsigned orientation = 0;
    int restartRows = 0;
};
[[nodiscard]] std::string asJPEG(const ColourPicture& picture, const JPEGForm& form = {});
/// Every pixel decoded, without scaling. The plainest way to read one.
[[nodiscard]] ColourPicture plainlyDecoded(const std::string& jpeg);

struct PNGForm {
    bool isInterlaced = false;
    bool is16Bit = false;
    bool isGrey = false;
    /// 255: no alpha channel; else one of this value.
    std::uint8_t alpha = 255;
    unsigned orientation = 0;
    /// Else the file is large, and quickly written and read.
    bool isPacked = true;
};
[[nodiscard]] std::string asPNG(const ColourPicture& picture, const PNGForm& form = {});

struct TIFFForm {
    std::uint32_t rowsPerStrip = 16;
    /// 0: strips.
    std::uint32_t tileSide = 0;
    std::uint16_t compression = 5;  // LZW
    std::uint16_t orientation = 1;
    /// These of strips only.
    bool is16Bit = false;
    bool isFourInks = false;
};
[[nodiscard]] std::string asTIFF(const ColourPicture& picture, const TIFFForm& form = {});

/// In 252 greys and colours; the frame may stand inside of a larger canvas.
struct GIFForm {
    bool isInterlaced = false;
    std::size_t canvasWidth = 0;
    std::size_t canvasHeight = 0;
    std::size_t left = 0;
    std::size_t top = 0;
};
[[nodiscard]] std::string asGIF(const ColourPicture& picture, const GIFForm& form = {});

enum class BMPForm : std::uint8_t {
    core24,
    rgb24,
    topDown32,
    masks16,
    grey8,
    runs8,
};
[[nodiscard]] std::string asBMP(const ColourPicture& picture, BMPForm form = BMPForm::rgb24);

struct WebPForm {
    bool isLossless = false;
    /// 0: no Exif data.
    unsigned orientation = 0;
};
[[nodiscard]] std::string asWebP(const ColourPicture& picture, const WebPForm& form = {});

enum class HEICColours : std::uint8_t {
    /// All values are used, by the matrix of JPEG.
    usual,
    /// Values from 16 to 235, by that of high-definition television (ITU-R BT.709).
    video,
};
/// As the file says it without Exif data: by what is to be turned and mirrored.
[[nodiscard]] std::string asHEIC(const ColourPicture& picture, unsigned orientation = 1,
                                 HEICColours colours = HEICColours::usual);
/// As telephones write them: a grid of tiles, here of the same one over and over.
[[nodiscard]] std::string asTiledHEIC(const ColourPicture& tile, std::uint16_t columns, std::uint16_t rows);

/// A file of each, by the name of the format.
[[nodiscard]] std::map<std::string, std::string> inEveryFormat(const ColourPicture& picture);

}  // namespace tavrin::test
