#include "TavrinCore/Platform/Linux/HarmlessOpen.h"

#include "TavrinCore/Platform/Linux/AnchoredPath.h"
#include "TavrinCore/Platform/Linux/StatxStatus.h"

#include <fcntl.h>
#include <sys/stat.h>

#include <cerrno>
#include <utility>

namespace tavrin {
namespace {

bool isHarmless(unsigned mode) {
    return S_ISREG(mode) || S_ISDIR(mode);
}

/// Where the system lets us, reading leaves the time of last use alone: a search for copies must not make all files
/// look used today to the search for old ones. It is the owner's to ask for.
Descriptor openQuietly(const AnchoredPath& path) {
    constexpr int flags = O_RDONLY | O_NONBLOCK | O_NOCTTY;
    Descriptor quiet = path.open(flags | O_NOATIME);
    return quiet.isOpen() || errno != EPERM ? std::move(quiet) : path.open(flags);
}

}  // namespace

Result<HarmlessFile> openHarmless(const URL& file) {
    const AnchoredPath path(file.path());
    if (path.error() != 0) return SystemError::posix(path.error());
    struct stat before {};
    if (::fstatat(path.folder(), path.name(), &before, 0) != 0) return SystemError::posix(errno);
    if (!isHarmless(before.st_mode)) return SystemError::posix(EINVAL);
    Descriptor opened = openQuietly(path);
    if (!opened.isOpen()) return SystemError::posix(errno);
    constexpr unsigned fields = kStatxSizes | kStatxIdentifier;
    struct statx after {};
    if (::statx(opened.number(), "", kStatxLook | AT_EMPTY_PATH, fields, &after) != 0) return SystemError::posix(errno);
    if (!isHarmless(after.stx_mode)) return SystemError::posix(EINVAL);
    return HarmlessFile{.descriptor = std::move(opened), .status = statusFrom(after, fields)};
}

}  // namespace tavrin
