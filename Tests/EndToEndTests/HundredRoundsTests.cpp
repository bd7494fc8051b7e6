// The promise itself: whatever is picked, and however often, all of it comes back.
#include "EndToEndTests/SampleHome.h"
#include "Support/TestFolder.h"
#include "TavrinCore/Cleaning/Cleaner.h"
#include "TavrinCore/Cleaning/HistoryList.h"
#include "TavrinCore/Cleaning/HistoryStore.h"
#include "TavrinCore/ScannerFactory.h"
#include "TreeManifest.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <cstdlib>
#include <iostream>
#include <iterator>
#include <random>
#include <set>
#include <string>
#include <vector>

namespace tavrin::test {
namespace {

using example::changesOfMoving;
using example::differences;
using example::ExpectedChanges;
using example::manifestOf;
using example::TreeManifest;
using testing::IsEmpty;

constexpr int kRounds = 100;
const std::set<std::string> kOwnFolders{".local/share/Trash", ".local/share/Tavrin Clean"};

/// Another one in each run; TAVRIN_SEED repeats a run.
std::uint64_t chooseSeed() {
    const char* given = std::getenv("TAVRIN_SEED");
    const std::uint64_t seed = given != nullptr ? std::strtoull(given, nullptr, 10) : std::random_device()();
    std::cout << "TAVRIN_SEED=" << seed << '\n';
    testing::Test::RecordProperty("seed", std::to_string(seed));
    return seed;
}

/// From nearly nothing to everything, in any order: also a folder after what lay in it.
std::vector<CleanableItem> pick(std::vector<CleanableItem> items, std::mt19937_64& chance) {
    std::ranges::shuffle(items, chance);
    const auto picked = std::uniform_int_distribution<std::ptrdiff_t>(1, std::ssize(items))(chance);
    items.erase(items.begin() + picked, items.end());
    return items;
}

std::vector<CleanableItem> scan() {
    return ScannerFactory::makeScanner(ModuleKind::systemJunk)->scan([](const ScanProgress&) {});
}

CleanResult clean(const std::vector<CleanableItem>& picked) {
    CleanResult result = Cleaner().clean(
        picked, [](const ScanProgress&) {}, neverCancelled);
    EXPECT_THAT(result.failures, IsEmpty())
        << result.failures.front().url.path() << ": " << result.failures.front().reason;
    EXPECT_GT(result.removedItems, 0);
    return result;
}

/// By way of the history file, as a later start of the program would do it.
void rememberAndPutBack(const CleanResult& result) {
    HistoryStore store;
    std::vector<CleanupRecord> records;
    addRecord(records, {.module = "",
                        .moduleKey = std::nullopt,
                        .removedItems = result.removedItems,
                        .reclaimedBytes = result.reclaimedBytes,
                        .restorable = result.restorable});
    ASSERT_TRUE(store.save(records));

    const std::vector<CleanupRecord> loaded = HistoryStore().load();
    ASSERT_EQ(loaded, records);
    const RestoreResult restored = Cleaner().restore(loaded.front().entries);
    EXPECT_EQ(restored.restored, static_cast<std::int64_t>(result.restorable.size()));
    EXPECT_THAT(restored.pending, IsEmpty());
}

ExpectedChanges changesOf(const CleanResult& result, const URL& home) {
    std::vector<URL> originals;
    std::ranges::transform(result.restorable, std::back_inserter(originals), &TrashedEntry::original);
    ExpectedChanges changes = changesOfMoving(originals, home);
    changes.touchedFolders.insert(".local/share");
    return changes;
}

TEST(HundredRounds, whateverIsPickedEveryByteComesBack) {
    const TestFolder world;
    const URL home = world / "home";
    makeSampleHome(home, {"--small"});
    const ScopedVariable homeVariable("HOME", home.path().c_str());
    const ScopedVariable dataVariable("XDG_DATA_HOME", (home.path() + "/.local/share").c_str());
    std::mt19937_64 chance(chooseSeed());
    const TreeManifest original = manifestOf(home, kOwnFolders);
    const std::size_t findings = scan().size();
    ExpectedChanges everTouched;

    for (int round = 0; round < kRounds && !testing::Test::HasFailure(); ++round) {
        SCOPED_TRACE("round " + std::to_string(round));
        const std::vector<CleanableItem> items = scan();
        ASSERT_EQ(items.size(), findings);

        const CleanResult result = clean(pick(items, chance));
        everTouched.touchedFolders.merge(changesOf(result, home).touchedFolders);
        ExpectedChanges away = changesOf(result, home);
        away.touchedFolders = everTouched.touchedFolders;
        EXPECT_THAT(differences(original, manifestOf(home, kOwnFolders), away), IsEmpty());

        rememberAndPutBack(result);
        EXPECT_THAT(differences(original, manifestOf(home, kOwnFolders), everTouched), IsEmpty());
    }
}

}  // namespace
}  // namespace tavrin::test
