// Deleting for good: all of it, and nothing beside it.
#include "Support/InterceptedCalls.h"
#include "Support/OrdinaryUser.h"
#include "Support/TrashWorld.h"
#include "TavrinCore/Platform/Linux/RemoveTree.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <filesystem>
#include <functional>
#include <string>
#include <vector>

namespace tavrin {
namespace {

using test::clean;
using test::InterceptedCalls;
using test::somethingAt;
using test::TrashWorld;

CleanResult remove(const URL& url) {
    return Cleaner().removePermanently(std::vector{url}, [](const ScanProgress&) {});
}

TEST(RemoveTree, aTrashedItemGoesWithItsNote) {
    const TrashWorld world;
    world.home().file("folder/inner/x");
    const CleanResult trashed = clean({world / "folder", world.home().file("file")});
    for (const TrashedEntry& entry : trashed.restorable) {
        const CleanResult result = remove(entry.trashed);
        EXPECT_EQ(result.removedItems, 1);
        EXPECT_TRUE(result.failures.empty());
    }
    EXPECT_TRUE(world.files().empty());
    EXPECT_TRUE(world.notes().empty());
}

TEST(RemoveTree, followsNoLink) {
    const TrashWorld world;
    const URL dear = world.home().file("dear/x");
    world.home().link("folder/inner/link", dear.deletingLastPathComponent().path());
    world.home().link("folder/file", dear.path());
    world.home().link("folder/nowhere", "nowhere");
    EXPECT_EQ(remove(world / "folder").removedItems, 1);
    EXPECT_FALSE(somethingAt(world / "folder"));
    EXPECT_TRUE(somethingAt(dear));
}

TEST(RemoveTree, aLinkItselfGoesAndItsTargetStays) {
    const TrashWorld world;
    const URL dear = world.home().file("dear/x");
    EXPECT_EQ(remove(world.home().link("link", "dear")).removedItems, 1);
    EXPECT_TRUE(somethingAt(dear));
}

TEST(RemoveTree, aChainOfFiveThousandFoldersGoes) {
    const TrashWorld world;
    world.home().folder("chain");
    int folder = ::open((world / "chain").path().c_str(), O_PATH | O_DIRECTORY | O_CLOEXEC);
    for (int depth = 0; depth < 5000; ++depth) {
        ASSERT_EQ(::mkdirat(folder, "d", 0700), 0);
        const int next = ::openat(folder, "d", O_PATH | O_DIRECTORY | O_CLOEXEC);
        ::close(folder);
        folder = next;
    }
    ::close(folder);
    EXPECT_EQ(remove(world / "chain").removedItems, 1);
    EXPECT_FALSE(somethingAt(world / "chain"));
}

TEST(RemoveTree, ownFoldersWithoutPermissionAreOpenedFirst) {
    const TrashWorld world;
    for (const char* name : {"a", "b", "c"}) {
        world.home().file(std::string("folder/") + name + "/inner/x");
        world.home().file(std::string("folder/") + name + "/y");
    }
    test::setMode(world / "folder/a/inner", 0000);
    test::setMode(world / "folder/b", 0111);
    test::setMode(world / "folder/c", 0555);
    test::setMode(world / "folder", 0444);
    const test::OrdinaryUser user;
    EXPECT_EQ(remove(world / "folder").removedItems, 1);
    EXPECT_FALSE(somethingAt(world / "folder"));
}

TEST(RemoveTree, whatIsRefusedIsToldAndStays) {
    const TrashWorld world;
    const URL item = world.home().file("locked/item");
    test::setMode(world / "locked", 0555);
    const test::OrdinaryUser user;
    const CleanResult result = remove(item);
    EXPECT_EQ(result.removedItems, 0);
    EXPECT_EQ(result.failures, (std::vector<CleanFailure>{{item, SystemError::posix(EACCES).localizedDescription}}));
    EXPECT_TRUE(somethingAt(item));
}

TEST(RemoveTree, specialsAndNamesOfAnyBytesGo) {
    const TrashWorld world;
    world.home().folder("folder");
    ASSERT_EQ(::mkfifo((world / "folder/pipe").path().c_str(), 0600), 0);
    for (const std::string& name :
         {std::string("\xFF"), std::string(255, 'x'), std::string("a\nb"), std::string("-rf")})
        world.home().file("folder/" + name);
    EXPECT_EQ(remove(world / "folder").removedItems, 1);
    EXPECT_FALSE(somethingAt(world / "folder"));
}

TEST(RemoveTree, aWideFolderGoes) {
    const TrashWorld world;
    world.home().folder("wide");
    for (int i = 0; i < 3000; ++i)
        ::close(::open((world / ("wide/" + std::to_string(i))).path().c_str(), O_CREAT | O_WRONLY | O_CLOEXEC, 0600));
    for (int i = 0; i < 100; ++i)
        world.home().file("wide/folder" + std::to_string(i) + "/x");
    EXPECT_EQ(remove(world / "wide").removedItems, 1);
    EXPECT_FALSE(somethingAt(world / "wide"));
}

/// Removes `url`, with `meanwhile` done once, right before the call of that kind and number.
Outcome removeWhile(const URL& url, InterceptedCalls::Call kind, int number, const std::function<void()>& meanwhile) {
    int count = -1;
    bool armed = false;
    InterceptedCalls calls([&](InterceptedCalls::Call call, int) {
        if (armed && call == kind && ++count == number) meanwhile();
        return 0;
    });
    const auto held = HeldFile::hold(calls, url);
    EXPECT_TRUE(held.ok());
    armed = true;
    Outcome removed = removeHeld(calls, **held);
    EXPECT_GE(count, number) << "nothing was done meanwhile";
    return removed;
}

/// How often something is opened for the check, and for the root in its two steps, before the first folder inside.
int openingsBefore(const TrashWorld& world) {
    int count = 0;
    bool counts = false;
    InterceptedCalls calls([&](InterceptedCalls::Call call, int) {
        count += counts && call == InterceptedCalls::Call::open ? 1 : 0;
        return 0;
    });
    world.home().folder("empty");
    const auto held = HeldFile::hold(calls, world / "empty");
    counts = true;
    EXPECT_TRUE(removeHeld(calls, **held).ok());
    return count;
}

TEST(RemoveTree, whatIsWrittenIntoItMeanwhileGoesToo) {
    const TrashWorld world;
    world.home().file("folder/inner/x");
    const auto write = [&] { world.home().file("folder/late/y"); };
    EXPECT_TRUE(removeWhile(world / "folder", InterceptedCalls::Call::unlink, 0, write).ok());
    EXPECT_FALSE(somethingAt(world / "folder"));
}

TEST(RemoveTree, aFolderSwappedForALinkMeanwhileIsNotFollowed) {
    const TrashWorld world;
    const URL dear = world.home().file("dear/x");
    world.home().file("folder/inner/x");
    const auto swap = [&] {
        std::filesystem::rename((world / "folder/inner").path(), (world / "moved").path());
        world.home().link("folder/inner", "../dear");
    };
    EXPECT_TRUE(removeWhile(world / "folder", InterceptedCalls::Call::open, openingsBefore(world), swap).ok());
    EXPECT_FALSE(somethingAt(world / "folder"));
    EXPECT_TRUE(somethingAt(dear));
    EXPECT_TRUE(somethingAt(world / "moved/x"));
}

TEST(RemoveTree, anItemSwappedForAnotherIsLeftAlone) {
    const TrashWorld world;
    world.home().file("folder/x");
    world.home().file("other/dear");
    const auto swap = [&] {
        std::filesystem::rename((world / "folder").path(), (world / "moved").path());
        std::filesystem::rename((world / "other").path(), (world / "folder").path());
    };
    const Outcome removed =
        removeWhile(world / "folder", InterceptedCalls::Call::open, openingsBefore(world) - 2, swap);
    ASSERT_FALSE(removed.ok());
    EXPECT_TRUE(removed.error().isPosix(ESTALE));
    EXPECT_TRUE(somethingAt(world / "folder/dear"));
    EXPECT_TRUE(somethingAt(world / "moved/x"));
}

}  // namespace
}  // namespace tavrin
