#include "Support/Pictures.h"
#include "Support/PretendedFile.h"
#include "TavrinCore/Platform/PictureDecoder.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <string>
#include <vector>

namespace tavrin {
namespace {

using test::BMPForm;
using test::ColourPicture;
using test::drawnScene;
using test::inEveryFormat;
using test::PretendedFile;

std::optional<GreyPicture> decoded(const std::string& bytes) {
    const PretendedFile file{.bytes = bytes};
    return decodeThumbnail(*file.open());
}

std::optional<RGBAPicture> inColours(const std::string& bytes) {
    const PretendedFile file{.bytes = bytes};
    return decodePicture(*file.open(), {.side = 120});
}

/// The thumbnail as the picture itself would give it: the mean of all that each pixel covers.
GreyPicture plainThumbnail(const ColourPicture& picture) {
    GreyPicture grey{.width = picture.width, .height = picture.height, .pixels = {}};
    for (std::size_t i = 0; i < picture.rgb.size(); i += 3)
        grey.pixels.push_back(0.299F * picture.rgb[i] + 0.587F * picture.rgb[i + 1] + 0.114F * picture.rgb[i + 2]);
    const auto longest = static_cast<double>(std::max(picture.width, picture.height));
    const auto scaled = [&](std::size_t length, std::size_t unit) {
        const auto pixels =
            static_cast<std::size_t>(std::lround(static_cast<double>(length) * std::min(1.0, 64 / longest)));
        return pixels / unit * unit;
    };
    return grey.reducedTo(scaled(picture.width, 9), scaled(picture.height, 8));
}

double meanDifference(const GreyPicture& a, const GreyPicture& b) {
    if (a.pixels.size() != b.pixels.size()) return 1e9;
    double sum = 0;
    for (std::size_t i = 0; i < a.pixels.size(); ++i)
        sum += std::abs(a.pixels[i] - b.pixels[i]);
    return sum / static_cast<double>(a.pixels.size());
}

void expectLooksLike(const std::string& file, const ColourPicture& picture, double tolerance, const std::string& what) {
    const std::optional<GreyPicture> thumbnail = decoded(file);
    ASSERT_TRUE(thumbnail) << what << " isn't decoded";
    const GreyPicture expected = plainThumbnail(picture);
    EXPECT_EQ(thumbnail->width, expected.width) << what;
    EXPECT_EQ(thumbnail->height, expected.height) << what;
    EXPECT_LE(meanDifference(*thumbnail, expected), tolerance) << what;
}

TEST(PictureDecoder, readsEveryFormat) {
    const ColourPicture picture = drawnScene(1, 640, 480);
    for (const auto& [format, bytes] : inEveryFormat(picture))
        expectLooksLike(bytes, picture, format == "GIF" ? 8.0 : 1.5, format);
}

TEST(PictureDecoder, readsEveryFormOfJPEG) {
    const ColourPicture picture = drawnScene(2, 1'200, 803);
    expectLooksLike(test::asJPEG(picture, {.isGrey = true}), picture, 1, "grey");
    expectLooksLike(test::asJPEG(picture, {.isProgressive = true, .isGrey = true}), picture, 1.5, "grey, progressive");
    expectLooksLike(test::asJPEG(picture, {.isFourInks = true}), picture, 1.5, "four inks");
    expectLooksLike(test::asJPEG(picture, {.isProgressive = true, .isFourInks = true}), picture, 1.5,
                    "four inks, progressive");
    expectLooksLike(test::asJPEG(picture, {.quality = 40, .restartRows = 1}), picture, 3, "restarts");
    expectLooksLike(test::asJPEG(picture) + std::string(5'000, 'x'), picture, 1, "something behind it");
    expectLooksLike(test::asJPEG(picture, {.isProgressive = true}) + std::string(5'000, 'x'), picture, 1.5,
                    "progressive, something behind it");
}

TEST(PictureDecoder, readsEveryFormOfPNG) {
    const ColourPicture picture = drawnScene(3, 301, 203);
    for (const bool isInterlaced : {false, true}) {
        for (const bool is16Bit : {false, true}) {
            for (const bool isGrey : {false, true})
                expectLooksLike(
                    test::asPNG(picture, {.isInterlaced = isInterlaced, .is16Bit = is16Bit, .isGrey = isGrey}), picture,
                    1, "PNG");
        }
    }
}

TEST(PictureDecoder, readsEveryFormOfTIFF) {
    const ColourPicture picture = drawnScene(4, 333, 222);
    expectLooksLike(test::asTIFF(picture, {.rowsPerStrip = 1'000}), picture, 1, "one strip");
    expectLooksLike(test::asTIFF(picture, {.rowsPerStrip = 7}), picture, 1, "odd strips");
    expectLooksLike(test::asTIFF(picture, {.tileSide = 64}), picture, 1, "tiles");
    expectLooksLike(test::asTIFF(picture, {.compression = 1}), picture, 1, "uncompressed");
    expectLooksLike(test::asTIFF(picture, {.rowsPerStrip = 1'000, .compression = 8}), picture, 1, "deflated");
}

TEST(PictureDecoder, readsEveryFormOfBMP) {
    const ColourPicture picture = drawnScene(5, 123, 77);
    for (const BMPForm form :
         {BMPForm::core24, BMPForm::rgb24, BMPForm::topDown32, BMPForm::masks16, BMPForm::grey8, BMPForm::runs8})
        expectLooksLike(test::asBMP(picture, form), picture, form == BMPForm::masks16 ? 3.0 : 1.0,
                        "form " + std::to_string(static_cast<int>(form)));
}

TEST(PictureDecoder, aBMPWithMasksOfNothingIsBlack) {
    std::string bytes = test::asBMP(drawnScene(5, 63, 1), BMPForm::masks16);
    bytes.replace(14 + 40, 12, 12, '\0');
    const std::optional<GreyPicture> black = decoded(bytes);
    ASSERT_TRUE(black);
    EXPECT_EQ(black->pixels, std::vector<float>(63, 0));
}

TEST(PictureDecoder, putsAGIFsFrameOnItsCanvas) {
    const ColourPicture picture = drawnScene(6, 100, 60);
    expectLooksLike(test::asGIF(picture, {.isInterlaced = true}), picture, 8, "interlaced");
    ColourPicture canvas = test::uniform(0, 160, 120);
    for (std::size_t y = 0; y < 60; ++y)
        std::copy_n(picture.at(0, y), 300, canvas.at(20, y + 30));
    expectLooksLike(test::asGIF(picture, {.canvasWidth = 160, .canvasHeight = 120, .left = 20, .top = 30}), canvas, 8,
                    "on a canvas");
}

TEST(PictureDecoder, putsTheTilesOfAHEICTogether) {
    const ColourPicture tile = drawnScene(14, 128, 64);
    ColourPicture whole = test::uniform(0, 384, 128);
    for (std::size_t y = 0; y < whole.height; ++y) {
        for (std::size_t x = 0; x < whole.width; x += tile.width)
            std::copy_n(tile.at(0, y % tile.height), 3 * tile.width, whole.at(x, y));
    }
    expectLooksLike(test::asTiledHEIC(tile, 3, 2), whole, 1.5, "three columns of two");
}

TEST(PictureDecoder, appliesTheStoredOrientation) {
    const ColourPicture upright = drawnScene(7, 320, 200);
    for (unsigned orientation = 1; orientation <= 8; ++orientation) {
        const ColourPicture stored = test::storedFor(orientation, upright);
        const std::string which = "orientation " + std::to_string(orientation);
        expectLooksLike(test::asJPEG(stored, {.orientation = orientation}), upright, 1, "JPEG, " + which);
        expectLooksLike(test::asPNG(stored, {.orientation = orientation}), upright, 1, "PNG, " + which);
        expectLooksLike(test::asTIFF(stored, {.orientation = static_cast<std::uint16_t>(orientation)}), upright, 1,
                        "TIFF, " + which);
        expectLooksLike(test::asWebP(stored, {.orientation = orientation}), upright, 1.5, "WebP, " + which);
        expectLooksLike(test::asHEIC(stored, orientation), upright, 1.5, "HEIC, " + which);
    }
}

TEST(PictureDecoder, whatIsTransparentIsBlack) {
    const ColourPicture white = test::uniform(255, 80, 60);
    const std::optional<GreyPicture> half = decoded(test::asPNG(white, {.alpha = 128}));
    const std::optional<GreyPicture> none = decoded(test::asPNG(white, {.isGrey = true, .alpha = 0}));
    ASSERT_TRUE(half && none);
    EXPECT_EQ(half->pixels, std::vector<float>(63 * 48, 128));
    EXPECT_EQ(none->pixels, std::vector<float>(63 * 48, 0));
}

TEST(PictureDecoder, neverEnlargesAndKeepsAtLeastOnePixel) {
    for (const auto& [format, bytes] : inEveryFormat(drawnScene(8, 40, 20))) {
        const std::optional<GreyPicture> small = decoded(bytes);
        ASSERT_TRUE(small) << format;
        EXPECT_EQ(small->width, 36U) << format;
        EXPECT_EQ(small->height, 16U) << format;
    }
    const std::optional<GreyPicture> line = decoded(test::asPNG(drawnScene(8, 9'000, 2)));
    ASSERT_TRUE(line);
    EXPECT_EQ(line->width, 63U);
    EXPECT_EQ(line->height, 1U);
    EXPECT_TRUE(decoded(test::asJPEG(drawnScene(8, 3, 4'000))));
    EXPECT_TRUE(decoded(test::asPNG(drawnScene(8, 1, 1), {.isInterlaced = true})));
}

TEST(PictureDecoder, aFileIsReadByWhatStandsInItAndNotByItsName) {
    for (const std::string& bytes : {std::string(), std::string("short"), std::string(100'000, '\0'),
                                     std::string("this is only a text, and a rather long one"),
                                     std::string("\0\0\0\x18"
                                                 "ftypmp42\0\0\0\0mp42isom",
                                                 24)}) {
        EXPECT_EQ(decoded(bytes), std::nullopt);
        EXPECT_EQ(inColours(bytes), std::nullopt);
    }
}

TEST(PictureDecoder, aPictureThatIsCutOffIsNone) {
    const ColourPicture picture = drawnScene(9, 400, 300);
    for (const auto& [format, bytes] : inEveryFormat(picture)) {
        for (const double part : {0.01, 0.2, 0.5, 0.9, 0.97}) {
            const std::string begin =
                bytes.substr(0, static_cast<std::size_t>(static_cast<double>(bytes.size()) * part));
            EXPECT_EQ(decoded(begin), std::nullopt) << format << " cut at " << part;
            EXPECT_EQ(inColours(begin), std::nullopt) << format << " cut at " << part << ", in colours";
        }
    }
}

TEST(PictureDecoder, aPictureOfWhichReadingFailsIsNone) {
    for (const auto& [format, bytes] : inEveryFormat(drawnScene(10, 400, 300))) {
        const PretendedFile file{.bytes = bytes, .failsFrom = bytes.size() / 2};
        EXPECT_EQ(decodeThumbnail(*file.open()), std::nullopt) << format;
        EXPECT_EQ(decodePicture(*file.open(), {.side = 120}), std::nullopt) << format;
    }
}

TEST(PictureDecoder, doesNotDependOnTheSizeOfReads) {
    for (const auto& [format, bytes] : inEveryFormat(drawnScene(11, 200, 150))) {
        const PretendedFile file{.bytes = bytes, .mostPerRead = 7};
        EXPECT_EQ(decodeThumbnail(*file.open()), decoded(bytes)) << format;
        EXPECT_EQ(decodePicture(*file.open(), {.side = 120}), inColours(bytes)) << format;
    }
}

TEST(PictureDecoder, rubbishInTheMiddleIsNoCrash) {
    for (const auto& [format, bytes] : inEveryFormat(drawnScene(12, 200, 150))) {
        for (unsigned i = 0; i < 60; ++i) {
            std::string broken = bytes;
            const std::size_t at = (bytes.size() * i / 60 + i * 31) % bytes.size();
            for (std::size_t k = at; k < std::min(bytes.size(), at + 1 + i % 9); ++k)
                broken[k] = static_cast<char>(k * 131 + i);
            (void)decoded(broken);
            (void)inColours(broken);
        }
    }
    SUCCEED();
}

}  // namespace
}  // namespace tavrin
