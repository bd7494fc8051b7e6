// People move their Documents to another disk and leave a link: what lies there is theirs all the same.
#include "Support/Pictures.h"
#include "Support/RecordedScan.h"
#include "Support/TestFolder.h"
#include "TavrinCore/Cleaning/Cleaner.h"
#include "TavrinCore/Scanning/DuplicateScanner.h"
#include "TavrinCore/Scanning/LargeFilesScanner.h"
#include "TavrinCore/Scanning/MessagesAttachmentsScanner.h"
#include "TavrinCore/Scanning/SimilarImagesScanner.h"
#include "TavrinCore/Strings.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <chrono>
#include <string>
#include <vector>

namespace tavrin {
namespace {

using test::record;
using test::TestFolder;
using testing::ElementsAre;
using testing::UnorderedElementsAre;

TEST(LinkedRoot, ofContentIsLookedThroughOnceForLargeFiles) {
    const TestFolder home;
    home.fileOfSize("disk/docs/film.mov", 60'000);
    home.fileOfSize("Music/song", 60'000);
    home.link("Documents", "disk/docs");
    home.link("Downloads", "disk/docs");
    home.link("Movies", "Music");
    const LargeFilesScanner scanner(LargeFilesScanner::userContentRoots(home.url()), 50'000, std::chrono::hours(24),
                                    false);
    EXPECT_THAT(record(scanner).paths(home), UnorderedElementsAre("Documents/film.mov", "Music/song"));
}

TEST(LinkedRoot, isLookedThroughOnceForSimilarImages) {
    const TestFolder world;
    const std::string scene = test::asJPEG(test::drawnScene(1, 640, 480));
    world.file("disk/one.jpg", scene);
    world.file("disk/two.jpg", scene);
    const URL pictures = world.link("Pictures", "disk");
    const URL documents = world.link("Documents", "disk");
    EXPECT_THAT(record(SimilarImagesScanner(std::vector{pictures, documents}, 10, 1'000)).paths(world),
                UnorderedElementsAre("Pictures/one.jpg", "Pictures/two.jpg"));
}

TEST(LinkedRoot, isFollowedForMessagesAttachments) {
    const TestFolder world;
    world.fileOfSize("elsewhere/film.mov", 20'000);
    const URL root = world.link("Attachments", "elsewhere");
    EXPECT_THAT(record(MessagesAttachmentsScanner(10'000, root)).paths(world), ElementsAre("Attachments/film.mov"));
}

TEST(LinkedRoot, isFollowedForDuplicatesAndAFileMetTwiceIsNoCopy) {
    const TestFolder world;
    const std::string contents(5'000, 'x');
    world.file("disk/one", contents);
    world.file("disk/two", contents);
    world.file("Music/three", contents);
    const URL documents = world.link("Documents", "disk");
    const URL downloads = world.link("Downloads", "disk");
    EXPECT_THAT(record(DuplicateScanner(std::vector{documents, downloads, world / "Music"}, 1'024)).paths(world),
                UnorderedElementsAre("Documents/one", "Documents/two", "Music/three"));
}

TEST(LinkedRoot, thatLeadsIntoTheLibraryIsNotLookedThroughForDuplicates) {
    const TestFolder home;
    const test::ScopedVariable variable("HOME", home.path().c_str());
    const std::string contents(5'000, 'x');
    home.file("Library/Application Support/one", contents);
    home.file("Library/Application Support/two", contents);
    const URL documents = home.link("Documents", "Library/Application Support");
    EXPECT_THAT(record(DuplicateScanner(std::vector{documents}, 1'024)).paths(home), testing::IsEmpty());
}

TEST(LinkedRoot, whatIsReallyProtectedIsSoBelowALinkToo) {
    const TestFolder home;
    const test::ScopedVariable variable("HOME", home.path().c_str());
    const URL caches = home.folder("Library/Caches");
    home.link("Documents", "Library");
    const std::vector<CleanableItem> items{{.id = UUID::random(),
                                            .url = home / "Documents/Caches",
                                            .category = ScanCategory::largeFile,
                                            .isSelected = true}};
    const CleanResult result = Cleaner().clean(
        items, [](const ScanProgress&) {}, neverCancelled);
    EXPECT_EQ(result.removedItems, 0);
    ASSERT_EQ(result.failures.size(), 1U);
    EXPECT_EQ(result.failures.front().reason, S::scanProtectedPath());
    EXPECT_TRUE(test::somethingAt(caches));
}

}  // namespace
}  // namespace tavrin
