// What the mount that a file is on was told to do. Internal to this folder.
#pragma once

#include <sys/stat.h>

namespace tavrin {

/// Whether reading a file on its mount is written down. On a mount with "noatime" the access date stands still, and
/// would make a file that is read every day look forgotten. `status` has STATX_MNT_ID; true where the kernel doesn't
/// tell (before 5.8). Safe from any thread.
///
/// The mounts are looked up when one appears that isn't known yet. One that is told otherwise while it is mounted is
/// noticed by the next start of the program.
[[nodiscard]] bool keepsAccessDates(const struct statx& status);

}  // namespace tavrin
