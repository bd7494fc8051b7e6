// The cleaner's rules, counted on a disk that only writes down what it was asked.
#include "Support/RecordingFileEffects.h"
#include "Support/TrashWorld.h"
#include "TavrinCore/Cleaning/Cleaner.h"
#include "TavrinCore/Strings.h"

#include <gtest/gtest.h>

#include <cerrno>
#include <iterator>
#include <string>
#include <unordered_set>
#include <vector>

namespace tavrin {
namespace {

using test::finding;
using test::findings;

class CleanerRules : public testing::Test {
  protected:
    CleanResult clean(const std::vector<CleanableItem>& items) {
        return cleaner_.clean(
            items, [this](const ScanProgress& report) { reports_.push_back(report); },
            [this] { return static_cast<int>(reports_.size()) >= cancelledAfter_; });
    }
    std::vector<URL> standingFiles(int count) {
        std::vector<URL> urls;
        for (int i = 0; i < count; ++i) {
            urls.push_back(URL::fromPath("/Users/nina/x" + std::to_string(i)));
            disk_.standing.insert(urls.back().path());
        }
        return urls;
    }

    test::ScopedVariable home_{"HOME", "/Users/nina"};
    test::RecordingFileEffects disk_;
    Cleaner cleaner_{disk_};
    std::vector<ScanProgress> reports_;
    int cancelledAfter_ = 1000;
};

TEST_F(CleanerRules, anEmptySelectionGivesOneReportAndAnEmptyResult) {
    EXPECT_EQ(clean({}), CleanResult());
    EXPECT_EQ(reports_, (std::vector<ScanProgress>{{.phase = S::scanDone(), .fractionCompleted = 1.0}}));
    EXPECT_TRUE(disk_.acts.empty());
}

TEST_F(CleanerRules, eachPathIsReportedBeforeItsTurnAndTheEndIsReportedOnce) {
    const std::vector<URL> urls = standingFiles(2);
    clean(findings(urls));
    EXPECT_EQ(reports_,
              (std::vector<ScanProgress>{{.phase = S::scanRemoving(), .currentPath = "x0", .fractionCompleted = 0.0},
                                         {.phase = S::scanRemoving(), .currentPath = "x1", .fractionCompleted = 0.5},
                                         {.phase = S::scanDone(), .fractionCompleted = 1.0}}));
}

TEST_F(CleanerRules, anItemGoesFirstAndItsRelatedPathsFollowInTheirOrder) {
    const std::vector<URL> urls = standingFiles(4);
    const CleanResult result = clean({finding(urls[2], {urls[3], urls[0]}), finding(urls[1])});
    EXPECT_EQ(disk_.acts, (std::vector<std::string>{"trash /Users/nina/x2", "trash /Users/nina/x3",
                                                    "trash /Users/nina/x0", "trash /Users/nina/x1"}));
    EXPECT_EQ(result.removedItems, 4);
    EXPECT_EQ(result.restorable[1], (TrashedEntry{urls[3], URL::fromPath("/Trash/x3")}));
}

TEST_F(CleanerRules, whatIsNotSelectedGoesTooWhenItIsHandedOver) {
    std::vector<CleanableItem> items = findings(standingFiles(1));
    items[0].isSelected = false;
    EXPECT_EQ(clean(items).removedItems, 1);
}

TEST_F(CleanerRules, aSecondCleanOfTheSameChangesNothing) {
    const std::vector<CleanableItem> items = findings(standingFiles(3));
    clean(items);
    const auto before = disk_.standing;
    disk_.acts.clear();
    EXPECT_EQ(clean(items), CleanResult());
    EXPECT_EQ(disk_.standing, before);
    EXPECT_TRUE(disk_.acts.empty());
}

TEST_F(CleanerRules, aProtectedUrlIsRefusedAndItsRelatedPathsStillGo) {
    const std::vector<URL> urls = standingFiles(1);
    const URL documents = URL::fromPath("/Users/nina/Documents");
    disk_.standing.insert(documents.path());
    const CleanResult result = clean({finding(documents, urls)});
    EXPECT_EQ(result.failures, (std::vector<CleanFailure>{{documents, S::scanProtectedPath()}}));
    EXPECT_EQ(result.removedItems, 1);
    EXPECT_EQ(disk_.acts, (std::vector<std::string>{"trash /Users/nina/x0"}));
}

TEST_F(CleanerRules, aProtectedPathIsRefusedEvenWhenItIsMissing) {
    const URL missing = URL::fromPath("/usr/missing");
    EXPECT_EQ(clean({finding(missing)}).failures.size(), 1U);
}

TEST_F(CleanerRules, aLinkOnTheWayDoesNotLeadToAProtectedPlace) {
    const std::vector<URL> urls = standingFiles(2);
    disk_.realPlaces.emplace(urls[0].path(), URL::fromPath("/Users/nina/Library/Caches"));
    disk_.realPlaces.emplace(urls[1].path(), URL::fromPath("/usr/lib/x"));
    const CleanResult result = clean(findings(urls));
    EXPECT_EQ(result.failures,
              (std::vector<CleanFailure>{{urls[0], S::scanProtectedPath()}, {urls[1], S::scanProtectedPath()}}));
    EXPECT_TRUE(disk_.acts.empty());
}

TEST_F(CleanerRules, aPathThatVanishedSinceTheScanAddsNothingToAnyCount) {
    const std::vector<URL> urls = standingFiles(2);
    disk_.standing.erase(urls[0].path());
    const CleanResult result = clean(findings(urls));
    EXPECT_EQ(result.removedItems, 1);
    EXPECT_TRUE(result.failures.empty());
    EXPECT_EQ(result.restorable.size(), 1U);
    EXPECT_EQ(reports_.size(), 3U);
}

TEST_F(CleanerRules, aPathThatVanishesWhileItIsLookedAtIsAsSilent) {
    const std::vector<URL> urls = standingFiles(1);
    disk_.holdRefusals[urls[0].path()] = ENOENT;
    EXPECT_EQ(clean(findings(urls)), CleanResult());
}

TEST_F(CleanerRules, aRefusedPathIsToldInTheSystemsWordsAndTheNextFollows) {
    const std::vector<URL> urls = standingFiles(3);
    disk_.refusals[urls[0].path()] = EACCES;
    disk_.holdRefusals[urls[1].path()] = EIO;
    const CleanResult result = clean(findings(urls));
    EXPECT_EQ(result.failures, (std::vector<CleanFailure>{{urls[0], SystemError::posix(EACCES).localizedDescription},
                                                          {urls[1], SystemError::posix(EIO).localizedDescription}}));
    EXPECT_EQ(result.removedItems, 1);
    EXPECT_EQ(result.restorable.size(), 1U);
}

TEST_F(CleanerRules, aFolderAndItsChildInOneSelectionGoAsOne) {
    disk_.standing.insert("/Users/nina/folder");
    const CleanResult result =
        clean(findings({URL::fromPath("/Users/nina/folder"), URL::fromPath("/Users/nina/folder/child")}));
    EXPECT_EQ(result.removedItems, 1);
    EXPECT_TRUE(result.failures.empty());
}

TEST_F(CleanerRules, aCancelAfterThreeOfTenKeepsTheThree) {
    cancelledAfter_ = 3;
    const CleanResult result = clean(findings(standingFiles(10)));
    EXPECT_EQ(result.removedItems, 3);
    EXPECT_EQ(result.restorable.size(), 3U);
    EXPECT_EQ(disk_.acts.size(), 3U);
    EXPECT_EQ(reports_.back(), (ScanProgress{.phase = S::scanDone(), .fractionCompleted = 1.0}));
}

TEST_F(CleanerRules, aTrashThatTellsNoLocationCountsButCannotBeUndone) {
    disk_.tellsNoLocation = true;
    const CleanResult result = clean(findings(standingFiles(2)));
    EXPECT_EQ(result.removedItems, 2);
    EXPECT_TRUE(result.restorable.empty());
    EXPECT_TRUE(result.failures.empty());
}

TEST_F(CleanerRules, removingForGoodKeepsTheSameRulesAndLeavesNothingToPutBack) {
    std::vector<URL> urls = standingFiles(3);
    disk_.refusals[urls[1].path()] = EBUSY;
    urls.push_back(URL::fromPath("/usr/lib"));
    urls.push_back(URL::fromPath("/Users/nina/missing"));
    const CleanResult result =
        cleaner_.removePermanently(urls, [this](const ScanProgress& report) { reports_.push_back(report); });
    EXPECT_EQ(disk_.acts,
              (std::vector<std::string>{"remove /Users/nina/x0", "remove /Users/nina/x1", "remove /Users/nina/x2"}));
    EXPECT_EQ(result.removedItems, 2);
    EXPECT_TRUE(result.restorable.empty());
    EXPECT_EQ(result.failures, (std::vector<CleanFailure>{{urls[1], SystemError::posix(EBUSY).localizedDescription},
                                                          {urls[3], S::scanProtectedPath()}}));
    EXPECT_EQ(reports_.size(), 6U);
    EXPECT_EQ(reports_[1], (ScanProgress{.phase = S::scanRemoving(), .currentPath = "x1", .fractionCompleted = 0.2}));
    EXPECT_EQ(reports_.back().phase, S::scanDone());
}

TEST_F(CleanerRules, aCancelledRemovalStopsBetweenTwoPaths) {
    int polls = 0;
    const CleanResult result = cleaner_.removePermanently(
        standingFiles(5), [](const ScanProgress&) {}, [&polls] { return ++polls > 2; });
    EXPECT_EQ(result.removedItems, 2);
}

TEST_F(CleanerRules, restoringNothingGivesNothing) {
    EXPECT_EQ(cleaner_.restore({}), RestoreResult());
    EXPECT_TRUE(disk_.acts.empty());
}

TEST_F(CleanerRules, parentsComeBackBeforeWhatLayInThemAndEqualsKeepTheirOrder) {
    const auto entry = [this](std::string_view original, std::string_view trashed) {
        disk_.standing.emplace(trashed);
        return TrashedEntry{URL::fromPath(original), URL::fromPath(trashed)};
    };
    disk_.standing.insert("/Users/nina");
    const RestoreResult result = cleaner_.restore(std::vector<TrashedEntry>{entry("/Users/nina/a/b", "/Trash/b"),
                                                                            entry("/Users/nina/./././z", "/Trash/z"),
                                                                            entry("/Users/nina/a", "/Trash/a")});
    EXPECT_EQ(result.restored, 3);
    EXPECT_EQ(disk_.acts,
              (std::vector<std::string>{"return /Trash/z to /Users/nina/./././z", "return /Trash/a to /Users/nina/a",
                                        "return /Trash/b to /Users/nina/a/b"}));
}

TEST_F(CleanerRules, ofManyThatLayEquallyDeepTheOrderIsKept) {
    disk_.standing.insert("/Users/nina");
    std::vector<TrashedEntry> entries;
    std::vector<std::string> expected;
    for (const char name : std::string("the quick brown fox jumps over")) {
        const std::string path = std::string(1, name) + std::to_string(entries.size());
        disk_.standing.insert("/Trash/" + path);
        entries.push_back({URL::fromPath("/Users/nina/" + path), URL::fromPath("/Trash/" + path)});
        expected.push_back("return /Trash/" + path + " to /Users/nina/" + path);
    }
    EXPECT_EQ(cleaner_.restore(entries).restored, std::ssize(entries));
    EXPECT_EQ(disk_.acts, expected);
}

TEST_F(CleanerRules, whatLeftTheTrashStaysPendingWithItsReason) {
    const TrashedEntry gone{URL::fromPath("/Users/nina/a"), URL::fromPath("/Trash/a")};
    const RestoreResult result = cleaner_.restore(std::vector{gone});
    EXPECT_EQ(result.restored, 0);
    EXPECT_EQ(result.failures, (std::vector<CleanFailure>{{gone.original, S::restoreGoneFromTrash()}}));
    EXPECT_EQ(result.pending, std::vector{gone});
    EXPECT_TRUE(disk_.acts.empty());
}

TEST_F(CleanerRules, aParentThatCannotBeMadeKeepsTheEntryPendingAndUntouched) {
    disk_.standing = {"/Trash/a"};
    disk_.refusals["/Users/nina/gone"] = EROFS;
    const TrashedEntry entry{URL::fromPath("/Users/nina/gone/a"), URL::fromPath("/Trash/a")};
    const RestoreResult result = cleaner_.restore(std::vector{entry});
    EXPECT_EQ(result.failures,
              (std::vector<CleanFailure>{{entry.original, SystemError::posix(EROFS).localizedDescription}}));
    EXPECT_EQ(result.pending, std::vector{entry});
    EXPECT_EQ(disk_.acts, std::vector<std::string>{"make /Users/nina/gone"});
}

TEST(CleanFailure, isKnownByPathAndReason) {
    const CleanFailure failure{URL::fromPath("/a/b/"), "why"};
    EXPECT_EQ(failure.id(), "/a/b|why");
    const std::unordered_set<CleanFailure> both{failure, {failure.url, "other"}};
    EXPECT_EQ(both.size(), 2U);
}

}  // namespace
}  // namespace tavrin
