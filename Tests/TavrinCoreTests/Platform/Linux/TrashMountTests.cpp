// The Trash of other file systems. An item never leaves the one that it lies on.
#include "Support/OwnMounts.h"
#include "Support/Snapshot.h"
#include "Support/TrashWorld.h"
#include "TavrinCore/Platform/Linux/TrashInfo.h"

#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <fstream>
#include <string>
#include <vector>

namespace tavrin {
namespace {

using test::clean;
using test::contentsOf;
using test::entryAt;
using test::mountBind;
using test::mountTmpfs;
using test::namesIn;
using test::somethingAt;
using test::TrashWorld;
using test::withOwnMounts;

std::string ownTrash() {
    return ".Trash-" + std::to_string(::geteuid());
}

std::string noteOf(const URL& trash, const std::string& name) {
    const auto info = parseTrashInfo(contentsOf(trash.appendingPathComponent("info/" + name + ".trashinfo")));
    return info ? info->path : "none";
}

TEST(TrashMount, anItemOfAnotherFileSystemStaysOnItAndComesBack) {
    const TrashWorld world;
    const URL disk = world.home().folder("disk");
    withOwnMounts([&] {
        mountTmpfs(disk);
        const URL file = world.home().file("disk/deep/er/x y%", "bytes");
        const CleanResult result = clean({file});
        const URL trash = disk.appendingPathComponent(ownTrash());
        ASSERT_EQ(result.restorable.size(), 1U);
        EXPECT_EQ(result.restorable[0].trashed, trash.appendingPathComponent("files/x y%"));
        EXPECT_EQ(noteOf(trash, "x y%"), "deep/er/x y%");
        EXPECT_EQ(entryAt(trash).mode & 07777U, 0700U);
        EXPECT_TRUE(world.files().empty());
        EXPECT_EQ(Cleaner().restore(result.restorable).restored, 1);
        EXPECT_EQ(contentsOf(file), "bytes");
        EXPECT_TRUE(namesIn(trash.appendingPathComponent("info")).empty());
    });
}

TEST(TrashMount, theAdministratorsTrashServesWhenItIsARealFolderWithTheStickyBit) {
    const TrashWorld world;
    const URL disk = world.home().folder("disk");
    withOwnMounts([&] {
        mountTmpfs(disk);
        test::setMode(world.home().folder("disk/.Trash"), 01777);
        const CleanResult result = clean({world.home().file("disk/x")});
        const URL trash = disk.appendingPathComponent(".Trash/" + std::to_string(::geteuid()));
        ASSERT_EQ(result.restorable.size(), 1U);
        EXPECT_EQ(result.restorable[0].trashed, trash.appendingPathComponent("files/x"));
        EXPECT_EQ(noteOf(trash, "x"), "x");
        EXPECT_FALSE(somethingAt(disk.appendingPathComponent(ownTrash())));
    });
}

TEST(TrashMount, anAdministratorsTrashWithoutTheStickyBitOrBehindALinkIsNotTrusted) {
    for (const bool isLink : {false, true}) {
        const TrashWorld world;
        const URL disk = world.home().folder("disk");
        withOwnMounts([&] {
            mountTmpfs(disk);
            test::setMode(world.home().folder(isLink ? "disk/elsewhere" : "disk/.Trash"), isLink ? 01777 : 0777);
            if (isLink) world.home().link("disk/.Trash", "elsewhere");
            const CleanResult result = clean({world.home().file("disk/x")});
            ASSERT_EQ(result.restorable.size(), 1U);
            EXPECT_EQ(result.restorable[0].trashed, disk.appendingPathComponent(ownTrash() + "/files/x"));
        });
    }
}

TEST(TrashMount, aTrashThatIsALinkIsRefusedAndNothingMoves) {
    const TrashWorld world;
    const URL disk = world.home().folder("disk");
    withOwnMounts([&] {
        mountTmpfs(disk);
        world.home().folder("disk/elsewhere");
        world.home().link("disk/" + ownTrash(), "elsewhere");
        const URL file = world.home().file("disk/x", "bytes");
        EXPECT_EQ(clean({file}).failures,
                  (std::vector<CleanFailure>{{file, SystemError::posix(ENOTDIR).localizedDescription}}));
        EXPECT_EQ(contentsOf(file), "bytes");
        EXPECT_TRUE(namesIn(world / "disk/elsewhere").empty());
    });
}

TEST(TrashMount, aTrashOfAnotherUserIsRefused) {
    const TrashWorld world;
    const URL disk = world.home().folder("disk");
    withOwnMounts([&] {
        mountTmpfs(disk);
        const URL trash = world.home().folder("disk/" + ownTrash());
        // Root gives it away; who can't do that shows root's own under that name.
        if (::geteuid() == 0) {
            ASSERT_EQ(::chown(trash.path().c_str(), 12345, 12345), 0);
        } else {
            mountBind(URL::fromPath("/usr", true), trash);
        }
        const URL file = world.home().file("disk/x");
        EXPECT_EQ(clean({file}).failures,
                  (std::vector<CleanFailure>{{file, SystemError::posix(EPERM).localizedDescription}}));
        EXPECT_TRUE(somethingAt(file));
    });
}

TEST(TrashMount, aBindMountOfTheSameFileSystemHasATrashOfItsOwn) {
    const TrashWorld world;
    const URL source = world.home().folder("source");
    const URL target = world.home().folder("target");
    withOwnMounts([&] {
        mountBind(source, target);
        const CleanResult result = clean({world.home().file("target/x", "bytes")});
        ASSERT_EQ(result.restorable.size(), 1U);
        EXPECT_EQ(result.restorable[0].trashed, target.appendingPathComponent(ownTrash() + "/files/x"));
        EXPECT_TRUE(world.files().empty());
        EXPECT_EQ(Cleaner().restore(result.restorable).restored, 1);
        EXPECT_EQ(contentsOf(world / "target/x"), "bytes");
    });
}

TEST(TrashMount, aReadOnlyFileSystemIsAFailureAndNothingMoves) {
    const TrashWorld world;
    const URL disk = world.home().folder("disk");
    withOwnMounts([&] {
        mountTmpfs(disk);
        const URL file = world.home().file("disk/x", "bytes");
        test::makeReadOnly(disk);
        EXPECT_EQ(clean({file}).failures,
                  (std::vector<CleanFailure>{{file, SystemError::posix(EROFS).localizedDescription}}));
        EXPECT_EQ(contentsOf(file), "bytes");
    });
}

TEST(TrashMount, aFullFileSystemIsAFailureAndNothingMoves) {
    const TrashWorld world;
    const URL disk = world.home().folder("disk");
    withOwnMounts([&] {
        mountTmpfs(disk, 1);
        const URL file = world.home().file("disk/x", "bytes");
        ASSERT_EQ(clean({world.home().file("disk/first")}).removedItems, 1) << "the Trash is there already";
        world.home().folder("disk/fill");
        std::ofstream(disk.path() + "/fill/all", std::ios::binary) << std::string(2U << 20U, 'x');
        EXPECT_EQ(clean({file}).failures,
                  (std::vector<CleanFailure>{{file, SystemError::posix(ENOSPC).localizedDescription}}));
        EXPECT_EQ(contentsOf(file), "bytes");
        EXPECT_EQ(namesIn(disk.appendingPathComponent(ownTrash() + "/info")).size(), 1U);
    });
}

TEST(TrashMount, aMountPointIsNotMoved) {
    const TrashWorld world;
    const URL disk = world.home().folder("disk");
    withOwnMounts([&] {
        mountTmpfs(disk);
        world.home().file("disk/x", "bytes");
        EXPECT_EQ(clean({disk}).failures,
                  (std::vector<CleanFailure>{{disk, SystemError::posix(EBUSY).localizedDescription}}));
        EXPECT_EQ(contentsOf(world / "disk/x"), "bytes");
        EXPECT_TRUE(world.notes().empty());
    });
}

TEST(TrashMount, whatIsToComeBackAcrossFileSystemsStaysPendingInTheTrash) {
    const TrashWorld world;
    const URL disk = world.home().folder("disk");
    withOwnMounts([&] {
        mountTmpfs(disk);
        const CleanResult result = clean({world.home().file("disk/x", "bytes")});
        const TrashedEntry elsewhere{world / "x", result.restorable.at(0).trashed};
        const RestoreResult back = Cleaner().restore(std::vector{elsewhere});
        EXPECT_EQ(back.failures,
                  (std::vector<CleanFailure>{{elsewhere.original, SystemError::posix(EXDEV).localizedDescription}}));
        EXPECT_EQ(back.pending, std::vector{elsewhere});
        EXPECT_EQ(contentsOf(elsewhere.trashed), "bytes");
        EXPECT_FALSE(somethingAt(elsewhere.original));
    });
}

TEST(TrashMount, removingForGoodEmptiesNoFileSystemBehindAMountPoint) {
    const TrashWorld world;
    const URL folder = world.home().folder("folder");
    const URL disk = world.home().folder("folder/disk");
    withOwnMounts([&] {
        mountTmpfs(disk);
        const URL dear = world.home().file("folder/disk/dear", "dear");
        world.home().file("folder/x");
        const CleanResult result = Cleaner().removePermanently(std::vector{folder}, [](const ScanProgress&) {});
        EXPECT_EQ(result.failures,
                  (std::vector<CleanFailure>{{folder, SystemError::posix(EXDEV).localizedDescription}}));
        EXPECT_EQ(contentsOf(dear), "dear");
        EXPECT_FALSE(somethingAt(world / "folder/x"));
    });
}

}  // namespace
}  // namespace tavrin
