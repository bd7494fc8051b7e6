// Dates of files on mounts that don't keep them all.
#include "Support/OwnMounts.h"
#include "Support/TestFolder.h"
#include "TavrinCore/Platform/FileStatus.h"
#include "TavrinCore/Scanning/FileSystemUtils.h"

#include <gtest/gtest.h>

namespace tavrin {
namespace {

using test::TestFolder;

std::optional<Date> accessedInWalk(const URL& folder) {
    std::optional<Date> accessed;
    FileSystemUtils::enumerateRegularFiles(folder, {}, nullptr, neverCancelled,
                                           [&](const FileInfo& file) { accessed = file.accessed; });
    return accessed;
}

TEST(MountOptions, anAccessDateThatIsNotKeptIsNone) {
    const TestFolder world;
    const URL disk = world.folder("disk");
    test::withOwnMounts([&] {
        test::mountTmpfs(disk);
        test::makeNoatime(disk);
        const URL kept = world.file("kept/f");
        EXPECT_TRUE(fileStatus(kept)->accessed);
        EXPECT_TRUE(accessedInWalk(world / "kept"));

        const URL file = world.file("disk/f");
        EXPECT_FALSE(fileStatus(file)->accessed);
        EXPECT_TRUE(fileStatus(file)->modified);
        EXPECT_FALSE(accessedInWalk(disk));
        EXPECT_TRUE(fileStatus(kept)->accessed) << "each mount for itself";
    });
}

TEST(MountOptions, aMountThatIsToldOtherwiseIsNoticedByTheNextWalk) {
    const TestFolder world;
    const URL disk = world.folder("disk");
    test::withOwnMounts([&] {
        test::mountTmpfs(disk);
        world.file("disk/f");
        EXPECT_TRUE(accessedInWalk(disk));
        test::makeNoatime(disk);
        EXPECT_FALSE(accessedInWalk(disk));
    });
}

}  // namespace
}  // namespace tavrin
