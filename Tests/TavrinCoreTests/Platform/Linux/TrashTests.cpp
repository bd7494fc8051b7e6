// What lies in the Trash after a move, and what the Trash refuses.
#include "Support/OrdinaryUser.h"
#include "Support/Snapshot.h"
#include "Support/TrashWorld.h"
#include "TavrinCore/Platform/Linux/TrashInfo.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/socket.h>
#include <sys/stat.h>
#include <sys/un.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <filesystem>
#include <set>
#include <string>
#include <vector>

namespace tavrin {
namespace {

using test::clean;
using test::contentsOf;
using test::entryAt;
using test::snapshotOf;
using test::somethingAt;
using test::TrashWorld;

Result<std::optional<URL>> trash(const URL& url) {
    FileEffects& effects = systemFileEffects();
    Result<std::unique_ptr<HeldItem>> held = effects.hold(url);
    if (!held) return held.error();
    return effects.trashItem(**held);
}

int errorOfTrashing(const URL& url) {
    const Result<std::optional<URL>> result = trash(url);
    return result ? 0 : result.error().code;
}

TEST(Trash, itsFoldersAreMadeForTheUserAlone) {
    const TrashWorld world;
    ASSERT_EQ(errorOfTrashing(world.home().file("a")), 0);
    for (const char* folder : {"data", "data/Trash", "data/Trash/files", "data/Trash/info"})
        EXPECT_EQ(snapshotOf(world / folder).at("").mode & 07777U, 0700U) << folder;
    EXPECT_EQ(snapshotOf(world.note("a")).at("").mode & 07777U, 0600U);
}

TEST(Trash, namesakesGetNamesOfTheirOwnAndKeepTheirExtension) {
    const TrashWorld world;
    std::vector<TrashedEntry> entries;
    for (int i = 0; i < 20; ++i) {
        const URL file = world.home().file("folder" + std::to_string(i) + "/x.txt", std::to_string(i));
        const CleanResult result = clean({file});
        ASSERT_EQ(result.restorable.size(), 1U);
        entries.push_back(result.restorable[0]);
        EXPECT_EQ(world.notedOrigin(entries.back().trashed.lastPathComponent()), file.path());
        EXPECT_EQ(entries.back().trashed.pathExtension(), "txt");
    }
    EXPECT_EQ(world.files().size(), 20U);
    EXPECT_EQ(Cleaner().restore(entries).restored, 20);
    for (int i = 0; i < 20; ++i)
        EXPECT_EQ(contentsOf(world / ("folder" + std::to_string(i) + "/x.txt")), std::to_string(i));
}

TEST(Trash, anOrphanWithoutANoteIsNeitherReplacedNorGivenOne) {
    const TrashWorld world;
    world.home().file("data/Trash/files/x", "orphan");
    const CleanResult result = clean({world.home().file("x", "mine")});
    ASSERT_EQ(result.restorable.size(), 1U);
    EXPECT_EQ(contentsOf(world.file("x")), "orphan");
    EXPECT_FALSE(somethingAt(world.note("x")));
    EXPECT_EQ(contentsOf(result.restorable[0].trashed), "mine");
}

TEST(Trash, aNoteWithoutItsItemIsLeftAlone) {
    const TrashWorld world;
    world.home().file("data/Trash/info/x.trashinfo", "[Trash Info]\nPath=/elsewhere/x\n");
    const CleanResult result = clean({world.home().file("x", "mine")});
    ASSERT_EQ(result.restorable.size(), 1U);
    EXPECT_NE(result.restorable[0].trashed.lastPathComponent(), "x");
    EXPECT_EQ(world.notedOrigin("x"), "/elsewhere/x");
}

TEST(Trash, namesOfAnyBytesAndOfFullLengthGoAndComeBack) {
    for (const std::string& name : {std::string("a b"), std::string("a\nb"), std::string("100%"),
                                    std::string("\xFF\xFE"), std::string(255, 'x'), std::string(251, 'x') + ".txt",
                                    std::string("-rf"), std::string("x.trashinfo"), std::string("[Trash Info]")}) {
        const TrashWorld world;
        const URL file = world.home().file("folder/" + name, "bytes");
        const CleanResult result = clean({file});
        ASSERT_EQ(result.restorable.size(), 1U) << name;
        EXPECT_EQ(world.notedOrigin(result.restorable[0].trashed.lastPathComponent()), file.path());
        EXPECT_EQ(Cleaner().restore(result.restorable).restored, 1) << name;
        EXPECT_EQ(contentsOf(file), "bytes");
        EXPECT_TRUE(world.notes().empty()) << name;
    }
}

TEST(Trash, aDanglingLinkIsMovedAsItIs) {
    const TrashWorld world;
    const URL link = world.home().link("link", "nowhere");
    const Result<std::optional<URL>> trashed = trash(link);
    ASSERT_TRUE(trashed.ok());
    EXPECT_EQ(snapshotOf(**trashed).at("").contents, "nowhere");
    EXPECT_TRUE(systemFileEffects().putBack(**trashed, link).ok());
    EXPECT_EQ(snapshotOf(link).at("").contents, "nowhere");
}

TEST(Trash, pipesAndSocketsAreMovedAndNeverOpened) {
    const TrashWorld world;
    const URL pipe = world / "pipe";
    ASSERT_EQ(::mkfifo(pipe.path().c_str(), 0600), 0);
    const URL socket = world / "socket";
    ASSERT_EQ(::mknod(socket.path().c_str(), S_IFSOCK | 0600, 0), 0);
    const CleanResult result = clean({pipe, socket});
    EXPECT_EQ(result.restorable.size(), 2U);
    EXPECT_EQ(Cleaner().restore(result.restorable).restored, 2);
    EXPECT_EQ(snapshotOf(pipe).at("").mode & S_IFMT, static_cast<unsigned>(S_IFIFO));
    EXPECT_EQ(snapshotOf(socket).at("").mode & S_IFMT, static_cast<unsigned>(S_IFSOCK));
}

TEST(Trash, anItemDeeperThanAnyPathReachesGoesAndComesBack) {
    const TrashWorld world;
    const std::string name(200, 'n');
    std::string path = world.home().path();
    int folder = ::open(path.c_str(), O_PATH | O_DIRECTORY | O_CLOEXEC);
    for (int depth = 0; depth < 60; ++depth) {
        ASSERT_EQ(::mkdirat(folder, name.c_str(), 0700), 0);
        const int next = ::openat(folder, name.c_str(), O_PATH | O_DIRECTORY | O_CLOEXEC);
        ::close(folder);
        folder = next;
        path += "/" + name;
    }
    ::close(::openat(folder, "leaf", O_CREAT | O_WRONLY | O_CLOEXEC, 0600));
    const URL leaf = URL::fromPath(path + "/leaf");
    const CleanResult result = clean({leaf});
    ASSERT_EQ(result.restorable.size(), 1U);
    EXPECT_EQ(world.notedOrigin("leaf"), leaf.path());
    EXPECT_NE(::faccessat(folder, "leaf", F_OK, AT_SYMLINK_NOFOLLOW), 0);
    EXPECT_EQ(Cleaner().restore(result.restorable).restored, 1);
    EXPECT_EQ(::faccessat(folder, "leaf", F_OK, AT_SYMLINK_NOFOLLOW), 0);
    ::close(folder);
}

TEST(Trash, aReadOnlyFolderOfOnesOwnGoesAndComesBackWithItsMode) {
    const TrashWorld world;
    const URL folder = world.home().folder("folder");
    world.home().file("folder/inner");
    for (const unsigned mode : {0555U, 0500U, 0000U, 01555U, 02555U}) {
        test::setMode(folder, mode);
        const auto before = entryAt(folder);
        {
            const test::OrdinaryUser user;
            const CleanResult result = clean({folder});
            ASSERT_EQ(result.restorable.size(), 1U) << std::oct << mode;
            EXPECT_EQ(entryAt(result.restorable[0].trashed), before) << std::oct << mode;
            EXPECT_EQ(Cleaner().restore(result.restorable).restored, 1) << std::oct << mode;
        }
        EXPECT_EQ(entryAt(folder), before) << std::oct << mode;
    }
}

TEST(Trash, anItemInAFolderThatMayNotBeWrittenToIsRefusedAndStays) {
    const TrashWorld world;
    const URL file = world.home().file("locked/file");
    const URL inner = world.home().folder("locked/inner");
    test::setMode(inner, 0555);
    test::setMode(world / "locked", 0555);
    const test::OrdinaryUser user;
    for (const URL& url : {file, inner}) {
        EXPECT_EQ(errorOfTrashing(url), EACCES);
        EXPECT_TRUE(somethingAt(url));
    }
    EXPECT_EQ(snapshotOf(inner).at("").mode & 07777U, 0555U);
    EXPECT_TRUE(world.notes().empty());
    test::setMode(world / "locked", 0755);
}

TEST(Trash, aTrashThatMayNotBeWrittenToIsAFailureAndNothingMoves) {
    for (const char* locked : {"data/Trash/files", "data/Trash/info", "data/Trash", "data"}) {
        const TrashWorld world;
        const URL file = world.home().file("file", "bytes");
        world.home().folder(std::string_view(locked).size() > 10 ? "data/Trash/files" : locked);
        if (std::string_view(locked).size() > 10) world.home().folder("data/Trash/info");
        test::setMode(world / locked, 0555);
        {
            const test::OrdinaryUser user;
            EXPECT_EQ(errorOfTrashing(file), EACCES) << locked;
        }
        EXPECT_EQ(contentsOf(file), "bytes");
        EXPECT_TRUE(world.notes().empty()) << locked;
    }
}

TEST(Trash, neitherItselfNorWhatHoldsItNorWhatLiesInItIsMovedIntoIt) {
    const TrashWorld world;
    ASSERT_EQ(clean({world.home().file("x", "bytes")}).removedItems, 1);
    EXPECT_EQ(errorOfTrashing(world.file("x")), EALREADY);
    EXPECT_EQ(errorOfTrashing(world.note("x")), EINVAL);
    for (const char* folder : {"data/Trash/files", "data/Trash/info", "data/Trash", "data"})
        EXPECT_EQ(errorOfTrashing(world / folder), EINVAL) << folder;
    EXPECT_EQ(world.files(), std::vector<std::string>{"x"});
    EXPECT_EQ(world.notes(), std::vector<std::string>{"x.trashinfo"});
    EXPECT_EQ(world.notedOrigin("x"), (world / "x").path());
}

TEST(Trash, whatLiesInAnotherTrashIsRefusedToo) {
    const TrashWorld world;
    world.home().file("other/files/x", "bytes");
    world.home().file("other/info/x.trashinfo", "[Trash Info]\nPath=/a\n");
    EXPECT_EQ(errorOfTrashing(world / "other/files/x"), EALREADY);
    EXPECT_EQ(contentsOf(world / "other/files/x"), "bytes");
    world.home().file("other/files/y");
    EXPECT_EQ(errorOfTrashing(world / "other/files/y"), 0) << "a folder that is only called so is no Trash";
}

TEST(Trash, anItemInsideATrashedFolderMayGoByItself) {
    const TrashWorld world;
    world.home().file("folder/inner", "bytes");
    ASSERT_EQ(clean({world / "folder"}).removedItems, 1);
    EXPECT_EQ(errorOfTrashing(world.file("folder").appendingPathComponent("inner")), 0);
    EXPECT_EQ(world.notedOrigin("inner"), world.file("folder").path() + "/inner");
}

TEST(Trash, foldersOfItThatAreLinksAreNotTrusted) {
    for (const char* name : {"files", "info"}) {
        const TrashWorld world;
        world.home().folder("elsewhere");
        world.home().link(std::string("data/Trash/") + name, (world / "elsewhere").path());
        const URL file = world.home().file("file");
        EXPECT_EQ(errorOfTrashing(file), ENOTDIR) << name;
        EXPECT_TRUE(somethingAt(file));
        EXPECT_TRUE(world.notes().empty());
    }
}

TEST(Trash, putBackTakesTheNoteAwayAndNoOtherFile) {
    const TrashWorld world;
    const CleanResult result = clean({world.home().file("a"), world.home().file("b")});
    ASSERT_TRUE(systemFileEffects().putBack(result.restorable[0].trashed, world / "a").ok());
    EXPECT_EQ(world.notes(), std::vector<std::string>{"b.trashinfo"});
    world.home().file("plain/x");
    world.home().file("info/x.trashinfo");
    ASSERT_TRUE(systemFileEffects().putBack(world / "plain/x", world / "plain/y").ok());
    EXPECT_TRUE(somethingAt(world / "info/x.trashinfo")) << "not beside a Trash's folder of items";
}

TEST(Trash, aMissingNoteDoesNotKeepAnItemFromComingBack) {
    const TrashWorld world;
    const CleanResult result = clean({world.home().file("a", "bytes")});
    ASSERT_EQ(::unlink(world.note("a").path().c_str()), 0);
    EXPECT_EQ(Cleaner().restore(result.restorable).restored, 1);
    EXPECT_EQ(contentsOf(world / "a"), "bytes");
}

TEST(Trash, aNamesakeThatTookTheItemsPlaceIsNotPutBackForIt) {
    const TrashWorld world;
    const CleanResult result = clean({world.home().file("mine/x")});
    const TrashedEntry entry = result.restorable.at(0);
    // The Trash is emptied elsewhere, and another "x" gets the name that is free again.
    std::filesystem::remove(entry.trashed.path());
    std::filesystem::remove(world.note("x").path());
    clean({world.home().file("other/x", "dear")});
    ASSERT_TRUE(somethingAt(entry.trashed));

    const RestoreResult back = Cleaner().restore(std::vector{entry});
    EXPECT_EQ(back.restored, 0);
    EXPECT_EQ(back.pending, std::vector{entry});
    EXPECT_FALSE(somethingAt(world / "mine/x"));
    EXPECT_TRUE(somethingAt(entry.trashed));
    EXPECT_TRUE(somethingAt(world.note("x")));
}

TEST(Trash, whatWasReachedThroughALinkComesBackThroughIt) {
    const TrashWorld world;
    world.home().file("real/x");
    world.home().link("short", "real");
    const CleanResult result = clean({world / "short/x"});
    EXPECT_EQ(Cleaner().restore(result.restorable).restored, 1);
    EXPECT_TRUE(somethingAt(world / "real/x"));
}

TEST(Trash, whatWasReachedThroughALinkComesBackToAHomeThatIsALinkToo) {
    const TrashWorld world;
    world.home().file("nina/real/x");
    world.home().link("nina/short", "real");
    const URL home = world.home().link("here", "nina");
    const test::ScopedVariable variable("HOME", home.path().c_str());
    const CleanResult result = clean({home.appendingPathComponent("short/x")});
    EXPECT_EQ(world.notedOrigin("x"), (world / "here/real/x").path());
    EXPECT_EQ(Cleaner().restore(result.restorable).restored, 1);
    EXPECT_TRUE(somethingAt(world / "nina/real/x"));
}

TEST(Trash, pathsThatNameNoItemAreRefused) {
    const TrashWorld world;
    world.home().folder("a");
    for (const char* path : {"a/..", "a/."})
        EXPECT_EQ(errorOfTrashing(URL::fromPath(world.home().path() + "/" + path)), EINVAL) << path;
    EXPECT_EQ(errorOfTrashing(URL()), EINVAL);
    EXPECT_EQ(errorOfTrashing(world / "missing"), ENOENT);
    EXPECT_EQ(errorOfTrashing(world / "a/missing/x"), ENOENT);
}

}  // namespace
}  // namespace tavrin
