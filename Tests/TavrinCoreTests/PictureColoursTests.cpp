// Pictures for the screen: in their colours, within the asked size.
#include "Support/Pictures.h"
#include "Support/PretendedFile.h"
#include "TavrinCore/Platform/PictureDecoder.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <string>
#include <vector>

namespace tavrin {
namespace {

using test::BMPForm;
using test::ColourPicture;
using test::drawnScene;
using test::PretendedFile;
using Shape = PictureForm::Shape;

constexpr std::size_t kAll = 4'096;

std::optional<RGBAPicture> decoded(const std::string& bytes, const PictureForm& form = {.side = kAll}) {
    const PretendedFile file{.bytes = bytes};
    return decodePicture(*file.open(), form);
}

RGBAPicture opaque(const ColourPicture& picture) {
    RGBAPicture result{.width = picture.width, .height = picture.height};
    for (std::size_t i = 0; i < picture.rgb.size(); ++i) {
        result.pixels.push_back(picture.rgb[i]);
        if (i % 3 == 2) result.pixels.push_back(255);
    }
    return result;
}

ColourPicture part(const ColourPicture& picture, std::size_t left, std::size_t top, std::size_t side) {
    ColourPicture result = test::uniform(0, side, side);
    for (std::size_t y = 0; y < side; ++y)
        std::copy_n(picture.at(left, top + y), 3 * side, result.at(0, y));
    return result;
}

/// The mean over all samples.
double difference(const RGBAPicture& a, const RGBAPicture& b) {
    if (a.width != b.width || a.height != b.height) return 1e9;
    double sum = 0;
    for (std::size_t i = 0; i < a.pixels.size(); ++i)
        sum += std::abs(int{a.pixels[i]} - int{b.pixels[i]});
    return sum / static_cast<double>(a.pixels.size());
}

void expectIs(const std::string& file, const PictureForm& form, const ColourPicture& picture, double tolerance,
              const std::string& what) {
    const std::optional<RGBAPicture> shown = decoded(file, form);
    ASSERT_TRUE(shown) << what << " isn't decoded";
    EXPECT_EQ(shown->width, picture.width) << what;
    EXPECT_EQ(shown->height, picture.height) << what;
    EXPECT_LE(difference(*shown, opaque(picture)), tolerance) << what;
}

/// The tests' own GIFs have 252 colours.
double toleranceFor(const std::string& format) {
    return format == "GIF" ? 14 : format.starts_with("lossless") ? 0.6 : 2.5;
}

TEST(PictureColours, everyFormatIsShownInItsColours) {
    const ColourPicture picture = drawnScene(21, 640, 480);
    for (const auto& [format, bytes] : test::inEveryFormat(picture)) {
        expectIs(bytes, {.side = 160}, test::shrunk(picture, 4), toleranceFor(format), format + ", small");
        expectIs(bytes, {.side = kAll}, picture, toleranceFor(format), format + ", at its own size");
    }
}

TEST(PictureColours, whatIsStoredExactlyIsShownExactly) {
    const ColourPicture picture = drawnScene(22, 301, 203);
    const PictureForm all{.side = 301};
    for (const bool isInterlaced : {false, true}) {
        for (const bool is16Bit : {false, true})
            expectIs(test::asPNG(picture, {.isInterlaced = isInterlaced, .is16Bit = is16Bit}), all, picture, 0, "PNG");
    }
    expectIs(test::asTIFF(picture, {.rowsPerStrip = 7}), all, picture, 0, "strips");
    expectIs(test::asTIFF(picture, {.tileSide = 64}), all, picture, 0, "tiles");
    expectIs(test::asTIFF(picture, {.is16Bit = true}), all, picture, 1, "16 bits");
    expectIs(test::asTIFF(picture, {.isFourInks = true}), all, picture, 1, "a TIFF of four inks");
    expectIs(test::asWebP(picture, {.isLossless = true}), all, picture, 0, "WebP");
    for (const BMPForm form : {BMPForm::core24, BMPForm::rgb24, BMPForm::topDown32})
        expectIs(test::asBMP(picture, form), all, picture, 0, "BMP");
    expectIs(test::asBMP(picture, BMPForm::masks16), all, picture, 3, "BMP of 16 bits");
}

TEST(PictureColours, greyPicturesAndInksAreShown) {
    const ColourPicture picture = drawnScene(23, 400, 304);
    ColourPicture grey = picture;
    for (std::size_t i = 0; i < grey.rgb.size(); i += 3)
        std::fill_n(grey.rgb.begin() + static_cast<std::ptrdiff_t>(i), 3,
                    static_cast<std::uint8_t>(
                        std::lround(0.299 * grey.rgb[i] + 0.587 * grey.rgb[i + 1] + 0.114 * grey.rgb[i + 2])));
    expectIs(test::asPNG(picture, {.isGrey = true}), {.side = 400}, grey, 1, "grey PNG");
    expectIs(test::asJPEG(picture, {.isGrey = true}), {.side = 400}, grey, 2, "grey JPEG");
    expectIs(test::asJPEG(picture, {.isProgressive = true, .isGrey = true}), {.side = 50}, test::shrunk(grey, 8), 2,
             "small grey JPEG");
    for (const BMPForm form : {BMPForm::grey8, BMPForm::runs8})
        expectIs(test::asBMP(picture, form), {.side = 400}, grey, 1, "grey BMP");
    for (const bool isProgressive : {false, true})
        expectIs(test::asJPEG(picture, {.isProgressive = isProgressive, .isFourInks = true}), {.side = 100},
                 test::shrunk(picture, 4), 2.5, "inks");
}

TEST(PictureColours, aVideosFormOfHEICHasTheSameColours) {
    const ColourPicture picture = drawnScene(24, 320, 240);
    expectIs(test::asHEIC(picture, 1, test::HEICColours::video), {.side = 80}, test::shrunk(picture, 4), 3, "HEIC");
}

TEST(PictureColours, aPictureIsScaledDownToTheAskedSideAndNeverUp) {
    const std::string wide = test::asPNG(drawnScene(25, 300, 100));
    const auto sizeOf = [](const std::optional<RGBAPicture>& picture) {
        return picture ? std::pair(picture->width, picture->height) : std::pair<std::size_t, std::size_t>();
    };
    using Size = std::pair<std::size_t, std::size_t>;
    EXPECT_EQ(sizeOf(decoded(wide, {.side = 60})), Size(60, 20));
    EXPECT_EQ(sizeOf(decoded(wide, {.side = 900})), Size(300, 100));
    EXPECT_EQ(sizeOf(decoded(wide, {.side = 60, .shape = Shape::square})), Size(60, 60));
    EXPECT_EQ(sizeOf(decoded(wide, {.side = 900, .shape = Shape::square})), Size(100, 100));
    EXPECT_EQ(sizeOf(decoded(wide, {.side = 1})), Size(1, 1));
    const std::string line = test::asPNG(drawnScene(25, 9'000, 2));
    EXPECT_EQ(sizeOf(decoded(line, {.side = 64})), Size(64, 1));
    EXPECT_EQ(sizeOf(decoded(line, {.side = 64, .shape = Shape::square})), Size(2, 2));
    for (const auto& [format, bytes] : test::inEveryFormat(drawnScene(25, 333, 127))) {
        for (const std::size_t side : {7U, 41U, 90U, 127U, 200U, 332U}) {
            EXPECT_EQ(decoded(bytes, {.side = side}).value_or(RGBAPicture()).width, side) << format;
            EXPECT_EQ(sizeOf(decoded(bytes, {.side = side, .shape = Shape::square})),
                      Size(std::min<std::size_t>(side, 127), std::min<std::size_t>(side, 127)))
                << format;
        }
    }
}

TEST(PictureColours, aSquareIsTheMiddleOfThePicture) {
    const ColourPicture wide = drawnScene(26, 640, 320);
    const ColourPicture high = test::storedFor(6, wide);
    for (const auto& [format, bytes] : test::inEveryFormat(wide))
        expectIs(bytes, {.side = 80, .shape = Shape::square}, test::shrunk(part(wide, 160, 0, 320), 4),
                 toleranceFor(format), format);
    for (const auto& [format, bytes] : test::inEveryFormat(high))
        expectIs(bytes, {.side = 80, .shape = Shape::square}, test::shrunk(part(high, 0, 160, 320), 4),
                 toleranceFor(format), format + ", high");
}

TEST(PictureColours, eachPixelIsTheMeanOfWhatItCovers) {
    // Three columns in two: the one in the middle is shared.
    ColourPicture picture = test::uniform(0, 3, 3);
    for (std::size_t y = 0; y < 3; ++y) {
        *picture.at(0, y) = 90;
        *picture.at(2, y) = 210;
    }
    const std::optional<RGBAPicture> small = decoded(test::asPNG(picture), {.side = 2});
    ASSERT_TRUE(small);
    EXPECT_EQ(small->pixels, (std::vector<std::uint8_t>{60, 0, 0, 255, 140, 0, 0, 255, 60, 0, 0, 255, 140, 0, 0, 255}));
}

TEST(PictureColours, theStoredOrientationIsApplied) {
    const ColourPicture upright = drawnScene(27, 320, 200);
    for (unsigned orientation = 1; orientation <= 8; ++orientation) {
        const ColourPicture stored = test::storedFor(orientation, upright);
        const ColourPicture small = test::shrunk(upright, 2);
        const std::string which = "orientation " + std::to_string(orientation);
        expectIs(test::asJPEG(stored, {.orientation = orientation}), {.side = 160}, small, 2.5, "JPEG, " + which);
        expectIs(test::asPNG(stored, {.orientation = orientation}), {.side = 160}, small, 0.6, "PNG, " + which);
        expectIs(test::asTIFF(stored, {.orientation = static_cast<std::uint16_t>(orientation)}), {.side = 160}, small,
                 0.6, "TIFF, " + which);
        expectIs(test::asWebP(stored, {.orientation = orientation}), {.side = 160}, small, 2.5, "WebP, " + which);
        expectIs(test::asHEIC(stored, orientation), {.side = 160}, small, 2.5, "HEIC, " + which);
    }
}

TEST(PictureColours, whatIsTransparentStaysSo) {
    const ColourPicture white = test::uniform(255, 80, 60);
    for (const bool isGrey : {false, true}) {
        for (const unsigned alpha : {0U, 128U}) {
            const auto value = static_cast<std::uint8_t>(alpha);
            const std::optional<RGBAPicture> shown =
                decoded(test::asPNG(white, {.isGrey = isGrey, .alpha = value}), {.side = 8});
            ASSERT_TRUE(shown);
            EXPECT_EQ(shown->pixels, std::vector<std::uint8_t>(4 * 8 * 6, value));
        }
    }
    const std::string canvas = test::asGIF(white, {.canvasWidth = 100, .canvasHeight = 60, .left = 20});
    const std::optional<RGBAPicture> shown = decoded(canvas, {.side = 5});
    ASSERT_TRUE(shown);
    EXPECT_EQ(std::vector(shown->pixels.begin(), shown->pixels.begin() + 4), std::vector<std::uint8_t>(4, 0));
    EXPECT_GT(shown->pixels[4], 200);
    EXPECT_EQ(shown->pixels[7], 255);
}

TEST(PictureColours, theClearColourOfAGIFIsTransparent) {
    const std::string black = test::asGIF(test::uniform(0, 4, 4));
    constexpr std::size_t frame = 13 + 256 * 3;
    ASSERT_EQ(black[frame], ',');
    const auto withClear = [&black](char number) {
        std::string bytes = black;
        return bytes.insert(frame, std::string("!\xf9\x04\x01\0\0", 6) + number + '\0');
    };
    EXPECT_EQ(decoded(withClear(0))->pixels, std::vector<std::uint8_t>(4 * 16, 0));
    EXPECT_EQ(decoded(withClear(1))->pixels, opaque(test::uniform(0, 4, 4)).pixels);
}

TEST(PictureColours, theAlphaValuesOfABMPAreThoseOfItsMask) {
    std::string bytes = test::asBMP(test::uniform(200, 4, 4), BMPForm::topDown32);
    for (std::size_t i = 0; i < 16; ++i)
        bytes[54 + 4 * i + 3] = 51;
    EXPECT_EQ(decoded(bytes)->pixels, opaque(test::uniform(200, 4, 4)).pixels) << "without a mask there are none";
    const std::string masks("\0\0\xff\0\0\xff\0\0\xff\0\0\0\0\0\0\xff", 16);
    bytes.insert(54, masks);
    bytes[10] = static_cast<char>(54 + masks.size());
    bytes[30] = 6;
    EXPECT_EQ(decoded(bytes)->pixels[0], 40);
    EXPECT_EQ(decoded(bytes)->pixels[3], 51);
}

TEST(PictureColours, aFileIsKnownByWhatStandsInItHoweverBroken) {
    const auto isKnown = [](const std::string& bytes) {
        const PretendedFile file{.bytes = bytes};
        return isPictureOfKnownFormat(*file.open());
    };
    for (const auto& [format, bytes] : test::inEveryFormat(drawnScene(28, 40, 30)))
        EXPECT_TRUE(isKnown(bytes.substr(0, 30))) << format;
    EXPECT_FALSE(isKnown("P6 40 30 255 and so on"));
    EXPECT_FALSE(isKnown("\xff\xd8\xff"));
    EXPECT_FALSE(isKnown(""));
}

}  // namespace
}  // namespace tavrin
