// The real system calls, with somebody in the way who counts them, lets one fail, or does something else just before.
#pragma once

#include "TavrinCore/Platform/Linux/SystemCalls.h"

#include <cstdint>
#include <functional>

namespace tavrin::test {

class InterceptedCalls final : public SystemCalls {
  public:
    enum class Call : std::uint8_t {
        open,
        status,
        readLink,
        write,
        writeOut,
        close,
        makeFolder,
        rename,
        link,
        unlink,
        setMode
    };
    /// Hears of each call before it is made, with its number from 0. Anything but 0 is the errno with which it fails.
    using Interceptor = std::function<int(Call call, int index)>;

    explicit InterceptedCalls(Interceptor interceptor) : interceptor_(std::move(interceptor)) {}

    [[nodiscard]] int count() const { return count_; }
    /// Whether rename(2) and link(2) behave as on a file system that knows no RENAME_NOREPLACE.
    bool knowsNoReplace = true;

  private:
    int doOpen(int folder, const char* path, int flags, mode_t mode) override;
    int doStatus(int folder, const char* path, int flags, struct statx& result) override;
    ssize_t doReadLink(const char* path, char* buffer, std::size_t size) override;
    ssize_t doWrite(int file, const char* bytes, std::size_t count) override;
    int doStartWriteOut(int file) override;
    int doClose(int file) override;
    int doMakeFolder(int folder, const char* name, mode_t mode) override;
    int doRename(int fromFolder, const char* fromName, int toFolder, const char* toName, unsigned flags) override;
    int doLink(int fromFolder, const char* fromName, int toFolder, const char* toName) override;
    int doUnlink(int folder, const char* name, int flags) override;
    int doSetMode(int item, mode_t mode) override;

    /// Sets errno.
    bool fails(Call call);

    Interceptor interceptor_;
    int count_ = 0;
};

}  // namespace tavrin::test
