// What the system itself keeps from being changed, whatever the permissions say.
#pragma once

#include "TavrinCore/Models/URL.h"

namespace tavrin {

/// Whether the item, links not followed, bears the system's flag SF_RESTRICTED (0x80000 of st_flags). What can't be
/// examined doesn't.
[[nodiscard]] bool hasRestrictedFlag(const URL& url);

}  // namespace tavrin
