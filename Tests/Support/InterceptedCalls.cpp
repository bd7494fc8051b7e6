#include "Support/InterceptedCalls.h"

#include <unistd.h>

#include <cerrno>

namespace tavrin::test {

bool InterceptedCalls::fails(Call call) {
    const int error = interceptor_(call, count_++);
    errno = error;
    return error != 0;
}

int InterceptedCalls::doOpen(int folder, const char* path, int flags, mode_t mode) {
    return fails(Call::open) ? -1 : systemCalls().open(folder, path, flags, mode);
}
int InterceptedCalls::doStatus(int folder, const char* path, int flags, struct statx& result) {
    return fails(Call::status) ? -1 : systemCalls().status(folder, path, flags, result);
}
ssize_t InterceptedCalls::doReadLink(const char* path, char* buffer, std::size_t size) {
    return fails(Call::readLink) ? -1 : systemCalls().readLink(path, buffer, size);
}
ssize_t InterceptedCalls::doWrite(int file, const char* bytes, std::size_t count) {
    // Piece by piece, so that what is written in parts is met each time.
    return fails(Call::write) ? -1 : systemCalls().write(file, bytes, count > 24 ? 24 : count);
}
int InterceptedCalls::doStartWriteOut(int file) {
    return fails(Call::writeOut) ? -1 : systemCalls().startWriteOut(file);
}
int InterceptedCalls::doClose(int file) {
    if (!fails(Call::close)) return systemCalls().close(file);
    // A close that fails has closed all the same.
    const int error = errno;
    ::close(file);
    errno = error;
    return -1;
}
int InterceptedCalls::doMakeFolder(int folder, const char* name, mode_t mode) {
    return fails(Call::makeFolder) ? -1 : systemCalls().makeFolder(folder, name, mode);
}
int InterceptedCalls::doRename(int fromFolder, const char* fromName, int toFolder, const char* toName, unsigned flags) {
    if (fails(Call::rename)) return -1;
    if (flags != 0 && !knowsNoReplace) {
        errno = EINVAL;
        return -1;
    }
    return systemCalls().rename(fromFolder, fromName, toFolder, toName, flags);
}
int InterceptedCalls::doLink(int fromFolder, const char* fromName, int toFolder, const char* toName) {
    return fails(Call::link) ? -1 : systemCalls().link(fromFolder, fromName, toFolder, toName);
}
int InterceptedCalls::doUnlink(int folder, const char* name, int flags) {
    return fails(Call::unlink) ? -1 : systemCalls().unlink(folder, name, flags);
}
int InterceptedCalls::doSetMode(int item, mode_t mode) {
    return fails(Call::setMode) ? -1 : systemCalls().setMode(item, mode);
}

}  // namespace tavrin::test
