// What the mount that a file is on was told to do. Internal to this folder.
#pragma once

#include <sys/stat.h>

namespace tavrin {

/// Whether reading a file on its mount is written down. On a mount with "noatime" the access date stands still, and
/// would make a file that is read every day look forgotten. `status` has STATX_MNT_ID; true where the kernel doesn't
/// tell (before 5.8). Safe from any thread.
///
/// Each thread remembers the last mount that it asked about.
[[nodiscard]] bool keepsAccessDates(const struct statx& status);

/// What begins to look at files does this first: meanwhile the mount may have been told otherwise, or have gone and
/// left its number to another.
void forgetTheLastMount();

}  // namespace tavrin
