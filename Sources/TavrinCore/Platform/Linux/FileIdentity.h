// What makes a file that file, whatever its name. Holds as long as somebody keeps it open: an inode number is given to
// another file once the last name and the last descriptor are gone.
#pragma once

#include "TavrinCore/Platform/Linux/SystemCalls.h"

#include <fcntl.h>
#include <sys/stat.h>

#include <cstdint>

namespace tavrin {

struct FileIdentity {
    std::uint64_t device = 0;
    /// 0 where the kernel tells no mount ids (before 5.8).
    std::uint64_t mount = 0;
    std::uint64_t inode = 0;
    /// S_IFMT's bits.
    unsigned type = 0;

    friend bool operator==(const FileIdentity&, const FileIdentity&) = default;

    /// A rename works inside one mount of one file system: two mounts of the same one refuse it (rename(2), EXDEV).
    [[nodiscard]] bool sharesMountWith(const FileIdentity& other) const {
        return device == other.device && mount == other.mount;
    }
    [[nodiscard]] bool isFolder() const { return S_ISDIR(type); }
};

[[nodiscard]] inline FileIdentity identityIn(const struct statx& status) {
    return {.device = std::uint64_t{status.stx_dev_major} << 32U | status.stx_dev_minor,
            .mount = (status.stx_mask & STATX_MNT_ID) != 0 ? status.stx_mnt_id : 0,
            .inode = status.stx_ino,
            .type = status.stx_mode & static_cast<unsigned>(S_IFMT)};
}

}  // namespace tavrin
