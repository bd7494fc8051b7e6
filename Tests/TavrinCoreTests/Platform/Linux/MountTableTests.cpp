// What the kernel says of mounts, and which of them a walk keeps out of.
#include "Support/OwnMounts.h"
#include "Support/TestFolder.h"
#include "TavrinCore/Platform/Linux/MountTable.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <string>

namespace tavrin {
namespace {

using test::TestFolder;
using testing::ElementsAre;
using testing::IsEmpty;

TEST(MountTable, aLineHasNumberPointKindAndOptions) {
    EXPECT_THAT(
        parseMounts("22 1 254:0 / / rw,relatime shared:1 - ext4 /dev/vda rw\n"
                    "35 22 0:31 / /home/me/far\\040away rw,noatime shared:3 master:1 - nfs4 host:/x rw,vers=4.2\n"
                    "36 22 0:32 / /home/a\\134b rw - fuse.sshfs me@host: rw\n"
                    "37 22 0:33 / /slow rw - ext4 /dev/vdb rw,noatime"),
        ElementsAre(Mount{.id = 22, .point = "/"},
                    Mount{.id = 35, .point = "/home/me/far away", .isNoatime = true, .mayWait = true},
                    Mount{.id = 36, .point = "/home/a\\b", .mayWait = true},
                    Mount{.id = 37, .point = "/slow", .isNoatime = true}));
}

TEST(MountTable, whatIsNoLineOfMountsIsPassedOver) {
    EXPECT_THAT(parseMounts(""), IsEmpty());
    EXPECT_THAT(parseMounts("\n\nx\n22\n22 1 254:0 / / rw\n22 1 254:0 / relative rw - ext4 x rw\n22 1 0:1 / / rw -"),
                IsEmpty());
}

TEST(MountTable, whatStandsOnAServerOrInAProgramMayWait) {
    for (const char* kind : {"nfs", "nfs4", "cifs", "smb3", "autofs", "9p", "afs", "ceph", "fuse", "fuse.sshfs",
                             "fuse.gvfsd-fuse", "fuse.rclone", "fuse.portal"})
        EXPECT_TRUE(mayWait(kind)) << kind;
    for (const char* kind : {"ext4", "btrfs", "xfs", "zfs", "vfat", "exfat", "ntfs3", "fuseblk", "tmpfs", "overlay",
                             "squashfs", "virtiofs", "fuse.gocryptfs", "fuse.encfs", "fuse.cryfs", "nfsd"})
        EXPECT_FALSE(mayWait(kind)) << kind;
}

TEST(MountTable, waitingMountsAreThoseBelowTheFolderInItsOwnWords) {
    const std::vector<Mount> mounts{{.point = "/"},
                                    {.point = "/home/me", .mayWait = true},
                                    {.point = "/home/me/far", .mayWait = true},
                                    {.point = "/home/me/near"},
                                    {.point = "/home/me/near/deep/far", .mayWait = true},
                                    {.point = "/home/men/far", .mayWait = true}};
    EXPECT_THAT(waitingMountsBelow("/home/me", mounts), ElementsAre("far", "near/deep/far"));
    EXPECT_THAT(waitingMountsBelow("/home/men/far", mounts), IsEmpty()) << "the folder itself isn't judged";
    EXPECT_THAT(waitingMountsBelow("/", mounts),
                ElementsAre("home/me", "home/me/far", "home/me/near/deep/far", "home/men/far"));
}

TEST(MountTable, whatWasMountedLastAtAPointCounts) {
    const Mount onDemand{.point = "/home/data", .mayWait = true};
    const Mount disk{.point = "/home/data"};
    EXPECT_THAT(waitingMountsBelow("/home", {onDemand, disk}), IsEmpty());
    EXPECT_THAT(waitingMountsBelow("/home", {disk, onDemand}), ElementsAre("data"));
}

TEST(MountTable, isReadAnewWhenSomethingIsMounted) {
    const TestFolder world;
    const URL disk = world.folder("a disk");
    test::withOwnMounts([&] {
        const auto isMounted = [&] {
            const auto mounts = currentMounts();
            return std::ranges::find(*mounts, disk.path(), &Mount::point) != mounts->end();
        };
        EXPECT_FALSE(isMounted());
        test::mountTmpfs(disk);
        EXPECT_TRUE(isMounted());
        EXPECT_EQ(currentMounts(), currentMounts()) << "not read twice";
    });
}

}  // namespace
}  // namespace tavrin
