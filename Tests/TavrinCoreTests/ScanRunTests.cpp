#include "Support/LockedFolder.h"
#include "Support/RecordedScan.h"
#include "Support/TestFolder.h"
#include "TavrinCore/Scanning/FileSystemUtils.h"
#include "TavrinCore/Scanning/ScanRun.h"
#include "TavrinCore/Strings.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <chrono>
#include <limits>
#include <string>
#include <vector>

namespace tavrin {
namespace {

using namespace std::chrono_literals;
using test::LockedFolder;
using test::TestFolder;
using testing::ElementsAre;
using testing::IsEmpty;

CleanableItem itemOfSize(std::int64_t size, std::string_view name) {
    return {.id = UUID::random(),
            .url = URL::fromPath("/world").appendingPathComponent(name),
            .size = size,
            .category = ScanCategory::logs};
}

std::vector<std::string> names(const std::vector<CleanableItem>& items) {
    std::vector<std::string> names;
    for (const CleanableItem& item : items)
        names.emplace_back(item.name());
    return names;
}

/// A run whose reports are kept, and whose clock stands still unless it is set.
class ScanRunTest : public testing::Test {
  protected:
    std::vector<ScanProgress> reports_;
    bool cancelled_ = false;
    std::chrono::steady_clock::time_point now_;
    ProgressCallback progress_ = [this](const ScanProgress& report) { reports_.push_back(report); };
    CancellationCallback isCancelled_ = [this] { return cancelled_; };
    ScanRun run_{progress_, isCancelled_, [this] { return now_; }};

