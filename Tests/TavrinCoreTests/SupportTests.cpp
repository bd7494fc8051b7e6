// The ground that other tests stand on: a test of refusal is worth nothing where nobody is refused.
#include "Support/OrdinaryUser.h"
#include "Support/OwnMounts.h"
#include "Support/TestFolder.h"

#include <dirent.h>
#include <gtest/gtest.h>
#include <sys/stat.h>

namespace tavrin::test {
namespace {

TEST(OrdinaryUser, isRefusedWhatTheModeForbids) {
    const TestFolder world;
    const URL locked = world.folder("locked");
    setMode(locked, 0000);
    const OrdinaryUser user;
    EXPECT_EQ(::opendir(locked.path().c_str()), nullptr);
    EXPECT_EQ(errno, EACCES);
}

TEST(OwnMounts, aTmpfsIsAnotherFileSystemAndEndsWithItsTest) {
    const TestFolder world;
    const URL disk = world.folder("disk");
    withOwnMounts([&] {
        mountTmpfs(disk);
        world.file("disk/inside");
        struct stat outer {};
        struct stat inner {};
        ASSERT_EQ(::stat(world.path().c_str(), &outer), 0);
        ASSERT_EQ(::stat(disk.path().c_str(), &inner), 0);
        EXPECT_NE(outer.st_dev, inner.st_dev);
    });
    EXPECT_FALSE(somethingAt(world / "disk/inside"));
}

}  // namespace
}  // namespace tavrin::test
