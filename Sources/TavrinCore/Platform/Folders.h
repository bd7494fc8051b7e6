// The folders that the system gives to its user.
#pragma once

#include "TavrinCore/Models/URL.h"

#include <optional>

namespace tavrin {

/// The user's home folder. Read each time, never cached.
[[nodiscard]] URL homeFolder();

/// Where programs keep what is theirs for this user; not created here.
[[nodiscard]] URL applicationSupportFolder();

/// Where programs keep this user's settings; not created here.
[[nodiscard]] URL configurationFolder();

/// The folder whose children are what lies in the user's Trash; not created here. Nil where the system names none.
[[nodiscard]] std::optional<URL> trashFolder();

}  // namespace tavrin
