// The records that getdents64(2) writes. The kernel checks some of what a file system in user space hands out, but not
// all, and a walk must not depend on it: a record is read by its bytes, and nothing of it is believed.
#pragma once

#include "TavrinCore/Platform/FileStatus.h"

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string_view>

namespace tavrin {

struct ListedEntry {
    /// Followed by a zero byte in the buffer.
    std::string_view name;
    /// Unknown on file systems that don't tell.
    FileType type = FileType::unknown;
    /// Where a listing goes on after this entry, for lseek(2).
    std::int64_t next = 0;
    /// Bytes of the record in the buffer.
    std::size_t length = 0;

    /// "." and ".." are in every listing.
    [[nodiscard]] bool isDots() const { return name[0] == '.' && (name.size() == 1 || name == ".."); }
};

/// The first record of `buffer`. Nil when it isn't one: cut short, of no length, without an end of its name, or with a
/// name that no entry can have and that would lead elsewhere.
[[nodiscard]] std::optional<ListedEntry> readListedEntry(std::string_view buffer);

}  // namespace tavrin
