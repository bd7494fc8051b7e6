// The Trash of the freedesktop.org Trash specification 1.0, as desktops show it: into it, and back.
//
// The rule that holds at every instant, also when the process is killed or the machine loses power: an item is whole at
// one place, and while it is in the Trash, the note that tells its origin is there. The note is therefore made first
// and removed last. One without an item is harmless; desktops pass it over.
//
// `directorysizes` isn't kept: writing it anew for each item would cost more with each item that is there already.
// Readers measure what they don't find in it.
#pragma once

#include "TavrinCore/Platform/Linux/HeldFile.h"

namespace tavrin {

/// Where it went. EALREADY for what lies in a Trash already, EINVAL for a folder that the Trash itself lies in.
[[nodiscard]] Result<URL> moveToTrash(SystemCalls& calls, const HeldFile& held);

/// Back to `original`, whose folder must be there. EEXIST when something bears that name; ENOENT when what lies at
/// `trashed` by now came from elsewhere, as its note tells.
[[nodiscard]] Outcome moveOutOfTrash(SystemCalls& calls, const URL& trashed, const URL& original);

/// Removes the note of an item that has left the Trash. Nothing happens where `held` didn't lie in one.
void removeTrashInfo(SystemCalls& calls, const HeldFile& held);

}  // namespace tavrin
