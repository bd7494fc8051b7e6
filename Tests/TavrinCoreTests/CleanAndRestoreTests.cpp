// The cleaner on a real disk: what it moves lies in the Trash, and comes back as it was.
#include "Support/Snapshot.h"
#include "Support/TrashWorld.h"
#include "TavrinCore/Cleaning/Cleaner.h"
#include "TavrinCore/Scanning/FileSystemUtils.h"
#include "TavrinCore/Strings.h"

#include <gtest/gtest.h>
#include <sys/stat.h>

#include <cerrno>
#include <string>
#include <vector>

namespace tavrin {
namespace {

using test::clean;
using test::contentsOf;
using test::snapshotOf;
using test::somethingAt;
using test::TrashWorld;

TEST(CleanAndRestore, anItemLiesInTheTrashWithItsOriginAndComesBackAsItWas) {
    const TrashWorld world;
    const URL folder = world.home().folder("Library/Caches/com.foo/inner").deletingLastPathComponent();
    world.home().file("Library/Caches/com.foo/inner/data", "bytes");
    world.home().link("Library/Caches/com.foo/link", "inner/data");
    const auto before = snapshotOf(folder);

    const CleanResult result = clean({folder});
    ASSERT_EQ(result.restorable.size(), 1U);
    EXPECT_EQ(result.restorable[0], (TrashedEntry{folder, URL::fromPath(world.file("com.foo").path(), true)}));
    EXPECT_FALSE(somethingAt(folder));
    EXPECT_EQ(world.notedOrigin("com.foo"), folder.path());
    EXPECT_EQ(snapshotOf(result.restorable[0].trashed), before);

    const RestoreResult back = Cleaner().restore(result.restorable);
    EXPECT_EQ(back, RestoreResult{.restored = 1});
    EXPECT_EQ(snapshotOf(folder), before);
    EXPECT_TRUE(world.files().empty());
    EXPECT_TRUE(world.notes().empty());
}

TEST(CleanAndRestore, theBytesAreMeasuredBeforeTheMove) {
    const TrashWorld world;
    const URL folder = world.home().folder("folder");
    world.home().fileOfSize("folder/big", 100'000);
    const std::int64_t size = FileSystemUtils::size(folder);
    EXPECT_GE(size, 100'000);
    EXPECT_EQ(clean({folder, world / "missing"}).reclaimedBytes, size);
}

TEST(CleanAndRestore, theFoldersThatHoldCachesAndDownloadsStayAndWhatLiesInThemGoes) {
    const TrashWorld world;
    world.home().file("Library/Caches/com.foo/x");
    world.home().file("Downloads/x.dmg");
    const CleanResult result = clean(
        {world / "Library/Caches", world / "Library/Caches/com.foo", world / "Downloads", world / "Downloads/x.dmg"});
    EXPECT_EQ(result.failures, (std::vector<CleanFailure>{{world / "Library/Caches", S::scanProtectedPath()},
                                                          {world / "Downloads", S::scanProtectedPath()}}));
    EXPECT_EQ(result.removedItems, 2);
    EXPECT_EQ(world.files(), (std::vector<std::string>{"com.foo", "x.dmg"}));
}

TEST(CleanAndRestore, aLinkOnTheWayToAProtectedFolderIsSeenThrough) {
    const TrashWorld world;
    world.home().folder("Documents");
    world.home().link("here", ".");
    const CleanResult result = clean({world / "here/Documents"});
    EXPECT_EQ(result.failures, (std::vector<CleanFailure>{{world / "here/Documents", S::scanProtectedPath()}}));
    EXPECT_TRUE(somethingAt(world / "Documents"));
}

TEST(CleanAndRestore, theRealFolderBehindAHomeThatIsALinkIsTheHome) {
    const TrashWorld world;
    world.home().file("real/Documents/x");
    world.home().link("nina", "real");
    const test::ScopedVariable home("HOME", (world / "nina").path().c_str());
    EXPECT_EQ(clean({world / "real/Documents"}).failures,
              (std::vector<CleanFailure>{{world / "real/Documents", S::scanProtectedPath()}}));
    EXPECT_EQ(clean({world / "nina/Documents/x"}).removedItems, 1);
    EXPECT_EQ(world.notedOrigin("x"), (world / "nina/Documents/x").path());
}

TEST(CleanAndRestore, aLinkGoesAsALinkAndItsTargetStays) {
    const TrashWorld world;
    world.home().file("target/x");
    const URL link = world.home().link("link", "target");
    const CleanResult result = clean({link});
    EXPECT_EQ(result.removedItems, 1);
    EXPECT_TRUE(somethingAt(world / "target/x"));
    EXPECT_EQ(Cleaner().restore(result.restorable).restored, 1)
        << "it dangles inside the Trash, and must come back all the same";
    EXPECT_EQ(snapshotOf(link).at("").contents, "target");
}

TEST(CleanAndRestore, aFolderAndAFileInsideItTrashedApartComeBackFolderFirst) {
    const TrashWorld world;
    const URL inner = world.home().file("folder/inner", "inside");
    const CleanResult result = clean({inner, inner.deletingLastPathComponent()});
    ASSERT_EQ(result.restorable.size(), 2U);
    const RestoreResult back = Cleaner().restore(result.restorable);
    EXPECT_EQ(back.restored, 2);
    EXPECT_EQ(contentsOf(inner), "inside");
}

TEST(CleanAndRestore, aParentChainThatIsGoneIsMadeAnewForTheUserAlone) {
    const TrashWorld world;
    const URL file = world.home().file("a/b/c/file", "bytes");
    const CleanResult result = clean({file});
    ASSERT_EQ(::rmdir((world / "a/b/c").path().c_str()), 0);
    ASSERT_EQ(::rmdir((world / "a/b").path().c_str()), 0);
    ASSERT_EQ(::rmdir((world / "a").path().c_str()), 0);
    EXPECT_EQ(Cleaner().restore(result.restorable).restored, 1);
    EXPECT_EQ(contentsOf(file), "bytes");
    for (const char* parent : {"a", "a/b", "a/b/c"})
        EXPECT_EQ(snapshotOf(world / parent).at("").mode, S_IFDIR | 0700U) << parent;
}

TEST(CleanAndRestore, anOccupiedOriginalStaysUntouchedAndTheEntryPending) {
    for (const char* kind : {"file", "folder", "dangling link"}) {
        const TrashWorld world;
        const URL file = world.home().file("file", "old");
        const CleanResult result = clean({file});
        if (std::string_view(kind) == "file") world.home().file("file", "new");
        if (std::string_view(kind) == "folder") world.home().folder("file");
        if (std::string_view(kind) == "dangling link") world.home().link("file", "nowhere");
        const auto occupant = snapshotOf(file);
        const RestoreResult back = Cleaner().restore(result.restorable);
        EXPECT_EQ(back.restored, 0) << kind;
        EXPECT_EQ(back.failures, (std::vector<CleanFailure>{{file, SystemError::posix(EEXIST).localizedDescription}}));
        EXPECT_EQ(back.pending, result.restorable);
        EXPECT_EQ(snapshotOf(file), occupant) << kind;
        EXPECT_EQ(contentsOf(world.file("file")), "old");
        EXPECT_EQ(world.notedOrigin("file"), file.path());
    }
}

TEST(CleanAndRestore, whatWasEmptiedFromTheTrashIsGoneAndSaysSo) {
    const TrashWorld world;
    const CleanResult result = clean({world.home().file("a"), world.home().file("b")});
    const CleanResult emptied =
        Cleaner().removePermanently(std::vector{result.restorable[0].trashed}, [](const ScanProgress&) {});
    EXPECT_EQ(emptied.removedItems, 1);
    EXPECT_TRUE(emptied.restorable.empty());
    const RestoreResult back = Cleaner().restore(result.restorable);
    EXPECT_EQ(back.restored, 1);
    EXPECT_EQ(back.failures, (std::vector<CleanFailure>{{world / "a", S::restoreGoneFromTrash()}}));
    EXPECT_EQ(back.pending, std::vector{result.restorable[0]});
}

}  // namespace
}  // namespace tavrin
