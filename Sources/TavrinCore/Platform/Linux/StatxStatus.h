// statx(2), and what it says in the core's words.
#pragma once

#include "TavrinCore/Platform/FileStatus.h"

#include <fcntl.h>
#include <sys/stat.h>

namespace tavrin {

/// Nothing is mounted for a look at it, and a network file system needn't ask its server.
inline constexpr int kStatxLook = AT_NO_AUTOMOUNT | AT_STATX_DONT_SYNC;
inline constexpr unsigned kStatxSizes = STATX_TYPE | STATX_SIZE | STATX_BLOCKS;
inline constexpr unsigned kStatxDates = STATX_MTIME | STATX_ATIME | STATX_MNT_ID;
inline constexpr unsigned kStatxIdentifier = STATX_INO;

/// Only what was asked for in `fields` and what the file system gave.
[[nodiscard]] FileStatus statusFrom(const struct statx& status, unsigned fields);

}  // namespace tavrin
