#include "Support/OrdinaryUser.h"
#include "Support/TestFolder.h"
#include "TavrinCore/Platform/ReadFile.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/socket.h>
#include <sys/stat.h>
#include <sys/un.h>
#include <unistd.h>

#include <cerrno>
#include <cstring>
#include <limits>
#include <string>

namespace tavrin {
namespace {

using namespace std::string_literals;
using test::TestFolder;

constexpr std::size_t kMaxBytes = 1000;

int errorOfReading(const URL& url, std::size_t maxBytes = kMaxBytes) {
    const Result<std::string> result = readSmallFile(url, maxBytes);
    return result.ok() ? 0 : result.error().code;
}

TEST(ReadSmallFile, givesAllBytesZeroBytesIncluded) {
    const TestFolder world;
    const std::string contents = "a\0b\xFF\n"s;
    EXPECT_EQ(readSmallFile(world.file("f", contents), kMaxBytes).value(), contents);
    EXPECT_EQ(readSmallFile(world.file("empty", ""), kMaxBytes).value(), "");
    EXPECT_EQ(readSmallFile(world.file("unbounded", contents), std::numeric_limits<std::size_t>::max()).value(),
              contents);
}

TEST(ReadSmallFile, takesExactlyTheBoundAndNotOneByteMore) {
    const TestFolder world;
    EXPECT_EQ(readSmallFile(world.fileOfSize("whole", kMaxBytes), kMaxBytes).value().size(), kMaxBytes);
    EXPECT_EQ(errorOfReading(world.fileOfSize("more", kMaxBytes + 1)), EFBIG);
    EXPECT_EQ(readSmallFile(world.file("nothing", ""), 0).value(), "");
    EXPECT_EQ(errorOfReading(world.file("something", "x"), 0), EFBIG);
}

TEST(ReadSmallFile, readsAFileThatTellsNoSize) {
    const URL status = URL::fromPath("/proc/self/status");
    EXPECT_NE(readSmallFile(status, 1 << 20).value().find("Pid:"), std::string::npos);
    EXPECT_EQ(errorOfReading(status, 20), EFBIG);
}

TEST(ReadSmallFile, readsMoreThanOneStep) {
    const TestFolder world;
    EXPECT_EQ(readSmallFile(world.fileOfSize("big", 300'000), 1 << 20).value(), std::string(300'000, 'x'));
}

TEST(ReadSmallFile, followsLinksAndFailsOnThoseThatLeadNowhere) {
    const TestFolder world;
    world.file("target", "there");
    EXPECT_EQ(readSmallFile(world.link("link", "target"), kMaxBytes).value(), "there");
    EXPECT_EQ(errorOfReading(world.link("dangling", "nowhere")), ENOENT);
    EXPECT_EQ(errorOfReading(world.link("loop", "loop")), ELOOP);
    EXPECT_EQ(errorOfReading(world / "missing"), ENOENT);
}

TEST(ReadSmallFile, neverWaitsForAFIFO) {
    const TestFolder world;
    const URL fifo = world / "fifo";
    ASSERT_EQ(::mkfifo(fifo.path().c_str(), 0600), 0);
    EXPECT_EQ(errorOfReading(fifo), EINVAL);
    EXPECT_EQ(errorOfReading(world.link("link", "fifo")), EINVAL);
}

TEST(ReadSmallFile, opensNoSocketAndNoDevice) {
    const TestFolder world;
    const int socket = ::socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0);
    ASSERT_GE(socket, 0);
    // A socket's path is short, so it is bound from inside the folder's descriptor.
    const int folder = ::open(world.path().c_str(), O_PATH | O_DIRECTORY | O_CLOEXEC);
    sockaddr_un address{};
    address.sun_family = AF_UNIX;
    const std::string path = "/proc/self/fd/" + std::to_string(folder) + "/socket";
    std::memcpy(address.sun_path, path.c_str(), path.size() + 1);
    ASSERT_EQ(::bind(socket, reinterpret_cast<const sockaddr*>(&address), sizeof address), 0);
    ::close(folder);
    ::close(socket);
    EXPECT_EQ(errorOfReading(world / "socket"), EINVAL);
    EXPECT_EQ(errorOfReading(URL::fromPath("/dev/zero")), EINVAL);
}

TEST(ReadSmallFile, refusesAFolder) {
    const TestFolder world;
    EXPECT_EQ(errorOfReading(world.folder("folder")), EISDIR);
}

TEST(ReadSmallFile, tellsARefusal) {
    const TestFolder world;
    const URL file = world.file("secret");
    test::setMode(file, 0000);
    const test::OrdinaryUser user;
    const Result<std::string> result = readSmallFile(file, kMaxBytes);
    ASSERT_FALSE(result.ok());
    EXPECT_TRUE(result.error().isPosix(EACCES));
}

}  // namespace
}  // namespace tavrin
