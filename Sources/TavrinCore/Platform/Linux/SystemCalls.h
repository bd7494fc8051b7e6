// The system calls that touch people's files, one verb each, so that tests can let every one of them fail in turn.
//
// Each returns what the system does, -1 and errno on failure; an interrupted call is made again. Stateless, safe from
// any thread.
#pragma once

#include <sys/stat.h>
#include <sys/types.h>

#include <cstddef>

namespace tavrin {

class SystemCalls {
  public:
    virtual ~SystemCalls() = default;

    [[nodiscard]] int open(int folder, const char* path, int flags, mode_t mode = 0);
    /// statx(2) with type, mode, owner, inode and mount id.
    [[nodiscard]] int status(int folder, const char* path, int flags, struct statx& result);
    [[nodiscard]] ssize_t readLink(const char* path, char* buffer, std::size_t size);
    [[nodiscard]] ssize_t write(int file, const char* bytes, std::size_t count);
    /// Starts to bring the file's bytes to the disk, without waiting for them (sync_file_range(2)).
    [[nodiscard]] int startWriteOut(int file);
    /// The last word of a file that was written. The number is gone afterwards, whatever the result.
    [[nodiscard]] int close(int file);
    [[nodiscard]] int makeFolder(int folder, const char* name, mode_t mode);
    [[nodiscard]] int rename(int fromFolder, const char* fromName, int toFolder, const char* toName, unsigned flags);
    [[nodiscard]] int link(int fromFolder, const char* fromName, int toFolder, const char* toName);
    [[nodiscard]] int unlink(int folder, const char* name, int flags);
    /// On any descriptor, also one that was opened for its path alone.
    [[nodiscard]] int setMode(int item, mode_t mode);

  protected:
    SystemCalls() = default;
    SystemCalls(const SystemCalls&) = default;
    SystemCalls& operator=(const SystemCalls&) = default;

  private:
    virtual int doOpen(int folder, const char* path, int flags, mode_t mode);
    virtual int doStatus(int folder, const char* path, int flags, struct statx& result);
    virtual ssize_t doReadLink(const char* path, char* buffer, std::size_t size);
    virtual ssize_t doWrite(int file, const char* bytes, std::size_t count);
    virtual int doStartWriteOut(int file);
    virtual int doClose(int file);
    virtual int doMakeFolder(int folder, const char* name, mode_t mode);
    virtual int doRename(int fromFolder, const char* fromName, int toFolder, const char* toName, unsigned flags);
    virtual int doLink(int fromFolder, const char* fromName, int toFolder, const char* toName);
    virtual int doUnlink(int folder, const char* name, int flags);
    virtual int doSetMode(int item, mode_t mode);

    friend SystemCalls& systemCalls();
};

/// The real ones.
[[nodiscard]] SystemCalls& systemCalls();

}  // namespace tavrin
