#include "Support/OrdinaryUser.h"
#include "Support/TestFolder.h"
#include "TavrinCore/Scanning/FileSystemUtils.h"

#include <fcntl.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

#include <array>
#include <string>
#include <vector>

namespace tavrin {
namespace {

using test::OrdinaryUser;
using test::ScopedVariable;
using test::setMode;
using test::TestFolder;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::UnorderedElementsAre;

/// What the file occupies, by the system's own word.
std::int64_t occupied(const URL& url) {
    struct stat status {};
    EXPECT_EQ(::lstat(url.path().c_str(), &status), 0) << url.path();
    return status.st_blocks * 512;
}

struct Walk {
    std::vector<FileInfo> files;
    AccessDenials denials;

    explicit Walk(const URL& root, EnumerationOptions options = {},
                  const CancellationCallback& isCancelled = neverCancelled) {
        FileSystemUtils::enumerateRegularFiles(root, options, &denials, isCancelled,
                                               [&](const FileInfo& file) { files.push_back(file); });
    }
    std::vector<std::string> names() const {
        std::vector<std::string> names;
        for (const FileInfo& file : files)
            names.emplace_back(file.url.lastPathComponent());
        return names;
    }
};

TEST(FileSystemUtils, homeIsReadEachTimeAndLibraryLiesInIt) {
    const ScopedVariable first("HOME", "/somewhere");
    EXPECT_EQ(FileSystemUtils::home(), URL::fromPath("/somewhere/"));
    EXPECT_EQ(FileSystemUtils::homeLibrary(), URL::fromPath("/somewhere/Library/"));
    EXPECT_EQ(FileSystemUtils::homeLibrary({"Caches", "com.foo"}).path(), "/somewhere/Library/Caches/com.foo");
    const ScopedVariable second("HOME", "/elsewhere");
    EXPECT_EQ(FileSystemUtils::home().path(), "/elsewhere");
}

TEST(FileSystemUtils, aDanglingLinkCountsAsMissing) {
    const TestFolder world;
    EXPECT_TRUE(FileSystemUtils::exists(world.url()));
    EXPECT_TRUE(FileSystemUtils::exists(world.file("file")));
    EXPECT_TRUE(FileSystemUtils::exists(world.link("link", "file")));
    EXPECT_FALSE(FileSystemUtils::exists(world.link("dangling", "nowhere")));
    EXPECT_FALSE(FileSystemUtils::exists(world / "nothing"));
}

TEST(FileSystemUtils, anEmptyReadableFolderIsOfNoSizeAndNotRefused) {
    const TestFolder world;
    const URL empty = world.folder("empty");
    const Walk walk(empty, {.descendIntoPackages = true, .includeHidden = true});
    EXPECT_THAT(walk.files, IsEmpty());
    EXPECT_TRUE(walk.denials.isEmpty());
    AccessDenials denials;
    EXPECT_EQ(FileSystemUtils::size(empty, &denials), 0);
    EXPECT_TRUE(denials.isEmpty());
}

TEST(FileSystemUtils, aFolderWithoutReadPermissionVisitsNothingAndIsRecorded) {
    const TestFolder world;
    const URL locked = world.folder("locked");
    world.file("locked/inside");
    setMode(locked, 0000);
    const OrdinaryUser user;
    const Walk walk(locked);
    EXPECT_THAT(walk.files, IsEmpty());
    EXPECT_THAT(walk.denials.all(), ElementsAre(locked));
    AccessDenials denials;
    EXPECT_EQ(FileSystemUtils::size(locked, &denials), 0);
    EXPECT_THAT(FileSystemUtils::children(locked, true, &denials), IsEmpty());
    EXPECT_THAT(denials.all(), ElementsAre(locked));
}

TEST(FileSystemUtils, anUnreadableSubfolderIsRecordedAndTheFilesAroundItAreVisited) {
    const TestFolder world;
    world.file("before");
    world.file("sub/open/after");
    const URL locked = world.folder("sub/locked");
    world.file("sub/locked/inside");
    setMode(locked, 0000);
    const OrdinaryUser user;
    const Walk walk(world.url());
    EXPECT_THAT(walk.names(), UnorderedElementsAre("before", "after"));
    EXPECT_THAT(walk.denials.all(), ElementsAre(locked));
}

TEST(FileSystemUtils, anEmptyWalkOfALinkToAForbiddenFolderIsRecordedByTheProbe) {
    const TestFolder world;
    setMode(world.folder("locked"), 0000);
    const URL link = world.link("link", "locked");
    const OrdinaryUser user;
    EXPECT_THAT(Walk(link).denials.all(), ElementsAre(link));
}

TEST(FileSystemUtils, aFolderThatMayBeListedButNotEnteredYieldsNothingInSilence) {
    const TestFolder world;
    const URL folder = world.folder("listed");
    world.file("listed/file");
    setMode(folder, 0444);
    const OrdinaryUser user;
    const Walk walk(folder);
    EXPECT_THAT(walk.files, IsEmpty());
    EXPECT_TRUE(walk.denials.isEmpty());
}

TEST(FileSystemUtils, withoutARecordARefusalIsSilent) {
    const TestFolder world;
    const URL locked = world.folder("locked");
    setMode(locked, 0000);
    const OrdinaryUser user;
    EXPECT_EQ(FileSystemUtils::size(locked), 0);
    EXPECT_THAT(FileSystemUtils::children(locked, true), IsEmpty());
}

TEST(FileSystemUtils, aLinkIsNeverVisitedNorFollowedAndItsTargetNeverCounts) {
    const TestFolder world;
    const TestFolder outside;
    const URL folder = world.folder("folder");
    const URL file = world.file("folder/file");
    outside.fileOfSize("large", 1'000'000);
    world.link("folder/toFile", (outside / "large").path());
    world.link("folder/toFolder", outside.path());
    world.link("folder/loop", ".");
    EXPECT_THAT(Walk(folder).names(), ElementsAre("file"));
    EXPECT_EQ(FileSystemUtils::size(folder), occupied(file));
}

TEST(FileSystemUtils, aLinkToAFolderCostsOnlyItself) {
    const TestFolder world;
    world.fileOfSize("folder/large", 1'000'000);
    const URL link = world.link("link", "folder");
    EXPECT_EQ(FileSystemUtils::size(link), occupied(link));
    EXPECT_LT(FileSystemUtils::size(link), 10'000);
}

TEST(FileSystemUtils, aBundleYieldsNoneOfItsFilesAndIsMeasuredWithAllOfThem) {
    const TestFolder world;
    const URL shown = world.fileOfSize("Foo.App/Contents/binary", 20'000);
    const URL hidden = world.fileOfSize("Foo.App/.hidden/.data", 30'000);
    const URL beside = world.file("beside");
    EXPECT_THAT(Walk(world.url()).names(), ElementsAre("beside"));
    EXPECT_THAT(Walk(world.url(), {.descendIntoPackages = true}).names(), UnorderedElementsAre("beside", "binary"));
    EXPECT_EQ(FileSystemUtils::size(world / "Foo.App"), occupied(shown) + occupied(hidden));
    EXPECT_EQ(FileSystemUtils::size(world.url()), occupied(shown) + occupied(hidden) + occupied(beside));
}

TEST(FileSystemUtils, hiddenFilesAndFoldersAreSkippedUnlessAskedFor) {
    const TestFolder world;
    world.file("shown");
    world.file(".hidden");
    world.file(".folder/inside");
    EXPECT_THAT(Walk(world.url()).names(), ElementsAre("shown"));
    EXPECT_THAT(Walk(world.url(), {.includeHidden = true}).names(), UnorderedElementsAre("shown", ".hidden", "inside"));
    EXPECT_THAT(Walk(world / ".folder").names(), ElementsAre("inside"));
}

TEST(FileSystemUtils, whatDoesNotExistIsOfNoSize) {
    const TestFolder world;
    AccessDenials denials;
    EXPECT_EQ(FileSystemUtils::size(world / "nothing", &denials), 0);
    EXPECT_THAT(Walk(world / "nothing").files, IsEmpty());
    EXPECT_TRUE(denials.isEmpty());
    EXPECT_TRUE(Walk(world / "nothing").denials.isEmpty());
}

TEST(FileSystemUtils, theMeasureIsWhatAFileOccupiesAtEachOfItsPaths) {
    const TestFolder world;
    const URL full = world.fileOfSize("full", 100'000);
    EXPECT_EQ(FileSystemUtils::size(full), occupied(full));
    EXPECT_GE(FileSystemUtils::size(full), 100'000);
    const URL sparse = world.file("sparse", "");
    ASSERT_EQ(::truncate(sparse.path().c_str(), 1'000'000'000), 0);
    EXPECT_LT(FileSystemUtils::size(sparse), 10'000);
    ASSERT_EQ(::link(full.path().c_str(), (world / "again").path().c_str()), 0);
    EXPECT_EQ(FileSystemUtils::size(world.url()), 2 * occupied(full) + occupied(sparse));
}

TEST(FileSystemUtils, aFileIsHandedOverWithItsMeasureAndItsDates) {
    const TestFolder world;
    const URL file = world.fileOfSize("file", 5'000);
    const std::array<timespec, 2> times{{{1'000'000'000, 250'000'000}, {1'100'000'000, 500'000'000}}};
    ASSERT_EQ(::utimensat(AT_FDCWD, file.path().c_str(), times.data(), 0), 0);
    EXPECT_THAT(Walk(world.url()).files, ElementsAre(FileInfo{.url = file,
                                                              .size = occupied(file),
                                                              .modified = Date::fromUnix(1'100'000'000, 500'000'000),
                                                              .accessed = Date::fromUnix(1'000'000'000, 250'000'000)}));
}

TEST(FileSystemUtils, aWalkStopsAtTheEntryAfterTheCancellation) {
    const TestFolder world;
    for (int i = 0; i < 10; ++i)
        world.file("file" + std::to_string(i));
    int polls = 0;
    const Walk walk(world.url(), {}, [&] { return ++polls > 3; });
    EXPECT_EQ(walk.files.size(), 3U);
    EXPECT_EQ(polls, 4);
    EXPECT_TRUE(walk.denials.isEmpty());
}

TEST(FileSystemUtils, aCancelledSizeIsTheSumSoFar) {
    const TestFolder world;
    const std::int64_t one = occupied(world.fileOfSize("a", 4'000));
    for (const char* name : {"b", "c", "d"})
        world.fileOfSize(name, 4'000);
    int polls = 0;
    EXPECT_EQ(FileSystemUtils::size(world.url(), nullptr, [&] { return ++polls > 2; }), 2 * one);
}

TEST(FileSystemUtils, childrenAreTheDirectOnesAndFoldersBearTheirMark) {
    const TestFolder world;
    const URL folder = world.folder("folder");
    world.file("folder/deep");
    const URL file = world.file("file");
    const URL link = world.link("link", "folder");
    const URL hidden = world.file(".hidden");
    EXPECT_THAT(FileSystemUtils::children(world.url(), false), UnorderedElementsAre(folder, file, link));
    EXPECT_THAT(FileSystemUtils::children(world.url(), true), UnorderedElementsAre(folder, file, link, hidden));
    EXPECT_THAT(FileSystemUtils::children(link, false), ElementsAre(link.appendingPathComponent("deep")));
    AccessDenials denials;
    EXPECT_THAT(FileSystemUtils::children(file, false, &denials), IsEmpty());
    EXPECT_THAT(FileSystemUtils::children(world / "nothing", false, &denials), IsEmpty());
    EXPECT_TRUE(denials.isEmpty());
}

TEST(FileSystemUtils, onlyAMissingPermissionIsAPermissionDenied) {
    const TestFolder world;
    const URL locked = world.folder("locked");
    setMode(locked, 0000);
    const OrdinaryUser user;
    EXPECT_TRUE(FileSystemUtils::isPermissionDenied(locked));
    EXPECT_FALSE(FileSystemUtils::isPermissionDenied(world.url()));
    EXPECT_FALSE(FileSystemUtils::isPermissionDenied(world / "nothing"));
    EXPECT_FALSE(FileSystemUtils::isPermissionDenied(world.file("file")));
}

TEST(FileSystemUtils, onlyAFolderItselfIsAFolder) {
    const TestFolder world;
    world.file("file");
    world.link("link", "folder");
    EXPECT_TRUE(FileSystemUtils::isFolder(world.folder("folder")));
    for (const char* name : {"file", "link", "missing"})
        EXPECT_FALSE(FileSystemUtils::isFolder(world / name)) << name;
}

TEST(FileSystemUtils, existingFoldersAreThoseThatAreThereInTheOrderOfTheirNames) {
    const TestFolder world;
    const URL second = world.folder("b");
    const URL first = world.folder("d");
    world.link("dangling", "nowhere");
    constexpr std::array<std::string_view, 4> names{"d", "a", "dangling", "b"};
    EXPECT_THAT(FileSystemUtils::existingFolders(world.url(), names), ElementsAre(first, second));
}

TEST(FileSystemUtils, aCancelledListingEndsAtOnce) {
    const TestFolder world;
    for (int i = 0; i < 20; ++i)
        world.file("folder/" + std::to_string(i));
    int polls = 0;
    const auto afterThree = [&polls] { return ++polls > 3; };
    EXPECT_EQ(FileSystemUtils::children(world / "folder", false, nullptr, afterThree).size(), 3U);
    EXPECT_EQ(polls, 4);
}

TEST(FileSystemUtils, aRootThatIsALinkIsWalkedUnderItsOwnName) {
    const TestFolder world;
    world.file("disk/docs/letter");
    world.file("disk/docs/deep/er");
    world.file("other/file");
    world.link("disk/docs/link", "../../other");
    const URL root = world.link("Documents", "disk/docs");
    std::vector<std::string> found;
    FileSystemUtils::enumerateRegularFiles(root, {}, nullptr, neverCancelled, [&](const FileInfo& file) {
        found.push_back(file.url.path().substr(world.path().size() + 1));
    });
    EXPECT_THAT(found, testing::UnorderedElementsAre("Documents/letter", "Documents/deep/er"));
}

TEST(FileSystemUtils, distinctRootsAreTheRootsWithoutLinksThatLeadWhereAnotherLeads) {
    const TestFolder world;
    for (const char* folder : {"Downloads/docs", "Music", "disk/docs", "disk/more"})
        world.folder(folder);
    const auto left = [&](const std::vector<std::string>& names) {
        std::vector<URL> roots;
        for (const std::string& name : names)
            roots.push_back(world / name);
        std::vector<std::string> paths;
        for (const URL& root : FileSystemUtils::distinctRoots(roots))
            paths.push_back(root.path().substr(world.path().size() + 1));
        return paths;
    };
    world.link("away", "disk/docs");
    world.link("away too", "disk/docs");
    world.link("same", "Music");
    world.link("inside", "Downloads/docs");
    world.link("above", ".");
    world.link("dangling", "nowhere");
    using testing::ElementsAre;
    EXPECT_THAT(left({"Downloads", "away", "Music"}), ElementsAre("Downloads", "away", "Music"));
    EXPECT_THAT(left({"away", "away too"}), ElementsAre("away"));
    EXPECT_THAT(left({"same", "Music"}), ElementsAre("Music")) << "the folder itself, whichever comes first";
    EXPECT_THAT(left({"inside", "Downloads"}), ElementsAre("Downloads"));
    EXPECT_THAT(left({"above", "Music"}), ElementsAre("Music"));
    EXPECT_THAT(left({"dangling", "Music"}), ElementsAre("dangling", "Music"));
    EXPECT_THAT(left({"Downloads", "Downloads/docs"}), ElementsAre("Downloads", "Downloads/docs"))
        << "folders are left as they were asked for";
    world.link("inner", "disk/docs");
    world.link("outer", "disk");
    EXPECT_THAT(left({"inner", "outer"}), ElementsAre("outer")) << "the outer one has all";
    EXPECT_THAT(left({"above", "inner", "Music"}), ElementsAre("inner", "Music"))
        << "what isn't scanned itself takes nothing from others";
}

TEST(FileSystemUtils, aLinkToTheHomeOrIntoTheLibraryIsNoRoot) {
    const TestFolder world;
    const test::ScopedVariable home("HOME", (world / "home").path().c_str());
    world.folder("home/Library/Caches");
    world.folder("disk");
    std::vector<URL> roots;
    for (const char* target : {".", "..", "Library", "Library/Caches"})
        roots.push_back(world.link("home/to " + std::to_string(roots.size()), target));
    roots.push_back(world.link("home/Documents", "../disk"));
    EXPECT_THAT(FileSystemUtils::distinctRoots(roots), testing::ElementsAre(roots.back()));
}

}  // namespace
}  // namespace tavrin
