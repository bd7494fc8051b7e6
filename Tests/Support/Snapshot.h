// All that can be seen of a tree, to compare what it was with what it is.
#pragma once

#include "TavrinCore/Models/URL.h"

#include <cstdint>
#include <map>
#include <string>

namespace tavrin::test {

struct SnapshotEntry {
    unsigned mode = 0;
    unsigned user = 0;
    unsigned group = 0;
    /// Nanoseconds.
    std::int64_t modified = 0;
    /// A file's bytes, a link's target.
    std::string contents;
    std::map<std::string, std::string> attributes;

    friend bool operator==(const SnapshotEntry&, const SnapshotEntry&) = default;
};

/// Of one item, a folder without what lies in it.
[[nodiscard]] SnapshotEntry entryAt(const URL& url);

/// By relative path, the root as "". Needs the right to read it all.
using Snapshot = std::map<std::string, SnapshotEntry>;

[[nodiscard]] Snapshot snapshotOf(const URL& root);

}  // namespace tavrin::test
