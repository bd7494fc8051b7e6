// When an app was last used, as far as the system knows.
#pragma once

#include "TavrinCore/Models/Date.h"
#include "TavrinCore/Models/URL.h"

#include <optional>

namespace tavrin {

/// When the app at `app` was last opened; nil when the system doesn't know, which is never taken for "never". Read each
/// time. Safe from any thread.
///
/// On macOS the metadata index knows (kMDItemLastUsedDate). On Linux nobody keeps such a date by path; looked up is
/// what that index writes on the app itself, the extended attribute "com.apple.lastuseddate#PS", which comes along with
/// apps on the disk of a Mac and with copies that kept their attributes ("user.com.apple.lastuseddate#PS" there). All
/// other apps are unknown. Times of access are no evidence: copying and indexing set them, and many disks keep none.
[[nodiscard]] std::optional<Date> lastUsedDate(const URL& app);

}  // namespace tavrin