    void pollOften() {
        for (int i = 0; i < 100; ++i)
            EXPECT_FALSE(run_.isCancelled()());
    }
};

TEST_F(ScanRunTest, theLastReportHasTheDoneTextAndTheFindingsComeAsTheyWereAdded) {
    run_.add(itemOfSize(1, "a"));
    run_.add(itemOfSize(3, "b"));
    run_.add(itemOfSize(2, "c"));
    EXPECT_EQ(run_.bytes(), 6);

    EXPECT_THAT(names(run_.finish(2)), ElementsAre("a", "b", "c"));
    EXPECT_THAT(reports_, ElementsAre(ScanProgress{
                              .phase = S::scanDone(), .itemsFound = 3, .bytesFound = 2, .fractionCompleted = 1.0}));
}

TEST_F(ScanRunTest, theLargestComesFirstAndEqualOnesStayInTheirOrder) {
    std::vector<std::string> expected;
    for (std::int64_t size = 0; size < 3; ++size) {
        std::vector<std::string> ofOneSize;
        for (int i = 0; i < 40; ++i) {
            ofOneSize.push_back(std::to_string(size) + "-" + std::to_string(i));
            run_.add(itemOfSize(size, ofOneSize.back()));
        }
        expected.insert(expected.begin(), ofOneSize.begin(), ofOneSize.end());
    }
    EXPECT_EQ(names(run_.finishLargestFirst(0)), expected);
}

TEST_F(ScanRunTest, refusalsShowInTheLastReportWhereSomethingWasFound) {
    run_.denials().record(URL::fromPath("/refused"));
    run_.denials().record(URL::fromPath("/refused too"));
    run_.add(itemOfSize(1, "a"));
    (void)run_.finish(0);
    ASSERT_EQ(reports_.size(), 1U);
    EXPECT_EQ(reports_[0].phase, S::fdaTitle());
    EXPECT_EQ(reports_[0].blockedFolders, 2);
}

TEST_F(ScanRunTest, whereNothingWasFoundARefusalFailsTheScanWithoutALastReport) {
    run_.denials().record(URL::fromPath("/refused"));
    try {
        (void)run_.finish(0);
        ADD_FAILURE() << "the scan gave a result";
    } catch (const ScanError& error) {
        EXPECT_EQ(error, ScanError::accessDenied(URL::fromPath("/refused")));
    }
    EXPECT_THAT(reports_, IsEmpty());
}

TEST_F(ScanRunTest, aCancelledRunGivesNoPartialSizeAndNoPartialListing) {
    const TestFolder world;
    world.file("folder/file");
    EXPECT_GT(run_.size(world / "folder"), 0);
    EXPECT_EQ(run_.children(world.url()).size(), 1U);
    cancelled_ = true;
    EXPECT_THROW((void)run_.size(world / "folder"), ScanError);
    EXPECT_THROW((void)run_.sizeWithoutDenials(world / "folder"), ScanError);
    EXPECT_THROW((void)run_.children(world.url()), ScanError);
    EXPECT_THROW(run_.throwIfCancelled(), ScanError);
    EXPECT_TRUE(run_.isCancelled()());
}

TEST_F(ScanRunTest, childrenAreTheVisibleOnesAndFoldersAreMarked) {
    const TestFolder world;
    world.folder("folder");
    world.file(".hidden");
    world.link("link", "folder");
    std::vector<std::string> found;
    for (const URL& child : run_.children(world.url()))
        found.push_back(std::string(child.lastPathComponent()) + (child.hasDirectoryPath() ? "/" : ""));
    EXPECT_THAT(found, testing::UnorderedElementsAre("folder/", "link"));
}

TEST_F(ScanRunTest, onlyTheMeasureThatIsToldToForgetsARefusal) {
    const TestFolder world;
    const URL folder = world.folder("folder");
    const LockedFolder lock(folder);
    (void)run_.sizeWithoutDenials(folder);
    EXPECT_TRUE(run_.denials().isEmpty());
    (void)run_.size(folder);
    EXPECT_THAT(run_.denials().all(), ElementsAre(folder));
    EXPECT_THAT(run_.children(folder), IsEmpty());
}

TEST_F(ScanRunTest, aLongSilenceIsBrokenWithTheLastReport) {
    const ScanProgress report{.phase = "working", .itemsFound = 7, .currentPath = "/here"};
    run_.report(report);
    pollOften();
    EXPECT_EQ(reports_.size(), 1U) << "not while no time goes by";
    now_ += ScanRun::longestSilence;
    pollOften();
    EXPECT_THAT(reports_, ElementsAre(report, report)) << "once";
    now_ += ScanRun::longestSilence - 1ms;
    pollOften();
    EXPECT_EQ(reports_.size(), 2U);
    now_ += 1ms;
    pollOften();
    EXPECT_EQ(reports_.size(), 3U);
}

TEST_F(ScanRunTest, aSinglePollThatComesLateBreaksTheSilence) {
    run_.report({.phase = "working"});
    now_ += ScanRun::longestSilence;
    EXPECT_FALSE(run_.isCancelled()());
    EXPECT_EQ(reports_.size(), 2U);
}

TEST_F(ScanRunTest, askingWhetherItWasCancelledKeepsTheScanTalking) {
    run_.report({.phase = "working"});
    for (int i = 0; i < 40; ++i)
        run_.throwIfCancelled();
    EXPECT_EQ(reports_.size(), 1U) << "not while no time goes by";
    now_ += ScanRun::longestSilence;
    run_.throwIfCancelled();
    EXPECT_EQ(reports_.size(), 2U);
}

TEST_F(ScanRunTest, aScanThatHasNotReportedYetStaysSilent) {
    now_ += 1h;
    pollOften();
    EXPECT_THAT(reports_, IsEmpty());
}

TEST_F(ScanRunTest, measuringKeepsTheScanTalking) {
    const TestFolder world;
    for (int i = 0; i < 40; ++i)
        world.file("folder/" + std::to_string(i));
    run_.report({.phase = "working"});
    now_ += 1s;
    (void)run_.size(world / "folder");
    EXPECT_EQ(reports_.size(), 2U);
}

TEST_F(ScanRunTest, sizesBeyondEveryBoundEndAtTheLargestNumber) {
    constexpr std::int64_t most = std::numeric_limits<std::int64_t>::max();
    run_.add(itemOfSize(most - 1, "a"));
    run_.add(itemOfSize(2, "b"));
    EXPECT_EQ(run_.bytes(), most);
    EXPECT_EQ(FileSystemUtils::sumOfSizes(1, 2), 3);
}

}  // namespace
}  // namespace tavrin
