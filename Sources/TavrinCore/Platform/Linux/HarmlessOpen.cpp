#include "TavrinCore/Platform/Linux/HarmlessOpen.h"

#include "TavrinCore/Platform/Linux/AnchoredPath.h"

#include <fcntl.h>
#include <sys/stat.h>

#include <cerrno>
#include <utility>

namespace tavrin {
namespace {

bool isHarmless(const struct stat& status) {
    return S_ISREG(status.st_mode) || S_ISDIR(status.st_mode);
}

/// Where the system lets us, reading leaves the time of last use alone: a search for copies must not make all files
/// look used today to the search for old ones. It is the owner's to ask for.
Descriptor openQuietly(const AnchoredPath& path) {
    constexpr int flags = O_RDONLY | O_NONBLOCK | O_NOCTTY;
    Descriptor quiet = path.open(flags | O_NOATIME);
    return quiet.isOpen() || errno != EPERM ? std::move(quiet) : path.open(flags);
}

}  // namespace

Result<Descriptor> openHarmless(const URL& file) {
    const AnchoredPath path(file.path());
    if (path.error() != 0) return SystemError::posix(path.error());
    struct stat status {};
    if (::fstatat(path.folder(), path.name(), &status, 0) != 0) return SystemError::posix(errno);
    if (!isHarmless(status)) return SystemError::posix(EINVAL);
    Descriptor opened = openQuietly(path);
    if (!opened.isOpen() || ::fstat(opened.number(), &status) != 0) return SystemError::posix(errno);
    if (!isHarmless(status)) return SystemError::posix(EINVAL);
    return opened;
}

}  // namespace tavrin
