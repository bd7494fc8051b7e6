// The walker in trees that nobody made for it.
#include "Support/OrdinaryUser.h"
#include "Support/OwnMounts.h"
#include "Support/TestFolder.h"
#include "TavrinCore/Platform/DirectoryWalk.h"
#include "TavrinCore/Scanning/FileSystemUtils.h"
#include "WalkSupport.h"

#include <fcntl.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/socket.h>
#include <sys/stat.h>
#include <sys/sysmacros.h>
#include <sys/un.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <functional>
#include <map>
#include <stdexcept>
#include <string>

namespace tavrin {
namespace {

using namespace test;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::UnorderedElementsAre;

std::size_t openDescriptors() {
    std::size_t count = 0;
    for ([[maybe_unused]] const auto& descriptor : std::filesystem::directory_iterator("/proc/self/fd"))
        ++count;
    // The one that looks is among them.
    return count - 1;
}

/// As many as stay open whatever is walked: the first walk of a process keeps the table of mounts open.
std::size_t openDescriptorsOnceAnythingWasWalked() {
    const TestFolder other;
    other.folder("folder");
    WalkRecorder recorder(other.url());
    walkDirectory(other.url(), {}, recorder);
    return openDescriptors();
}

/// The most memory that this process ever held, in KiB.
long peakMemory() {
    std::ifstream status("/proc/self/status");
    for (std::string line; std::getline(status, line);) {
        if (line.starts_with("VmHWM:")) return std::stol(line.substr(6));
    }
    ADD_FAILURE() << "no VmHWM";
    return 0;
}

void resetPeakMemory() {
    std::ofstream("/proc/self/clear_refs") << '5';
}

/// Runs `body` in a process of its own, and gives the KiB by which its peak grew.
long memoryGrowth(const std::function<void()>& body) {
    const pid_t child = ::fork();
    if (child == 0) {
        resetPeakMemory();
        const long before = peakMemory();
        body();
        ::_exit(static_cast<int>(std::min(255L, (peakMemory() - before) / 256)));
    }
    int status = 0;
    EXPECT_EQ(::waitpid(child, &status, 0), child);
    EXPECT_TRUE(WIFEXITED(status));
    return long{WEXITSTATUS(status)} * 256;
}

/// Trees of that many entries take their time on a disk: they are made on a file system in memory.
void inMemory(const TestFolder& world, const std::function<void()>& body) {
    withOwnMounts([&] {
        mountTmpfs(world.url());
        body();
    });
}

TEST(DirectoryWalk, aFolderComesBeforeWhatLiesInIt) {
    const TestFolder world;
    world.file("a/b/c");
    WalkRecorder recorder(world.url());
    EXPECT_TRUE(walkDirectory(world.url(), {}, recorder));
    EXPECT_THAT(recorder.paths, ElementsAre("a", "a/b", "a/b/c"));
}

TEST(DirectoryWalk, entriesComeInTheOrderOfTheFileSystem) {
    const TestFolder world;
    for (int i = 0; i < 50; ++i)
        world.file("file" + std::to_string(i * 7919));
    std::vector<std::string> listed;
    for (const auto& entry : std::filesystem::directory_iterator(world.path()))
        listed.push_back(entry.path().filename().native());
    WalkRecorder recorder(world.url());
    walkDirectory(world.url(), {}, recorder);
    EXPECT_EQ(recorder.paths, listed);
}

TEST(DirectoryWalk, aSkippedFolderIsNotEnteredAndAStoppedWalkEnds) {
    const TestFolder world;
    world.file("a/b");
    WalkRecorder skipping(world.url());
    skipping.onVisit = [](WalkEntry&) { return WalkStep::skip; };
    EXPECT_TRUE(walkDirectory(world.url(), {}, skipping));
    EXPECT_THAT(skipping.paths, ElementsAre("a"));
    WalkRecorder stopping(world.url());
    stopping.onVisit = [](WalkEntry&) { return WalkStep::stop; };
    EXPECT_FALSE(walkDirectory(world.url(), {}, stopping));
    EXPECT_THAT(stopping.paths, ElementsAre("a"));
}

TEST(DirectoryWalk, anEntryTellsItsDepthAndWhetherItIsHidden) {
    const TestFolder world;
    world.file("a/.b");
    WalkRecorder recorder(world.url());
    std::vector<std::pair<std::size_t, bool>> told;
    recorder.onVisit = [&](WalkEntry& entry) {
        told.emplace_back(entry.depth(), entry.isHidden());
        return WalkStep::goOn;
    };
    walkDirectory(world.url(), {}, recorder);
    EXPECT_EQ(told, (std::vector<std::pair<std::size_t, bool>>{{1, false}, {2, true}}));
}

TEST(DirectoryWalk, anExceptionPassesThroughAndLeavesNothingOpen) {
    const TestFolder world;
    world.file("a/b/c");
    const std::size_t before = openDescriptorsOnceAnythingWasWalked();
    WalkRecorder recorder(world.url());
    recorder.onVisit = [](WalkEntry& entry) -> WalkStep {
        if (entry.depth() == 3) throw std::runtime_error("enough");
        return WalkStep::goOn;
    };
    EXPECT_THROW(walkDirectory(world.url(), {}, recorder), std::runtime_error);
    EXPECT_EQ(openDescriptors(), before);
}

TEST(DirectoryWalk, aRootThatIsALinkIsAFolderOnlyWhenAskedFor) {
    const TestFolder world;
    world.file("folder/file");
    const URL link = world.link("link", "folder");
    WalkRecorder keeping(link);
    walkDirectory(link, {}, keeping);
    EXPECT_THAT(keeping.paths, IsEmpty());
    EXPECT_EQ(keeping.failures.size(), 1U);
    WalkRecorder following(link);
    walkDirectory(link, {.rootLink = LastLink::follow}, following);
    EXPECT_THAT(following.paths, ElementsAre("file"));
}

TEST(DirectoryWalk, namesOfAnyBytesComeThroughUnharmed) {
    const TestFolder world;
    std::string all;
    for (int byte = 1; byte < 256; ++byte) {
        if (byte != '/' && byte != '.') all.push_back(static_cast<char>(byte));
    }
    const std::vector<std::string> names{all, "caf\xE9", "\xC3", "\n", " ", "...", "-rf", std::string(255, '\xFF')};
    for (const std::string& name : names)
        world.file(name + "/" + name);
    WalkRecorder recorder(world.url());
    walkDirectory(world.url(), {}, recorder);
    EXPECT_EQ(recorder.sortedPaths(), pathsBelow(world.url()));
    EXPECT_EQ(recorder.paths.size(), 2 * names.size());
}

/// A chain of folders with names of 255 bytes: its end has a path of more than a million.
void walkLongChain(const TestFolder& world) {
    constexpr std::size_t depth = 5'000;
    const URL last = makeChain(world.url(), depth, std::string(255, 'n'), [](int folder, std::size_t level) {
        if (level == depth) touch(folder, "bottom");
    });
    std::size_t entries = 0;
    std::size_t mostOpen = 0;
    URL bottom;
    WalkWatcher watcher([&](WalkEntry& entry) {
        EXPECT_EQ(entry.depth(), ++entries);
        if (entry.depth() % 500 == 0) mostOpen = std::max(mostOpen, openDescriptors());
        if (entry.type() == FileType::regular) bottom = entry.url();
        return WalkStep::goOn;
    });
    EXPECT_TRUE(walkDirectory(world.url(), {}, watcher));
    EXPECT_EQ(entries, depth + 1);
    EXPECT_LT(mostOpen, 100U);
    EXPECT_EQ(bottom, last.appendingPathComponent("bottom"));

    EXPECT_TRUE(FileSystemUtils::exists(bottom));
    EXPECT_EQ(FileSystemUtils::size(world.url()), 0);
    EXPECT_THAT(FileSystemUtils::children(last, true), ElementsAre(bottom));
    EXPECT_NE(FileSystemUtils::fullHash(bottom, 4096), std::nullopt);
    EXPECT_FALSE(FileSystemUtils::exists(last.appendingPathComponent("nothing")));
}

TEST(DirectoryWalk, aPathFarBeyondWhatTheKernelTakesIsWalkedAndMeasured) {
    const TestFolder world;
    inMemory(world, [&] { walkLongChain(world); });
}

void walkDeepTree(const TestFolder& world) {
    (void)makeChain(world.url(), 1'000, "d", [](int folder, std::size_t) {
        for (const char* name : {"a", "b", "e", "f"})
            touch(folder, name);
        EXPECT_EQ(::mkdirat(folder, "c", 0755), 0);
    });
    const std::size_t before = openDescriptorsOnceAnythingWasWalked();
    std::size_t mostOpen = 0;
    std::size_t entries = 0;
    WalkWatcher watcher([&](WalkEntry& entry) {
        ++entries;
        if (entry.depth() % 100 == 0) mostOpen = std::max(mostOpen, openDescriptors());
        EXPECT_NE(entry.status(), nullptr);
        return WalkStep::goOn;
    });
    walkDirectory(world.url(), {}, watcher);
    EXPECT_EQ(entries, 1'001U * 5 + 1'000);
    EXPECT_LE(mostOpen - before, 64U);
    EXPECT_GT(mostOpen, before);
    EXPECT_EQ(openDescriptors(), before);
}

TEST(DirectoryWalk, aDeepTreeWithMoreInEachFolderKeepsItsDescriptorsFew) {
    const TestFolder world;
    inMemory(world, [&] { walkDeepTree(world); });
}

void walkWideFolders(const TestFolder& world) {
    const URL files = world.folder("files");
    const URL folders = world.folder("folders");
    const int folder = ::open(files.path().c_str(), O_RDONLY | O_DIRECTORY);
    for (int i = 0; i < 100'000; ++i)
        touch(folder, "a file with a name of some length " + std::to_string(i));
    ::close(folder);
    for (int i = 0; i < 20'000; ++i)
        ASSERT_EQ(::mkdir((folders.path() + "/" + std::to_string(i)).c_str(), 0755), 0);
    std::size_t entries = 0;
    const long growth = memoryGrowth([&] {
        WalkWatcher watcher([&](WalkEntry& entry) {
            ++entries;
            return entry.status() != nullptr ? WalkStep::goOn : WalkStep::stop;
        });
        // A wrong count must not look like little memory.
        if (!walkDirectory(world.url(), {}, watcher) || entries != 120'002U) ::_exit(255);
    });
    EXPECT_LT(growth, 4 * 1024) << "KiB";
}

TEST(DirectoryWalk, aFolderOfAHundredThousandEntriesIsWalkedInFlatMemory) {
    const TestFolder world;
    inMemory(world, [&] { walkWideFolders(world); });
}

TEST(DirectoryWalk, linksAreEntriesAndNeverAWay) {
    const TestFolder world;
    world.file("folder/file");
    world.link("loop", ".");
    world.link("folder/up", "..");
    world.link("self", "self");
    world.link("dangling", "nowhere");
    WalkRecorder recorder(world.url());
    recorder.onVisit = [](WalkEntry& entry) {
        const bool isLink = entry.name() != "folder" && entry.name() != "file";
        EXPECT_EQ(entry.type() == FileType::symbolicLink, isLink) << entry.name();
        return WalkStep::goOn;
    };
    walkDirectory(world.url(), {}, recorder);
    EXPECT_THAT(recorder.paths, UnorderedElementsAre("folder", "folder/file", "folder/up", "loop", "self", "dangling"));
    EXPECT_THAT(recorder.failures, IsEmpty());
}

TEST(DirectoryWalk, specialFilesAreEntriesThatNobodyOpens) {
    const TestFolder world;
    // Opening it for reading would wait for a writer for ever.
    ASSERT_EQ(::mkfifo((world / "fifo").path().c_str(), 0600), 0);
    const int folder = ::open(world.path().c_str(), O_PATH | O_DIRECTORY);
    const int listener = ::socket(AF_UNIX, SOCK_STREAM, 0);
    sockaddr_un address{};
    address.sun_family = AF_UNIX;
    std::strcpy(address.sun_path, ("/proc/self/fd/" + std::to_string(folder) + "/socket").c_str());
    ASSERT_EQ(::bind(listener, reinterpret_cast<const sockaddr*>(&address), sizeof address), 0);
    std::map<std::string, FileType> expected{{"fifo", FileType::fifo}, {"socket", FileType::socket}};
    if (::mknodat(folder, "device", S_IFCHR | 0600, ::makedev(1, 3)) == 0)
        expected.emplace("device", FileType::characterDevice);
    std::map<std::string, FileType> types;
    WalkRecorder recorder(world.url());
    recorder.onVisit = [&](WalkEntry& entry) {
        types.emplace(entry.name(), entry.type());
        return WalkStep::goOn;
    };
    walkDirectory(world.url(), {}, recorder);
    EXPECT_EQ(types, expected);
    EXPECT_EQ(FileSystemUtils::size(world.url()), 0);
    EXPECT_EQ(fileStatus(URL::fromPath("/dev/null"))->type, FileType::characterDevice);
    ::close(listener);
    ::close(folder);
}

TEST(DirectoryWalk, aFolderWithoutPermissionIsToldByItsPathAndTheWalkGoesOn) {
    const TestFolder world;
    world.file("a/locked/inside");
    world.file("b/file");
    setMode(world / "a/locked", 0000);
    const OrdinaryUser user;
    WalkRecorder recorder(world.url());
    walkDirectory(world.url(), {}, recorder);
    EXPECT_THAT(recorder.paths, UnorderedElementsAre("a", "a/locked", "b", "b/file"));
    EXPECT_THAT(recorder.failures, ElementsAre("a/locked " + std::to_string(EACCES)));
}

TEST(DirectoryWalk, anotherFileSystemBelowIsWalkedLikeAFolder) {
    const TestFolder world;
    world.folder("here/disk");
    withOwnMounts([&] {
        mountTmpfs(world / "here/disk");
        const URL inside = world.fileOfSize("here/disk/deep/inside", 10'000);
        WalkRecorder recorder(world.url());
        walkDirectory(world.url(), {}, recorder);
        EXPECT_THAT(recorder.paths, ElementsAre("here", "here/disk", "here/disk/deep", "here/disk/deep/inside"));
        EXPECT_EQ(FileSystemUtils::size(world.url()), 12'288);
        EXPECT_THAT(FileSystemUtils::children(world / "here/disk", false), ElementsAre(world.folder("here/disk/deep")));
    });
}

TEST(DirectoryWalk, whatVanishesWhileWalkingIsPassedOverInSilence) {
    const TestFolder world;
    for (const char* name : {"a", "b", "c"}) {
        world.file(std::string("files/") + name);
        world.file(std::string("folders/") + name + "/inside");
    }
    WalkRecorder recorder(world.url());
    std::size_t inside = 0;
    recorder.onVisit = [&](WalkEntry& entry) {
        if (entry.depth() == 3) ++inside;
        if (entry.depth() != 2) return WalkStep::goOn;
        std::filesystem::remove_all(entry.url().path());
        EXPECT_EQ(entry.status(), nullptr);
        return WalkStep::goOn;
    };
    EXPECT_TRUE(walkDirectory(world.url(), {}, recorder));
    EXPECT_EQ(inside, 0U);
    EXPECT_THAT(recorder.failures, IsEmpty());
    EXPECT_THAT(pathsBelow(world.url()), ElementsAre("files", "folders"));
}

TEST(DirectoryWalk, aFolderSwappedForALinkLeadsNowhere) {
    const TestFolder world;
    const TestFolder outside;
    outside.file("secret");
    world.file("folder/inside");
    WalkRecorder recorder(world.url());
    recorder.onVisit = [&](WalkEntry& entry) {
        std::filesystem::remove_all(entry.url().path());
        std::filesystem::create_symlink(outside.path(), entry.url().path());
        EXPECT_EQ(entry.status()->type, FileType::symbolicLink);
        return WalkStep::goOn;
    };
    EXPECT_TRUE(walkDirectory(world.url(), {}, recorder));
    EXPECT_THAT(recorder.paths, ElementsAre("folder"));
    EXPECT_THAT(recorder.failures, IsEmpty());
}

TEST(DirectoryWalk, aFileThatBecameSomethingElseIsNoRegularFile) {
    const TestFolder world;
    const TestFolder outside;
    outside.fileOfSize("large", 100'000);
    world.file("file");
    std::size_t visited = 0;
    FileSystemUtils::enumerateRegularFiles(
        world.url(), {}, nullptr,
        [&] {
            std::filesystem::remove(world.path() + "/file");
            std::filesystem::create_symlink((outside / "large").path(), world.path() + "/file");
            return false;
        },
        [&](const FileInfo&) { ++visited; });
    EXPECT_EQ(visited, 0U);
}

}  // namespace
}  // namespace tavrin
