#include "Support/OrdinaryUser.h"
#include "Support/Pictures.h"
#include "Support/RecordedScan.h"
#include "Support/TestFolder.h"
#include "TavrinCore/ScannerFactory.h"
#include "TavrinCore/Scanning/FileSystemUtils.h"
#include "TavrinCore/Scanning/SimilarImagesScanner.h"
#include "TavrinCore/Strings.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <map>
#include <string>
#include <utility>
#include <vector>

namespace tavrin {
namespace {

using test::OrdinaryUser;
using test::RecordedScan;
using test::setMode;
using test::TestFolder;
using testing::ElementsAre;
using testing::IsEmpty;

constexpr std::int64_t kMinimum = 10'240;

/// A world of pictures whose hashes are what the test says. Each lies in a folder of its own, and the folders are the
/// roots: so they are met in the order in which they were added.
class PretendedPictures {
  public:
    void add(const std::string& name, std::uint64_t hash, std::size_t size = 20'000) {
        const std::string folder = std::to_string(roots_.size());
        world_.fileOfSize(folder + "/" + name, size);
        roots_.push_back(world_ / folder);
        hashes_[name] = hash;
    }
    /// A picture that can't be read.
    void addBroken(const std::string& name) {
        add(name, 0);
        hashes_.erase(name);
    }

    [[nodiscard]] SimilarImagesScanner scanner() const {
        return {roots_, 10, kMinimum,
                [this](const URL& picture, const CancellationCallback&) -> std::optional<std::uint64_t> {
                    const auto found = hashes_.find(std::string(picture.lastPathComponent()));
                    if (found == hashes_.end()) return std::nullopt;
                    return found->second;
                }};
    }
    [[nodiscard]] RecordedScan scan() const { return test::record(scanner()); }
    [[nodiscard]] const TestFolder& world() const { return world_; }

