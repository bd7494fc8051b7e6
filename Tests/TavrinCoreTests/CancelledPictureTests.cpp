// Users who have had enough.
#include "PictureWays.h"
#include "Support/Pictures.h"
#include "Support/PretendedFile.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <limits>
#include <map>
#include <set>
#include <string>
#include <thread>

namespace tavrin {
namespace {

using test::drawnScene;
using test::PretendedFile;

TEST(CancelledPicture, thereIsNoneWheneverTheCancelCame) {
    for (const auto& [format, bytes] : test::inEveryFormat(drawnScene(13, 400, 300))) {
        for (const auto& [way, decode] : kDecoders) {
            const PretendedFile file{.bytes = bytes, .mostPerRead = 4'096};
            int polls = 0;
            ASSERT_TRUE(decode(*file.open(), [&] { return ++polls < 0; })) << format << ' ' << way;
            const int all = polls;
            for (const int cancelledAt : {1, 2, all / 2, all - 1, all}) {
                polls = 0;
                EXPECT_FALSE(decode(*file.open(), [&] { return ++polls >= cancelledAt; }))
                    << format << ' ' << way << " cancelled at poll " << cancelledAt << " of " << all;
            }
        }
    }
}

/// How often it is asked when there is nothing to read any more, by the way that asks least.
int pollsWhileItDecodes(const std::string& bytes) {
    int fewest = std::numeric_limits<int>::max();
    for (const auto& [way, decode] : kDecoders) {
        const PretendedFile file{.bytes = bytes};
        int polls = 0;
        EXPECT_TRUE(decode(*file.open(), [&] {
            if (file.bytesRead >= file.bytes.size()) ++polls;
            return false;
        })) << way;
        fewest = std::min(fewest, polls);
    }
    return fewest;
}

TEST(CancelledPicture, aLargePictureInASmallFileIsCancellableWhileItDecodes) {
    const test::ColourPicture flat = test::uniform(7, 1'200, 800);
    EXPECT_GE(pollsWhileItDecodes(test::asJPEG(flat)), 800 / 8);
    EXPECT_GE(pollsWhileItDecodes(test::asJPEG(flat, {.isProgressive = true})), 800 / 8);
    EXPECT_GE(pollsWhileItDecodes(test::asPNG(flat)), 800);
    EXPECT_GE(pollsWhileItDecodes(test::asPNG(flat, {.isInterlaced = true})), 800);
    EXPECT_GE(pollsWhileItDecodes(test::asGIF(flat)), 800);
    EXPECT_GE(pollsWhileItDecodes(test::asTIFF(flat)), 800 / 16);
}

TEST(CancelledPicture, aWebPIsDecodedInPiecesOfAQuarterOfAMebibyte) {
    test::ColourPicture noise = test::uniform(0, 600, 600);
    unsigned number = 1;
    for (std::uint8_t& sample : noise.rgb)
        sample = static_cast<std::uint8_t>((number = number * 1'664'525 + 1'013'904'223) >> 24U);
    const std::string bytes = test::asWebP(noise, {.isLossless = true});
    const auto pieces = static_cast<int>(bytes.size() / (256 * 1'024));
    ASSERT_GE(pieces, 3);
    EXPECT_GE(pollsWhileItDecodes(bytes), pieces);
}

TEST(CancelledPicture, whoeverAsksAsksOnTheThreadThatDecodes) {
    std::map<std::string, std::string> files = test::inEveryFormat(drawnScene(13, 200, 100));
    files["tiled HEIC"] = test::asTiledHEIC(drawnScene(13, 128, 128), 4, 4);
    for (const auto& [format, bytes] : files) {
        for (const auto& [way, decode] : kDecoders) {
            const PretendedFile file{.bytes = bytes, .mostPerRead = 64};
            std::set<std::thread::id> askers;
            ASSERT_TRUE(decode(*file.open(), [&] {
                askers.insert(std::this_thread::get_id());
                return false;
            })) << format;
            EXPECT_THAT(askers, testing::ElementsAre(std::this_thread::get_id())) << format << ' ' << way;
        }
    }
}

}  // namespace
}  // namespace tavrin
