// The system calls of a walk, so that tests can count them and let each of them fail. Internal to this folder and its
// tests.
#pragma once

#include <sys/stat.h>
#include <sys/types.h>

#include <cstddef>
#include <string>
#include <vector>

namespace tavrin {

/// Each is the call of its name, with its results and its errno. Stateless, safe from any thread.
class WalkCalls {
  public:
    virtual ~WalkCalls() = default;

    /// openat(2)
    virtual int open(int folder, const char* name, int flags);
    /// getdents64(2)
    virtual ssize_t list(int folder, char* buffer, std::size_t size);
    /// lseek(2) from the beginning
    virtual off_t seek(int folder, off_t position);
    /// statx(2)
    virtual int status(int folder, const char* name, int flags, unsigned fields, struct statx& result);
    virtual int close(int folder);
    /// The mounts below an open folder, relative to it, that may keep whoever enters them waiting. Asks none of them.
    [[nodiscard]] virtual std::vector<std::string> waitingMounts(int folder);

  protected:
    WalkCalls() = default;
    WalkCalls(const WalkCalls&) = default;
    WalkCalls& operator=(const WalkCalls&) = default;

    friend WalkCalls& walkCalls();
};

/// The real ones.
[[nodiscard]] WalkCalls& walkCalls();

}  // namespace tavrin
