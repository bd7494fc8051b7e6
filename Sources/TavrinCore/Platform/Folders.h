// The folders that the system gives to its user.
#pragma once

#include "TavrinCore/Models/URL.h"

namespace tavrin {

/// The user's home folder. Read each time, never cached.
[[nodiscard]] URL homeFolder();

/// Where programs keep what is theirs for this user; not created here.
[[nodiscard]] URL applicationSupportFolder();

}  // namespace tavrin
