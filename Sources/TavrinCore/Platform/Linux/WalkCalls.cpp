#include "TavrinCore/Platform/Linux/WalkCalls.h"

#include "TavrinCore/Platform/Linux/MountTable.h"

#include <dirent.h>
#include <fcntl.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <climits>

namespace tavrin {

WalkCalls& walkCalls() {
    static WalkCalls calls;
    return calls;
}

int WalkCalls::open(int folder, const char* name, int flags) {
    return ::openat(folder, name, flags);
}
ssize_t WalkCalls::list(int folder, char* buffer, std::size_t size) {
    return ::getdents64(folder, buffer, size);
}
off_t WalkCalls::seek(int folder, off_t position) {
    return ::lseek(folder, position, SEEK_SET);
}
int WalkCalls::status(int folder, const char* name, int flags, unsigned fields, struct statx& result) {
    return ::statx(folder, name, flags, fields, &result);
}
int WalkCalls::close(int folder) {
    return ::close(folder);
}
std::vector<std::string> WalkCalls::waitingMounts(int folder) {
    const auto mounts = currentMounts();
    if (std::ranges::none_of(*mounts, &Mount::mayWait)) return {};
    // The kernel names mounts by the folders that they are in, whatever links led here. A path that is longer than this
    // has nothing mounted below it: mount(2) takes none.
    std::array<char, PATH_MAX> path{};
    const std::string link = "/proc/self/fd/" + std::to_string(folder);
    const ssize_t length = ::readlink(link.c_str(), path.data(), path.size());
    if (length <= 0) return {};
    return waitingMountsBelow({path.data(), static_cast<std::size_t>(length)}, *mounts);
}

}  // namespace tavrin
