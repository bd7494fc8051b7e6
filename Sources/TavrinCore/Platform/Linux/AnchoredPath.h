// A path of any length, as the pair that the *at calls take. The kernel refuses a path of 4,096 bytes and more
// (ENAMETOOLONG), and trees may well be deeper: the folder at the end of such a path is opened in steps.
#pragma once

#include "TavrinCore/Platform/Linux/Descriptor.h"

#include <fcntl.h>

#include <string>

namespace tavrin {

/// Holds a part of an absolute path, and the folder that it is relative to. Links are followed on the way there.
class AnchoredPath {
  public:
    /// `path` must outlive this.
    explicit AnchoredPath(const std::string& path);

    /// For openat(2), statx(2) and their like. AT_FDCWD for a path that the kernel takes whole.
    [[nodiscard]] int folder() const { return folder_.isOpen() ? folder_.number() : AT_FDCWD; }
    /// All of the path, or its last name.
    [[nodiscard]] const char* name() const { return name_; }
    /// 0, or what the system said on the way; then nothing else here counts.
    [[nodiscard]] int error() const { return error_; }

    /// open(2), with O_CLOEXEC; an interrupted call is made again. Not open, with errno set, on failure.
    [[nodiscard]] Descriptor open(int flags) const;

  private:
    Descriptor folder_;
    const char* name_;
    int error_ = 0;
};

}  // namespace tavrin
