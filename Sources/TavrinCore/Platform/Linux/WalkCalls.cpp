#include "TavrinCore/Platform/Linux/WalkCalls.h"

#include <dirent.h>
#include <fcntl.h>
#include <unistd.h>

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

}  // namespace tavrin
