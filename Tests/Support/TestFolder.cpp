#include "Support/TestFolder.h"

#include "Support/OrdinaryUser.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <spawn.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <cmath>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <stdexcept>

namespace tavrin::test {
namespace {

namespace fs = std::filesystem;

constexpr std::array<std::string_view, 6> kRefusedPlaces{"/tmp/", "/var/", "/usr/", "/etc/", "/private/", "/cores/"};

bool isUsable(const fs::path& base) {
    const std::string path = fs::weakly_canonical(base).native() + '/';
    if (std::ranges::any_of(kRefusedPlaces, [&](std::string_view place) { return path.starts_with(place); }))
        return false;
    std::error_code error;
    fs::create_directories(base, error);
    if (error) return false;
    const OrdinaryUser user;
    return ::access(base.c_str(), R_OK | W_OK | X_OK) == 0 && fs::is_directory(base, error);
}

fs::path baseFolder() {
    const fs::path built = TAVRIN_TEST_FOLDER;
    if (isUsable(built)) return built;
    const char* home = std::getenv("HOME");
    fs::path cache = fs::path(home != nullptr ? home : "/root") / ".cache/tavrin-clean-tests";
    if (isUsable(cache)) return cache;
    throw std::runtime_error("no place for test folders: neither " + built.native() + " nor " + cache.native());
}

URL makeUniqueFolder() {
    static const fs::path base = baseFolder();
    std::string pattern = (base / "world-XXXXXX").native();
    if (::mkdtemp(pattern.data()) == nullptr)
        throw std::runtime_error("mkdtemp " + pattern + ": " + std::strerror(errno));
    return URL::fromPath(pattern, true);
}

/// rm copes with chains of folders that no path reaches, and with names of any bytes.
void removeTree(const std::string& path) {
    for (const std::array<const char*, 5>& command :
         {std::array<const char*, 5>{"chmod", "-Rf", "u+rwX", path.c_str(), nullptr},
          std::array<const char*, 5>{"rm", "-rf", "--", path.c_str(), nullptr}}) {
        pid_t child = 0;
        if (::posix_spawnp(&child, command[0], nullptr, nullptr, const_cast<char* const*>(command.data()), environ) ==
            0)
            ::waitpid(child, nullptr, 0);
    }
}

}  // namespace

TestFolder::TestFolder() : url_(makeUniqueFolder()) {}

TestFolder::~TestFolder() {
    std::error_code error;
    fs::remove_all(url_.path(), error);
    if (error) removeTree(url_.path());
}

URL TestFolder::folder(std::string_view relative) const {
    URL url = url_.appendingPathComponent(relative, true);
    std::error_code error;
    fs::create_directories(url.path(), error);
    EXPECT_FALSE(error) << url.path() << ": " << error.message();
    return url;
}

URL TestFolder::file(std::string_view relative, std::string_view contents) const {
    URL url = url_.appendingPathComponent(relative);
    std::error_code error;
    fs::create_directories(url.deletingLastPathComponent().path(), error);
    std::ofstream stream(url.path(), std::ios::binary);
    stream << contents;
    stream.close();
    EXPECT_TRUE(stream.good()) << url.path();
    return url;
}

URL TestFolder::fileOfSize(std::string_view relative, std::size_t size) const {
    return file(relative, std::string(size, 'x'));
}

URL TestFolder::link(std::string_view relative, std::string_view target) const {
    URL url = url_.appendingPathComponent(relative);
    std::error_code error;
    fs::create_directories(url.deletingLastPathComponent().path(), error);
    fs::create_symlink(fs::path(target), url.path(), error);
    EXPECT_FALSE(error) << url.path() << ": " << error.message();
    return url;
}

std::string contentsOf(const URL& file) {
    std::ifstream stream(file.path(), std::ios::binary);
    EXPECT_TRUE(stream.good()) << file.path();
    return {std::istreambuf_iterator<char>(stream), {}};
}

bool somethingAt(const URL& url) {
    struct stat status {};
    return ::lstat(url.path().c_str(), &status) == 0;
}

void setMode(const URL& url, unsigned mode) {
    EXPECT_EQ(::chmod(url.path().c_str(), mode), 0) << url.path() << ": " << std::strerror(errno);
}

void setTimes(const URL& url, Date accessed, Date modified) {
    const auto time = [](Date date) {
        const double seconds = std::floor(date.secondsSinceUnix());
        return timespec{static_cast<time_t>(seconds), static_cast<long>((date.secondsSinceUnix() - seconds) * 1e9)};
    };
    const std::array<timespec, 2> times{time(accessed), time(modified)};
    EXPECT_EQ(::utimensat(AT_FDCWD, url.path().c_str(), times.data(), AT_SYMLINK_NOFOLLOW), 0)
        << url.path() << ": " << std::strerror(errno);
}

void makeFifo(const URL& url) {
    EXPECT_EQ(::mkfifo(url.path().c_str(), 0600), 0) << url.path() << ": " << std::strerror(errno);
}

ScopedVariable::ScopedVariable(const char* name, const char* value) : name_(name) {
    const char* before = std::getenv(name);
    wasSet_ = before != nullptr;
    if (wasSet_) before_ = before;
    if (value != nullptr) {
        ::setenv(name, value, 1);
    } else {
        ::unsetenv(name);
    }
}

ScopedVariable::~ScopedVariable() {
    if (wasSet_) {
        ::setenv(name_.c_str(), before_.c_str(), 1);
    } else {
        ::unsetenv(name_.c_str());
    }
}

}  // namespace tavrin::test
