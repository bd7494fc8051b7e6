// Pictures that were made to hurt.
#include "PictureWays.h"
#include "Support/Pictures.h"
#include "Support/PretendedFile.h"
#include "Support/TestFolder.h"
#include "TavrinCore/Platform/PictureDecoder.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <filesystem>
#include <fstream>
#include <functional>
#include <memory>
#include <string>
#include <vector>

namespace tavrin {
namespace {

using test::PretendedFile;

std::string bigEndian(std::uint32_t value) {
    return {static_cast<char>(value >> 24U), static_cast<char>(value >> 16U), static_cast<char>(value >> 8U),
            static_cast<char>(value)};
}

/// A PNG with another size in its header; the checksum is left out of the claim by computing it anew.
std::string withPNGSize(std::string png, std::uint32_t width, std::uint32_t height) {
    png.replace(16, 8, bigEndian(width) + bigEndian(height));
    std::uint32_t sum = 0xFFFFFFFFU;
    for (const char each : png.substr(12, 17)) {
        sum ^= static_cast<unsigned char>(each);
        for (int bit = 0; bit < 8; ++bit)
            sum = sum >> 1U ^ ((sum & 1U) != 0 ? 0xEDB88320U : 0U);
    }
    return png.replace(29, 4, bigEndian(~sum));
}

/// Both sides of a TIFF whose numbers are stored low byte first, in the directory that its header points to.
std::string withTIFFSize(std::string tiff, std::uint32_t side) {
    const auto number = [&tiff](std::size_t at, std::size_t count) {
        std::size_t value = 0;
        for (std::size_t i = count; i > 0; --i)
            value = value << 8U | static_cast<unsigned char>(tiff[at + i - 1]);
        return value;
    };
    const std::size_t directory = number(4, 4);
    for (std::size_t i = 0; i < number(directory, 2); ++i) {
        const std::size_t entry = directory + 2 + 12 * i;
        constexpr std::size_t width = 256;
        constexpr std::size_t length = 257;
        if (number(entry, 2) != width && number(entry, 2) != length) continue;
        constexpr char isLong = 4;
        tiff[entry + 2] = isLong;
        for (std::size_t byte = 0; byte < 4; ++byte)
            tiff[entry + 8 + byte] = static_cast<char>(side >> (8 * byte));
    }
    return tiff;
}

/// KiB by which the memory of this process grew at its peak while `work` ran.
long growthDuring(const std::function<void()>& work) {
    const auto peak = [] {
        std::ifstream status("/proc/self/status");
        for (std::string line; std::getline(status, line);) {
            if (line.starts_with("VmHWM:")) return std::stol(line.substr(6));
        }
        return 0L;
    };
    // The peak is counted anew from here (proc(5)).
    std::ofstream("/proc/self/clear_refs") << '5';
    const long before = peak();
    work();
    return peak() - before;
}

/// Refused at once: what a picture claims is believed before it is decoded.
void expectRefusedQuickly(const std::string& bytes, const std::string& what) {
    for (const auto& [way, decode] : kDecoders) {
        const PretendedFile file{.bytes = bytes};
        const long growth = growthDuring([&] { EXPECT_FALSE(decode(*file.open(), neverCancelled)) << what; });
        EXPECT_LT(growth, 8 * 1'024) << what << ' ' << way;
        EXPECT_LE(file.bytesRead, 256U * 1'024) << what << ' ' << way << " was read on";
    }
}

TEST(HostilePicture, aPictureThatClaimsTooManyPixelsIsRefusedByItsHeader) {
    const std::string png = test::asPNG(test::uniform(7, 64, 64));
    expectRefusedQuickly(withPNGSize(png, 60'000, 60'000), "PNG");
    expectRefusedQuickly(withPNGSize(png, 0x7FFFFFFF, 0x7FFFFFFF), "the largest PNG");
    expectRefusedQuickly(withPNGSize(test::asPNG(test::uniform(7, 64, 64), {.isInterlaced = true}), 8'000, 6'000),
                         "interlaced PNG");
    std::string jpeg = test::asJPEG(test::uniform(7, 64, 64));
    const std::size_t frame = jpeg.find("\xff\xc0");
    ASSERT_NE(frame, std::string::npos);
    jpeg.replace(frame + 5, 4, "\xff\xff\xff\xff");
    expectRefusedQuickly(jpeg, "JPEG");
    std::string bmp = test::asBMP(test::uniform(7, 64, 64));
    bmp.replace(18, 8, std::string("\0\0\1\0\0\0\1\0", 8));
    expectRefusedQuickly(bmp, "BMP");
    std::string gif = test::asGIF(test::uniform(7, 64, 64));
    gif.replace(6, 4, "\xff\xff\xff\xff");
    expectRefusedQuickly(gif, "GIF");
    const std::string tiff = test::asTIFF(test::uniform(7, 64, 64));
    expectRefusedQuickly(withTIFFSize(tiff, 0xFFFF), "TIFF");
    expectRefusedQuickly(withTIFFSize(tiff, 0xFFFFFFFF), "the largest TIFF");
    std::string webP = test::asWebP(test::uniform(7, 64, 64));
    ASSERT_EQ(webP.substr(23, 3), "\x9d\x01\x2a") << "the sign before the size";
    webP.replace(26, 4, "\xff\x3f\xff\x3f");
    expectRefusedQuickly(webP, "WebP");
    webP = test::asWebP(test::uniform(7, 64, 64), {.orientation = 1});
    webP.replace(24, 6, "\xff\xff\xff\xff\xff\xff");
    expectRefusedQuickly(webP, "the canvas of a WebP");
    for (const std::uint32_t side : {16'000U, 0x7FFFFFFFU, 0xFFFFFFFFU}) {
        std::string heic = test::asHEIC(test::uniform(7, 64, 64));
        const std::size_t extent = heic.find("ispe");
        ASSERT_NE(extent, std::string::npos);
        heic.replace(extent + 8, 8, bigEndian(side) + bigEndian(side));
        expectRefusedQuickly(heic, "HEIC");
    }
}

TEST(HostilePicture, aChunkThatClaimsGigabytesIsNotMadeRoomFor) {
    const std::string png = test::asPNG(test::uniform(7, 64, 64));
    constexpr std::size_t header = 33;
    const std::string claims = png.substr(0, header) + bigEndian(0x7FFFFFFF) + "eXIf" + png.substr(header);
    expectRefusedQuickly(claims, "a PNG with two gigabytes of Exif data");
}

TEST(HostilePicture, aPictureThatClaimsMoreThanItHoldsIsDroppedInFlatMemory) {
    const std::string png = test::asPNG(test::uniform(7, 64, 64));
    expectRefusedQuickly(withPNGSize(png, 14'000, 10'000), "PNG");
    std::string bmp = test::asBMP(test::uniform(7, 64, 64), test::BMPForm::topDown32);
    bmp.replace(18, 8, std::string("\x80\xd1\xf0\x08\xff\xff\xff\xff", 8));
    expectRefusedQuickly(bmp, "a BMP of one row of 150 million pixels");
}

TEST(HostilePicture, aFileLongerThanAnyPictureIsNotSearchedThrough) {
    const test::TestFolder folder;
    const URL url = folder.file("hole.jpg", std::string("\xff\xd8\xff\xe0", 4) + std::string(100, '\0'));
    std::filesystem::resize_file(url.path(), std::uintmax_t{1} << 42U);
    for (const auto& [way, decode] : kDecoders) {
        const std::unique_ptr<FileReader> file = FileReader::open(url, FileReader::Expect::beginning);
        ASSERT_TRUE(file);
        EXPECT_FALSE(decode(*file, neverCancelled)) << way;
    }
}

TEST(HostilePicture, aJPEGThatGoesOverItsPixelsWithoutEndIsNone) {
    const std::string jpeg = test::asJPEG(test::uniform(7, 64, 64), {.isProgressive = true, .isGrey = true});
    const std::size_t scan = jpeg.rfind("\xff\xda");
    std::string again = jpeg.substr(0, scan);
    for (int i = 0; i < 200; ++i)
        again.append(jpeg, scan, jpeg.size() - 2 - scan);
    again += "\xff\xd9";
    for (const auto& [way, decode] : kDecoders) {
        EXPECT_TRUE(decode(*PretendedFile{.bytes = jpeg}.open(), neverCancelled)) << way;
        EXPECT_FALSE(decode(*PretendedFile{.bytes = again}.open(), neverCancelled)) << way;
    }
}

TEST(HostilePicture, aLargePictureThatIsWholeIsHeldInFlatMemory) {
    const PretendedFile png{.bytes = test::asPNG(test::uniform(200, 3'000, 2'000), {.isInterlaced = true})};
    const long growth = growthDuring([&] {
        const std::optional<GreyPicture> thumbnail = decodeThumbnail(*png.open());
        ASSERT_TRUE(thumbnail);
        EXPECT_EQ(thumbnail->pixels, std::vector<float>(63 * 40, 200));
    });
    EXPECT_LT(growth, 4 * 1'024) << "the pixels alone would be 18 MB";
}

#ifdef __SANITIZE_ADDRESS__
/// The sanitizer keeps what was freed for a while.
constexpr long kKept = 16 * 1'024;
#else
constexpr long kKept = 0;
#endif

TEST(HostilePicture, inColoursHardlyMoreIsHeldThanWhatIsAskedFor) {
    const test::ColourPicture grey = test::uniform(200, 1'500, 1'000);
    const auto growthOf = [](const std::string& bytes, std::size_t side) {
        const PretendedFile file{.bytes = bytes};
        return growthDuring([&] {
            const std::optional<RGBAPicture> shown = decodePicture(*file.open(), {.side = side});
            ASSERT_TRUE(shown);
            EXPECT_EQ(shown->width, side);
            EXPECT_EQ(shown->pixels[4 * side * (shown->height / 2)], 200);
        });
    };
    for (const std::string& bytes : {test::asPNG(grey), test::asPNG(grey, {.is16Bit = true}), test::asTIFF(grey),
                                     test::asJPEG(grey, {.quality = 100}), test::asBMP(grey)}) {
        EXPECT_LT(growthOf(bytes, 64), 2 * 1'024 + kKept);
        EXPECT_LT(growthOf(bytes, 750), 4 * 750 * 500 / 1'024 + 2 * 1'024 + kKept);
    }
    EXPECT_LT(growthOf(test::asPNG(grey, {.isInterlaced = true}), 256), 4 * 1'024 + kKept)
        << "with its pixels it would be more";
}

}  // namespace
}  // namespace tavrin