  private:
    TestFolder world_;
    std::vector<URL> roots_;
    std::map<std::string, std::uint64_t> hashes_;
};

std::vector<std::string> namesOf(const RecordedScan& scan) {
    std::vector<std::string> names;
    for (const CleanableItem& item : scan.items)
        names.emplace_back(item.name());
    return names;
}

constexpr std::uint64_t bits(unsigned count) {
    return (std::uint64_t{1} << count) - 1;
}

TEST(SimilarImagesScanner, theLargestFileIsKeptAndTheOthersNameItAndNothingIsSelected) {
    PretendedPictures pictures;
    pictures.add("seed.jpg", 0, 30'000);
    pictures.add("larger.png", 1, 60'000);
    pictures.add("smaller.gif", 2, 15'000);

    const RecordedScan scan = pictures.scan();

    EXPECT_THAT(namesOf(scan), ElementsAre("larger.png", "seed.jpg", "smaller.gif"));
    EXPECT_THAT(scan.details(), ElementsAre(S::detailLargestOfGroup(), S::detailSimilarTo("larger.png"),
                                            S::detailSimilarTo("larger.png")));
    for (const CleanableItem& item : scan.items) {
        EXPECT_FALSE(item.isSelected);
        EXPECT_EQ(item.isGroupKeeper, item.name() == "larger.png");
        EXPECT_EQ(item.groupID, "img-0");
        EXPECT_EQ(item.category, ScanCategory::similarImage);
        EXPECT_EQ(item.size, FileSystemUtils::size(item.url));
        EXPECT_THAT(item.relatedURLs, IsEmpty());
    }
}

TEST(SimilarImagesScanner, theThresholdIsTenBits) {
    PretendedPictures pictures;
    pictures.add("a.jpg", 0);
    pictures.add("ten.jpg", bits(10));
    pictures.add("eleven.jpg", bits(11));
    EXPECT_THAT(namesOf(pictures.scan()), ElementsAre("a.jpg", "ten.jpg"));
}

TEST(SimilarImagesScanner, ofTwoMembersOfOneSizeTheFirstThatWasMetIsKept) {
    PretendedPictures pictures;
    pictures.add("z.jpg", 0);
    pictures.add("a.jpg", 0);
    EXPECT_THAT(namesOf(pictures.scan()), ElementsAre("z.jpg", "a.jpg"));
}

TEST(SimilarImagesScanner, groupsKeepTheOrderOfTheirFirstPicturesAndSinglesUseUpANumber) {
    PretendedPictures pictures;
    pictures.add("alone.jpg", bits(60));
    pictures.add("small 1.jpg", 0, 12'000);
    pictures.add("also alone.jpg", bits(30));
    pictures.add("large 1.jpg", bits(45), 90'000);
    pictures.add("large 2.jpg", bits(45), 90'000);
    pictures.add("small 2.jpg", 0, 12'000);

    const RecordedScan scan = pictures.scan();

    EXPECT_THAT(namesOf(scan), ElementsAre("small 1.jpg", "small 2.jpg", "large 1.jpg", "large 2.jpg"));
    EXPECT_EQ(scan.items[0].groupID, "img-1");
    EXPECT_EQ(scan.items[2].groupID, "img-3");
}

TEST(SimilarImagesScanner, aPictureThatCanNotBeReadIsDroppedInSilence) {
    PretendedPictures pictures;
    pictures.add("a.jpg", 0);
    pictures.addBroken("broken.jpg");
    pictures.add("b.jpg", 0);
    const RecordedScan scan = pictures.scan();
    EXPECT_THAT(namesOf(scan), ElementsAre("a.jpg", "b.jpg"));
    EXPECT_EQ(scan.reports.back().phase, S::scanDone());
}

TEST(SimilarImagesScanner, onlyPicturesOfTheMinimumOnTheDiskAreLookedAt) {
    const TestFolder world;
    const std::int64_t size = FileSystemUtils::size(world.fileOfSize("a.JPG", 11'000));
    world.fileOfSize("b.png", 11'000);
    world.fileOfSize("c.txt", 11'000);
    world.fileOfSize("no extension", 11'000);
    world.fileOfSize(".hidden.jpg", 11'000);
    world.fileOfSize("Photos Library.photoslibrary/d.jpg", 11'000);
    world.link("link.jpg", "a.JPG");
    std::vector<std::string> asked;
    const auto hash = [&](const URL& picture, const CancellationCallback&) -> std::optional<std::uint64_t> {
        asked.emplace_back(picture.lastPathComponent());
        return 0;
    };
    (void)test::record(SimilarImagesScanner(std::vector{world.url()}, 10, size, hash));
    EXPECT_THAT(asked, testing::UnorderedElementsAre("a.JPG", "b.png"));
    asked.clear();
    (void)test::record(SimilarImagesScanner(std::vector{world.url()}, 10, size + 1, hash));
    EXPECT_THAT(asked, IsEmpty());
}

TEST(SimilarImagesScanner, everyFiftiethPictureIsReportedBeforeItIsRead) {
    const TestFolder world;
    for (int i = 0; i < 101; ++i)
        world.fileOfSize(std::to_string(i) + ".jpg", 11'000);
    std::vector<std::string> asked;
    std::vector<ScanProgress> reports;
    std::vector<std::size_t> askedBefore;
    const auto hash = [&](const URL& picture, const CancellationCallback&) -> std::optional<std::uint64_t> {
        asked.push_back(picture.path());
        if (asked.size() % 2 == 0) return std::nullopt;
        return 0;
    };
    const SimilarImagesScanner scanner(std::vector{world.url()}, 10, kMinimum, hash);
    (void)scanner.scan([&](const ScanProgress& report) {
        reports.push_back(report);
        askedBefore.push_back(asked.size());
    });
    ASSERT_EQ(reports.size(), 3U);
    for (const std::size_t i : {0U, 1U}) {
        EXPECT_EQ(askedBefore[i], 50 * (i + 1) - 1);
        EXPECT_EQ(reports[i], (ScanProgress{.phase = S::scanAnalyzingImages(),
                                            .itemsFound = static_cast<std::int64_t>(25 * (i + 1)),
                                            .currentPath = asked[50 * (i + 1) - 1]}));
    }
    EXPECT_EQ(reports[2],
              (ScanProgress{.phase = S::scanDone(), .itemsFound = 51, .bytesFound = 0, .fractionCompleted = 1.0}));
}

TEST(SimilarImagesScanner, realPicturesGroupWithTheirResizedTurnedAndReencodedCopies) {
    const TestFolder world;
    for (unsigned i = 0; i < 3; ++i) {
        const test::ColourPicture scene = test::drawnScene(40 + i, 800, 600);
        const std::string name = "scene " + std::to_string(i);
        world.file(name + "/original.jpg", test::asJPEG(scene));
        world.file(name + "/half.png", test::asPNG(test::shrunk(scene, 2)));
        world.file(name + "/turned.jpg", test::asJPEG(test::storedFor(6, scene), {.orientation = 6}));
        world.file(name + "/copy.webp", test::asWebP(scene));
        world.file(name + "/wrong name.heic", test::asTIFF(scene));
    }
    const RecordedScan scan = test::record(SimilarImagesScanner(std::vector{world.url()}, 10, 4'096));
    ASSERT_EQ(scan.items.size(), 15U);
    std::map<std::string, std::vector<std::string>> scenes;
    for (const CleanableItem& item : scan.items)
        scenes[*item.groupID].emplace_back(item.url.deletingLastPathComponent().lastPathComponent());
    EXPECT_EQ(scenes.size(), 3U);
    for (const auto& [group, names] : scenes)
        EXPECT_EQ(names, std::vector<std::string>(5, names.front())) << group;
}

TEST(SimilarImagesScanner, uniformPicturesOfAnyGreyAreSimilar) {
    const TestFolder world;
    world.file("grey.bmp", test::asBMP(test::uniform(128, 100, 80)));
    world.file("black.bmp", test::asBMP(test::uniform(0, 100, 80)));
    EXPECT_EQ(test::record(SimilarImagesScanner(std::vector{world.url()}, 10, kMinimum)).items.size(), 2U);
}

TEST(SimilarImagesScanner, aRefusedRootIsCountedAndTheOthersAreScanned) {
    PretendedPictures pictures;
    pictures.add("a.jpg", 0);
    pictures.add("locked.jpg", 0);
    pictures.add("b.jpg", 0);
    const URL locked = pictures.world() / "1";
    setMode(locked, 0000);
    const OrdinaryUser user;
    const RecordedScan scan = pictures.scan();
    EXPECT_THAT(namesOf(scan), ElementsAre("a.jpg", "b.jpg"));
    EXPECT_EQ(scan.reports.back().blockedFolders, 1);
    EXPECT_EQ(scan.reports.back().phase, S::fdaTitle());
    setMode(locked, 0700);
}

TEST(SimilarImagesScanner, whereNothingIsFoundAndARootIsRefusedTheScanFails) {
    PretendedPictures pictures;
    pictures.add("locked.jpg", 0);
    const URL locked = pictures.world() / "0";
    setMode(locked, 0000);
    const OrdinaryUser user;
    EXPECT_EQ(pictures.scan().failure, ScanError::accessDenied(locked));
    setMode(locked, 0700);
}

TEST(SimilarImagesScanner, aCancelAtAnyMomentFailsTheScanWithNoPartialList) {
    PretendedPictures pictures;
    for (const char* name : {"a.jpg", "b.jpg", "c.jpg"})
        pictures.add(name, 0);
    test::expectCancellableAtEveryPoll(pictures.scanner());
}

TEST(SimilarImagesScanner, aCancelWhileAPictureIsReadFailsTheScan) {
    const TestFolder world;
    world.file("a.png", test::asPNG(test::drawnScene(1, 600, 400)));
    world.file("b.png", test::asPNG(test::drawnScene(1, 600, 400)));
    test::expectCancellableAtEveryPoll(SimilarImagesScanner(std::vector{world.url()}, 10, kMinimum));
}

TEST(ScannerFactory, makesTheSimilarImagesScannerOverTheUsersFolders) {
    const TestFolder world;
    const test::ScopedVariable home("HOME", world.path().c_str());
    const std::string picture = test::asPNG(test::drawnScene(3, 300, 200));
    world.file("Pictures/a.png", picture);
    world.file("Documents/b.png", picture);
    world.file("Music/c.png", picture);
    const RecordedScan scan = test::record(*ScannerFactory::makeScanner(ModuleKind::similarImages));
    EXPECT_THAT(namesOf(scan), ElementsAre("a.png", "b.png"));
}

TEST(SimilarImagesScanner, theNameOfTheLargestKeepsToItsLine) {
    const TestFolder world;
    const std::string scene = test::asJPEG(test::drawnScene(1, 640, 480));
    world.file("two\nlines.jpg", scene + std::string(20'000, 'x'));
    world.file("other.jpg", scene);
    EXPECT_EQ(test::record(SimilarImagesScanner(std::vector{world.url()}, 10, 1'000)).named("other.jpg").detail,
              S::detailSimilarTo("two\uFFFDlines.jpg"));
}

}  // namespace
}  // namespace tavrin
