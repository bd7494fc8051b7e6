#include "TavrinCore/Platform/FileStatus.h"

#include "TavrinCore/Platform/Linux/AnchoredPath.h"
#include "TavrinCore/Platform/Linux/MountOptions.h"
#include "TavrinCore/Platform/Linux/StatxStatus.h"

#include <algorithm>
#include <cerrno>
#include <limits>

namespace tavrin {
namespace {

constexpr auto kMaxBytes = std::numeric_limits<std::int64_t>::max();
/// The unit of stx_blocks, whatever the block size of the file system (statx(2)).
constexpr std::int64_t kBlock = 512;

FileType typeFrom(unsigned mode) {
    switch (mode & static_cast<unsigned>(S_IFMT)) {
        case S_IFREG:
            return FileType::regular;
        case S_IFDIR:
            return FileType::directory;
        case S_IFLNK:
            return FileType::symbolicLink;
        case S_IFIFO:
            return FileType::fifo;
        case S_IFSOCK:
            return FileType::socket;
        case S_IFCHR:
            return FileType::characterDevice;
        case S_IFBLK:
            return FileType::blockDevice;
        default:
            return FileType::unknown;
    }
}

// A file system in user space may say any number: it is held to what the type can carry.

std::int64_t heldTo(std::uint64_t value, std::int64_t most) {
    return static_cast<std::int64_t>(std::min(value, static_cast<std::uint64_t>(most)));
}

Date dateFrom(const struct statx_timestamp& time) {
    // Before and after all that a Date tells apart from these two.
    constexpr std::int64_t most = std::int64_t{1} << 52;
    return Date::fromUnix(std::clamp<std::int64_t>(time.tv_sec, -most, most), time.tv_nsec);
}

}  // namespace

FileStatus statusFrom(const struct statx& status, unsigned fields) {
    const unsigned given = status.stx_mask & fields;
    FileStatus result;
    if ((given & STATX_TYPE) != 0) result.type = typeFrom(status.stx_mode);
    if ((given & STATX_SIZE) != 0) result.size = heldTo(status.stx_size, kMaxBytes);
    if ((given & STATX_BLOCKS) != 0) result.allocatedSize = heldTo(status.stx_blocks, kMaxBytes / kBlock) * kBlock;
    if ((given & STATX_MTIME) != 0) result.modified = dateFrom(status.stx_mtime);
    if ((given & STATX_ATIME) != 0 && keepsAccessDates(status)) result.accessed = dateFrom(status.stx_atime);
    if ((given & STATX_INO) != 0) {
        result.identifier = FileIdentifier{.device = std::uint64_t{status.stx_dev_major} << 32U | status.stx_dev_minor,
                                           .inode = status.stx_ino};
    }
    if ((given & STATX_BTIME) != 0) result.created = dateFrom(status.stx_btime);
    return result;
}

Result<FileStatus> fileStatus(const URL& url, LastLink lastLink) {
    const AnchoredPath path(url.path());
    if (path.error() != 0) return SystemError::posix(path.error());
    const int flags = kStatxLook | (lastLink == LastLink::keep ? AT_SYMLINK_NOFOLLOW : 0);
    constexpr unsigned fields = kStatxSizes | kStatxDates | STATX_BTIME | kStatxIdentifier;
    struct statx status {};
    if (::statx(path.folder(), path.name(), flags, fields, &status) != 0) return SystemError::posix(errno);
    return statusFrom(status, fields);
}

}  // namespace tavrin
