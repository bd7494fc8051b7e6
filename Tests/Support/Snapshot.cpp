#include "Support/Snapshot.h"

#include "Support/TestFolder.h"

#include <gtest/gtest.h>
#include <sys/stat.h>
#include <sys/xattr.h>

#include <array>
#include <filesystem>
#include <string_view>

namespace tavrin::test {
namespace {

namespace fs = std::filesystem;

std::map<std::string, std::string> attributesOf(const std::string& path) {
    std::map<std::string, std::string> attributes;
    std::array<char, 4096> names{};
    const ssize_t length = ::llistxattr(path.c_str(), names.data(), names.size());
    for (ssize_t at = 0; at < length;) {
        const std::string name(names.data() + at);
        std::array<char, 4096> value{};
        const ssize_t size = ::lgetxattr(path.c_str(), name.c_str(), value.data(), value.size());
        EXPECT_GE(size, 0) << path << " " << name;
        attributes[name] = std::string(value.data(), static_cast<std::size_t>(std::max<ssize_t>(size, 0)));
        at += static_cast<ssize_t>(name.size()) + 1;
    }
    return attributes;
}

}  // namespace

SnapshotEntry entryAt(const URL& url) {
    const std::string& path = url.path();
    struct stat status {};
    EXPECT_EQ(::lstat(path.c_str(), &status), 0) << path;
    SnapshotEntry entry{.mode = status.st_mode,
                        .user = status.st_uid,
                        .group = status.st_gid,
                        .modified = status.st_mtim.tv_sec * 1'000'000'000 + status.st_mtim.tv_nsec,
                        .contents = {},
                        .attributes = attributesOf(path)};
    if (S_ISREG(status.st_mode)) entry.contents = contentsOf(url);
    if (S_ISLNK(status.st_mode)) entry.contents = fs::read_symlink(path).native();
    return entry;
}

Snapshot snapshotOf(const URL& root) {
    Snapshot snapshot{{"", entryAt(root)}};
    if (!fs::is_directory(fs::symlink_status(root.path()))) return snapshot;
    for (const auto& entry : fs::recursive_directory_iterator(root.path())) {
        const std::string& path = entry.path().native();
        snapshot[path.substr(root.path().size() + 1)] = entryAt(URL::fromPath(path));
    }
    return snapshot;
}

}  // namespace tavrin::test
