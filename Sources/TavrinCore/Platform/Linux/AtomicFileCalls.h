// The system calls of an atomic write, so that a test can let each of them fail. Internal to this folder and its tests.
#pragma once

#include "TavrinCore/Models/URL.h"
#include "TavrinCore/Platform/SystemError.h"

#include <sys/types.h>

#include <cstddef>
#include <string_view>

namespace tavrin {

/// Each is the call of its name, with its results and its errno.
class AtomicFileCalls {
  public:
    virtual ~AtomicFileCalls() = default;

    virtual int openFolder(const char* path);
    virtual int createFile(int folder, const char* name, mode_t mode);
    virtual ssize_t write(int file, const char* bytes, std::size_t count);
    virtual int sync(int descriptor);
    virtual int close(int descriptor);
    virtual int rename(int folder, const char* from, const char* to);
    virtual int remove(int folder, const char* name);
};

[[nodiscard]] Outcome writeAtomically(const URL& url, std::string_view bytes, unsigned mode, AtomicFileCalls& calls);

}  // namespace tavrin
