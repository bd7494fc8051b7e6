// File flags of that kind are a matter of BSD: stat(2) has no st_flags here. What stands nearest, the immutable flag of
// ioctl_iflags(2), is set by administrators for purposes of their own, and a move that meets it is refused anyway.
#include "TavrinCore/Platform/SystemProtection.h"

namespace tavrin {

bool hasRestrictedFlag(const URL& /*url*/) {
    return false;
}

}  // namespace tavrin
