// Between the check of a path and its move somebody else is at work. What is moved is what was checked, or nothing.
#include "Support/InterceptedCalls.h"
#include "Support/TrashWorld.h"
#include "TavrinCore/Platform/Linux/SystemFileEffects.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <unistd.h>

#include <cerrno>
#include <cstdio>
#include <functional>
#include <string>
#include <vector>

namespace tavrin {
namespace {

using test::contentsOf;
using test::InterceptedCalls;
using test::somethingAt;
using test::TrashWorld;
using Call = InterceptedCalls::Call;

void rename(const URL& from, const URL& to) {
    ASSERT_EQ(::rename(from.path().c_str(), to.path().c_str()), 0) << from.path();
}

/// Holds, lets `meanwhile` happen, then moves. The errno of the refusal; 0 for a move.
int trashAfter(const URL& url, const std::function<void()>& meanwhile) {
    FileEffects& effects = systemFileEffects();
    Result<std::unique_ptr<HeldItem>> held = effects.hold(url);
    EXPECT_TRUE(held.ok());
    meanwhile();
    const Result<std::optional<URL>> result = effects.trashItem(**held);
    return result ? 0 : result.error().code;
}

/// Moves, with `meanwhile` happening right before the n-th rename.
int trashWithActionBeforeRename(const URL& url, const std::function<void(int)>& meanwhile) {
    int renames = 0;
    InterceptedCalls calls([&](Call call, int) {
        if (call == Call::rename) meanwhile(renames++);
        return 0;
    });
    SystemFileEffects effects(calls);
    Result<std::unique_ptr<HeldItem>> held = effects.hold(url);
    EXPECT_TRUE(held.ok());
    const Result<std::optional<URL>> result = effects.trashItem(**held);
    return result ? 0 : result.error().code;
}

TEST(TrashRace, aFolderOnTheWayExchangedForALinkIsNoticed) {
    const TrashWorld world;
    const URL file = world.home().file("caches/item", "checked");
    world.home().file("Documents/item", "dear");
    EXPECT_EQ(trashAfter(file,
                         [&] {
                             rename(world / "caches", world / "aside");
                             world.home().link("caches", "Documents");
                         }),
              ESTALE);
    EXPECT_EQ(contentsOf(world / "Documents/item"), "dear");
    EXPECT_EQ(contentsOf(world / "aside/item"), "checked");
    EXPECT_TRUE(world.notes().empty());
    EXPECT_TRUE(world.files().empty());
}

TEST(TrashRace, anItemExchangedForAnotherIsNoticed) {
    const TrashWorld world;
    const URL file = world.home().file("item", "checked");
    world.home().file("dear", "dear");
    EXPECT_EQ(trashAfter(file, [&] { rename(world / "dear", file); }), ESTALE);
    EXPECT_EQ(contentsOf(file), "dear");
    EXPECT_TRUE(world.notes().empty());
}

TEST(TrashRace, anItemMadeAnewUnderItsNameIsAnotherOne) {
    const TrashWorld world;
    const URL file = world.home().file("item", "checked");
    EXPECT_EQ(trashAfter(file,
                         [&] {
                             ASSERT_EQ(::unlink(file.path().c_str()), 0);
                             world.home().file("item", "new");
                         }),
              ESTALE)
        << "the old one's inode number must not be taken for it";
    EXPECT_EQ(contentsOf(file), "new");
}

TEST(TrashRace, aFileExchangedForALinkOrAFolderIsNoticed) {
    const TrashWorld world;
    const URL file = world.home().file("item", "checked");
    EXPECT_EQ(trashAfter(file,
                         [&] {
                             rename(file, world / "aside");
                             world.home().link("item", "aside");
                         }),
              ESTALE);
    EXPECT_EQ(trashAfter(world / "aside",
                         [&] {
                             ASSERT_EQ(::unlink((world / "aside").path().c_str()), 0);
                             world.home().folder("aside");
                         }),
              ESTALE);
    EXPECT_TRUE(world.files().empty());
}

TEST(TrashRace, aVanishedItemIsAFailureWithoutANote) {
    const TrashWorld world;
    const URL file = world.home().file("item");
    EXPECT_EQ(trashAfter(file, [&] { ASSERT_EQ(::unlink(file.path().c_str()), 0); }), ENOENT);
    EXPECT_TRUE(world.notes().empty());
}

TEST(TrashRace, whatIsChangedInsideAnItemMeanwhileGoesWithIt) {
    const TrashWorld world;
    const URL folder = world.home().folder("folder");
    EXPECT_EQ(trashAfter(folder, [&] { world.home().file("folder/late", "late"); }), 0);
    EXPECT_EQ(contentsOf(world.file("folder").appendingPathComponent("late")), "late");
}

TEST(TrashRace, anExchangeInTheLastInstantIsUndone) {
    const TrashWorld world;
    const URL file = world.home().file("item", "checked");
    world.home().file("dear", "dear");
    EXPECT_EQ(trashWithActionBeforeRename(file,
                                          [&](int index) {
                                              if (index == 0) rename(world / "dear", file);
                                          }),
              ESTALE);
    EXPECT_EQ(contentsOf(file), "dear");
    EXPECT_TRUE(world.files().empty());
    EXPECT_TRUE(world.notes().empty());
}

TEST(TrashRace, whatCannotBeMovedBackStaysInTheTrashWithItsNote) {
    const TrashWorld world;
    const URL file = world.home().file("item", "checked");
    world.home().file("dear", "dear");
    EXPECT_EQ(trashWithActionBeforeRename(file,
                                          [&](int index) {
                                              if (index == 0) rename(world / "dear", file);
                                              if (index == 1) world.home().file("item", "occupant");
                                          }),
              ESTALE);
    EXPECT_EQ(contentsOf(file), "occupant");
    EXPECT_EQ(contentsOf(world.file("item")), "dear");
    EXPECT_EQ(world.notedOrigin("item"), file.path());
}

TEST(TrashRace, aNameTakenInTheTrashInTheLastInstantIsNotReplaced) {
    const TrashWorld world;
    const URL file = world.home().file("item", "mine");
    EXPECT_EQ(trashWithActionBeforeRename(file,
                                          [&](int index) {
                                              if (index == 0) world.home().file("data/Trash/files/item", "other");
                                          }),
              0);
    EXPECT_EQ(contentsOf(world.file("item")), "other");
    EXPECT_EQ(world.files().size(), 2U);
    EXPECT_EQ(world.notes().size(), 1U);
}

TEST(TrashRace, aPlaceTakenInTheLastInstantIsNotReplacedByWhatComesBack) {
    const TrashWorld world;
    const URL file = world.home().file("item", "old");
    const CleanResult result = test::clean({file});
    InterceptedCalls calls([&](Call call, int) {
        if (call == Call::rename && !somethingAt(file)) world.home().file("item", "new");
        return 0;
    });
    SystemFileEffects effects(calls);
    const Outcome back = effects.putBack(result.restorable.at(0).trashed, file);
    ASSERT_FALSE(back.ok());
    EXPECT_TRUE(back.error().isPosix(EEXIST));
    EXPECT_EQ(contentsOf(file), "new");
    EXPECT_EQ(contentsOf(world.file("item")), "old");
    EXPECT_EQ(world.notedOrigin("item"), file.path());
}

TEST(TrashRace, anItemExchangedBeforeItIsRemovedForGoodStays) {
    const TrashWorld world;
    const URL file = world.home().file("item");
    world.home().file("dear", "dear");
    FileEffects& effects = systemFileEffects();
    Result<std::unique_ptr<HeldItem>> held = effects.hold(file);
    rename(world / "dear", file);
    const Outcome removed = effects.removeItem(**held);
    ASSERT_FALSE(removed.ok());
    EXPECT_TRUE(removed.error().isPosix(ESTALE));
    EXPECT_EQ(contentsOf(file), "dear");
}

}  // namespace
}  // namespace tavrin
