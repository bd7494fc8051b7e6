// Deleting for good: all of it, and nothing beside it.
#include "Support/OrdinaryUser.h"
#include "Support/TrashWorld.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <string>
#include <vector>

namespace tavrin {
namespace {

using test::clean;
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

}  // namespace
}  // namespace tavrin
