#include "TavrinCore/Platform/Linux/HarmlessOpen.h"

#include "TavrinCore/Platform/Linux/AnchoredPath.h"

#include <fcntl.h>
#include <sys/stat.h>

#include <cerrno>

namespace tavrin {
namespace {

bool isHarmless(const struct stat& status) {
    return S_ISREG(status.st_mode) || S_ISDIR(status.st_mode);
}

}  // namespace

Result<Descriptor> openHarmless(const URL& file) {
    const AnchoredPath path(file.path());
    if (path.error() != 0) return SystemError::posix(path.error());
    struct stat status {};
    if (::fstatat(path.folder(), path.name(), &status, 0) != 0) return SystemError::posix(errno);
    if (!isHarmless(status)) return SystemError::posix(EINVAL);
    Descriptor opened = path.open(O_RDONLY | O_NONBLOCK | O_NOCTTY);
    if (!opened.isOpen() || ::fstat(opened.number(), &status) != 0) return SystemError::posix(errno);
    if (!isHarmless(status)) return SystemError::posix(EINVAL);
    return opened;
}

}  // namespace tavrin
