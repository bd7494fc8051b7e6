#include "WalkSupport.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <filesystem>

namespace tavrin::test {

WalkStep WalkRecorder::visit(WalkEntry& entry) {
    paths.push_back(relative(entry.url()));
    return onVisit(entry);
}

void WalkRecorder::failed(const URL& folder, const SystemError& error) {
    failures.push_back(relative(folder) + " " + std::to_string(error.code));
}

std::vector<std::string> WalkRecorder::sortedPaths() const {
    std::vector<std::string> sorted = paths;
    std::ranges::sort(sorted);
    return sorted;
}

std::string WalkRecorder::relative(const URL& url) const {
    return url.path().size() < prefix_ ? std::string() : url.path().substr(prefix_);
}

void WalkWatcher::failed(const URL& folder, const SystemError& error) {
    ADD_FAILURE() << folder.path().substr(0, 200) << ": " << error.localizedDescription;
}

std::vector<std::string> pathsBelow(const URL& root) {
    std::vector<std::string> paths;
    for (const auto& entry : std::filesystem::recursive_directory_iterator(root.path()))
        paths.push_back(entry.path().native().substr(root.path().size() + 1));
    std::ranges::sort(paths);
    return paths;
}

URL makeChain(const URL& root, std::size_t depth, std::string_view name,
              const std::function<void(int folder, std::size_t depth)>& inEach) {
    std::string path = root.path();
    int folder = ::open(root.path().c_str(), O_RDONLY | O_DIRECTORY);
    for (std::size_t level = 0; level < depth && folder >= 0; ++level) {
        if (inEach) inEach(folder, level);
        path.append("/").append(name);
        EXPECT_EQ(::mkdirat(folder, std::string(name).c_str(), 0755), 0) << std::strerror(errno);
        const int next = ::openat(folder, std::string(name).c_str(), O_RDONLY | O_DIRECTORY);
        ::close(folder);
        folder = next;
    }
    EXPECT_GE(folder, 0) << std::strerror(errno);
    if (inEach) inEach(folder, depth);
    ::close(folder);
    return URL::fromPath(path, true);
}

void touch(int folder, std::string_view name) {
    EXPECT_EQ(::mknodat(folder, std::string(name).c_str(), S_IFREG | 0644, 0), 0) << name << std::strerror(errno);
}

}  // namespace tavrin::test
