#include "Support/FileWatch.h"
#include "Support/OrdinaryUser.h"
#include "Support/TestFolder.h"
#include "TavrinCore/Scanning/FileSystemUtils.h"

#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

#include <limits>

namespace tavrin {
namespace {

using test::FileWatch;
using test::OrdinaryUser;
using test::setMode;
using test::setTimes;
using test::TestFolder;

constexpr const char* kOfNothing = "e3b0c44298fc1c149afbf4c8996fb92427ae41e4649b934ca495991b7852b855";
/// FIPS 180-4's own example.
constexpr const char* kOfABC = "ba7816bf8f01cfea414140de5dae2223b00361a396177a9cb410ff61f20015ad";
constexpr std::size_t kChunk = 1'048'576;

TEST(FileHash, theDigestIsSHA256InLowerCaseHexadecimal) {
    const TestFolder world;
    const URL file = world.file("abc", "abc");
    EXPECT_EQ(FileSystemUtils::fullHash(file, kChunk), kOfABC);
    EXPECT_EQ(FileSystemUtils::quickFingerprint(file, 8192), kOfABC);
    EXPECT_EQ(FileSystemUtils::fullHash(world.link("link", "abc"), kChunk), kOfABC);
}

TEST(FileHash, aFileThatOpensAndCanNotBeReadCountsAsEmpty) {
    const TestFolder world;
    EXPECT_EQ(FileSystemUtils::quickFingerprint(world.url(), 8192), kOfNothing);
    EXPECT_EQ(FileSystemUtils::fullHash(world.url(), kChunk), kOfNothing);
    EXPECT_EQ(FileSystemUtils::quickFingerprint(world.file("empty", ""), 8192), kOfNothing);
    EXPECT_EQ(FileSystemUtils::fullHash(world / "empty", kChunk), kOfNothing);
}

TEST(FileHash, aFileThatCanNotBeOpenedHasNone) {
    const TestFolder world;
    const URL locked = world.file("locked");
    setMode(locked, 0000);
    const OrdinaryUser user;
    for (const URL& url : {locked, world / "nothing", world.link("dangling", "nowhere")}) {
        EXPECT_EQ(FileSystemUtils::quickFingerprint(url, 8192), std::nullopt) << url.path();
        EXPECT_EQ(FileSystemUtils::fullHash(url, kChunk), std::nullopt) << url.path();
    }
}

TEST(FileHash, aFIFOOrADeviceIsNotOpened) {
    const TestFolder world;
    const URL fifo = world / "fifo";
    ASSERT_EQ(::mkfifo(fifo.path().c_str(), 0600), 0);
    FileWatch watch;
    watch.watch(fifo, IN_OPEN);
    for (const URL& url : {fifo, URL::fromPath("/dev/null"), URL::fromPath("/dev/zero")}) {
        EXPECT_EQ(FileSystemUtils::quickFingerprint(url, 8192), std::nullopt) << url.path();
        EXPECT_EQ(FileSystemUtils::fullHash(url, kChunk), std::nullopt) << url.path();
    }
    EXPECT_FALSE(watch.sawAny());
}

TEST(FileHash, aPrefixBeyondTheEndIsTheWholeFile) {
    const TestFolder world;
    const URL file = world.fileOfSize("file", 5'000);
    const std::optional<std::string> whole = FileSystemUtils::fullHash(file, kChunk);
    EXPECT_EQ(FileSystemUtils::quickFingerprint(file, 8192), whole);
    EXPECT_EQ(FileSystemUtils::quickFingerprint(file, 5'000), whole);
    EXPECT_EQ(FileSystemUtils::quickFingerprint(file, std::numeric_limits<std::size_t>::max()), whole);
    EXPECT_NE(FileSystemUtils::quickFingerprint(file, 4'999), whole);
}

TEST(FileHash, onlyThePrefixCounts) {
    const TestFolder world;
    const URL a = world.file("a", std::string(50'000, 'x') + "a");
    const URL b = world.file("b", std::string(50'000, 'x') + "b");
    EXPECT_EQ(FileSystemUtils::quickFingerprint(a, 50'000), FileSystemUtils::quickFingerprint(b, 50'000));
    EXPECT_NE(FileSystemUtils::quickFingerprint(a, 50'001), FileSystemUtils::quickFingerprint(b, 50'001));
    EXPECT_EQ(FileSystemUtils::quickFingerprint(a, 0), kOfNothing);
}

TEST(FileHash, theSizeOfTheChunksDoesNotShow) {
    const TestFolder world;
    const URL file = world.fileOfSize("file", 100'000);
    const std::optional<std::string> whole = FileSystemUtils::fullHash(file, kChunk);
    for (const std::size_t chunk : {1'000U, 4'096U, 99'999U, 100'000U, 100'001U})
        EXPECT_EQ(FileSystemUtils::fullHash(file, chunk), whole) << chunk;
}

TEST(FileHash, onceCancelledThereIsNoHashAndNothingIsRead) {
    const TestFolder world;
    const URL file = world.fileOfSize("file", 10'000);
    FileWatch watch;
    watch.watch(file, IN_ACCESS);
    int polls = 0;
    EXPECT_EQ(FileSystemUtils::fullHash(file, kChunk, [&] { return ++polls > 0; }), std::nullopt);
    EXPECT_EQ(polls, 1);
    EXPECT_FALSE(watch.sawAny());
}

TEST(FileHash, readingAFileIsNoUseOfIt) {
    const TestFolder world;
    const URL file = world.fileOfSize("file", 10'000);
    // Older than the modification: any other program's read would be written down (relatime).
    const Date lastUse = Date::fromUnix(1'000'000);
    setTimes(file, lastUse, Date::fromUnix(2'000'000));
    FileWatch watch;
    watch.watch(file, IN_ACCESS);

    EXPECT_NE(FileSystemUtils::quickFingerprint(file, 100), std::nullopt);
    EXPECT_NE(FileSystemUtils::fullHash(file, kChunk), std::nullopt);

    EXPECT_TRUE(watch.sawAny());
    struct stat status {};
    ASSERT_EQ(::stat(file.path().c_str(), &status), 0);
    EXPECT_EQ(status.st_atim.tv_sec, 1'000'000);
}

TEST(FileHash, filesOfOthersAreReadAsWell) {
    const TestFolder world;
    const URL file = world.file("abc", "abc");
    setMode(file, 0644);
    // Only root may give it away; for anybody else this stays a file of their own.
    (void)!::chown(file.path().c_str(), 12345, 12345);
    const OrdinaryUser user;
    EXPECT_EQ(FileSystemUtils::fullHash(file, kChunk), kOfABC);
}

TEST(FileHash, isCancelledIsAskedBeforeEachChunk) {
    const TestFolder world;
    const URL file = world.fileOfSize("file", 10'000);
    int polls = 0;
    EXPECT_NE(FileSystemUtils::fullHash(file, 1'000, [&] { return ++polls > 11; }), std::nullopt);
    EXPECT_EQ(polls, 11);
    polls = 0;
    EXPECT_EQ(FileSystemUtils::fullHash(file, 1'000, [&] { return ++polls > 5; }), std::nullopt);
    EXPECT_EQ(polls, 6);
}

}  // namespace
}  // namespace tavrin
