// Deleting for good. Only the Trash is emptied by it.
#pragma once

#include "TavrinCore/Platform/Linux/HeldFile.h"

namespace tavrin {

/// A folder goes with all that lies in it, by descriptor: no link is followed, however the tree is changed meanwhile,
/// and no other mount is entered (EXDEV). What can't go stays, with the folders above it; the rest goes. Tells the
/// first refusal. ESTALE, and nothing done, when the item is no longer what was held.
[[nodiscard]] Outcome removeHeld(SystemCalls& calls, const HeldFile& held);

}  // namespace tavrin
