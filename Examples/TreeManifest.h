// What a tree holds, to the byte, so that two moments of it can be compared: kinds, modes, times, sizes, links, names
// of one file, extended attributes, and a SHA-256 of all contents.
//
// It stands apart from the core on purpose: what proves that the core lost nothing must not walk with the core's feet.
#pragma once

#include "TavrinCore/Models/URL.h"

#include <cstdint>
#include <map>
#include <set>
#include <string>
#include <utility>
#include <vector>

namespace tavrin::example {

struct TreeEntry {
    bool isFolder = false;
    /// All that must be equal but the two below, as text that a person can compare.
    std::string facts;
    /// Nanoseconds since 1970.
    std::int64_t modified = 0;
    /// Device and number: names of one file share it.
    std::pair<std::uint64_t, std::uint64_t> identity;
};

/// By path relative to the root, as bytes. The root itself is "".
using TreeManifest = std::map<std::string, TreeEntry>;

/// Links are not followed, what isn't a regular file is never opened, and no path is too long. Passes over what lies at
/// or below the relative paths in `leftOut`. Throws std::runtime_error when anything can't be read.
[[nodiscard]] TreeManifest manifestOf(const URL& root, const std::set<std::string>& leftOut = {});

/// What may differ between two moments.
struct ExpectedChanges {
    /// Relative paths that are no longer there, each with all that lay below.
    std::set<std::string> gone;
    /// Folders that lost or regained a child, or both. A rename marks their time, and nothing can keep it.
    std::set<std::string> touchedFolders;
};

/// What moving `originals` away changes in the tree at `root`, in which they lie.
[[nodiscard]] ExpectedChanges changesOfMoving(const std::vector<URL>& originals, const URL& root);

/// One line for each difference that isn't expected, and each expectation that didn't come true; none when all is well.
[[nodiscard]] std::vector<std::string> differences(const TreeManifest& before, const TreeManifest& after,
                                                   const ExpectedChanges& expected);

}  // namespace tavrin::example
