#include "TavrinCore/Platform/Linux/SystemCalls.h"

#include <fcntl.h>
#include <unistd.h>

#include <cerrno>
#include <cstdio>
#include <string>

namespace tavrin {
namespace {

template <class Call>
auto retried(Call call) {
    auto result = call();
    while (result < 0 && errno == EINTR)
        result = call();
    return result;
}

}  // namespace

SystemCalls& systemCalls() {
    static SystemCalls calls;
    return calls;
}

int SystemCalls::open(int folder, const char* path, int flags, mode_t mode) {
    return retried([&] { return doOpen(folder, path, flags | O_CLOEXEC, mode); });
}
int SystemCalls::status(int folder, const char* path, int flags, struct statx& result) {
    return retried([&] { return doStatus(folder, path, flags, result); });
}
ssize_t SystemCalls::readLink(const char* path, char* buffer, std::size_t size) {
    return retried([&] { return doReadLink(path, buffer, size); });
}
ssize_t SystemCalls::write(int file, const char* bytes, std::size_t count) {
    return retried([&] { return doWrite(file, bytes, count); });
}
int SystemCalls::startWriteOut(int file) {
    return retried([&] { return doStartWriteOut(file); });
}
int SystemCalls::close(int file) {
    // Not made again: Linux has given the number back by then, and it may be somebody else's already (close(2)).
    const int result = doClose(file);
    return result < 0 && errno == EINTR ? 0 : result;
}
int SystemCalls::makeFolder(int folder, const char* name, mode_t mode) {
    return retried([&] { return doMakeFolder(folder, name, mode); });
}
int SystemCalls::rename(int fromFolder, const char* fromName, int toFolder, const char* toName, unsigned flags) {
    return retried([&] { return doRename(fromFolder, fromName, toFolder, toName, flags); });
}
int SystemCalls::link(int fromFolder, const char* fromName, int toFolder, const char* toName) {
    return retried([&] { return doLink(fromFolder, fromName, toFolder, toName); });
}
int SystemCalls::unlink(int folder, const char* name, int flags) {
    return retried([&] { return doUnlink(folder, name, flags); });
}
int SystemCalls::setMode(int item, mode_t mode) {
    return retried([&] { return doSetMode(item, mode); });
}

int SystemCalls::doOpen(int folder, const char* path, int flags, mode_t mode) {
    return ::openat(folder, path, flags, mode);
}
int SystemCalls::doStatus(int folder, const char* path, int flags, struct statx& result) {
    constexpr unsigned wanted = STATX_TYPE | STATX_MODE | STATX_UID | STATX_GID | STATX_INO | STATX_MNT_ID;
    return ::statx(folder, path, flags | AT_NO_AUTOMOUNT, wanted, &result);
}
ssize_t SystemCalls::doReadLink(const char* path, char* buffer, std::size_t size) {
    return ::readlink(path, buffer, size);
}
ssize_t SystemCalls::doWrite(int file, const char* bytes, std::size_t count) {
    return ::write(file, bytes, count);
}
int SystemCalls::doStartWriteOut(int file) {
    return ::sync_file_range(file, 0, 0, SYNC_FILE_RANGE_WRITE);
}
int SystemCalls::doClose(int file) {
    return ::close(file);
}
int SystemCalls::doMakeFolder(int folder, const char* name, mode_t mode) {
    return ::mkdirat(folder, name, mode);
}
int SystemCalls::doRename(int fromFolder, const char* fromName, int toFolder, const char* toName, unsigned flags) {
    return ::renameat2(fromFolder, fromName, toFolder, toName, flags);
}
int SystemCalls::doLink(int fromFolder, const char* fromName, int toFolder, const char* toName) {
    return ::linkat(fromFolder, fromName, toFolder, toName, 0);
}
int SystemCalls::doUnlink(int folder, const char* name, int flags) {
    return ::unlinkat(folder, name, flags);
}
int SystemCalls::doSetMode(int item, mode_t mode) {
    // fchmod(2) refuses a descriptor opened with O_PATH; the way through /proc leads to the same inode (open(2)).
    const std::string path = "/proc/self/fd/" + std::to_string(item);
    return ::chmod(path.c_str(), mode);
}

}  // namespace tavrin
