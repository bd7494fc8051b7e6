// After apps were uninstalled: takes their tiles out of the dock, and those of apps that went away earlier.
#pragma once

#include "TavrinCore/Models/URL.h"
#include "TavrinCore/Platform/DockStore.h"

#include <cstdint>
#include <functional>
#include <set>
#include <string>

namespace tavrin {

class DockCleaner {
  public:
    DockCleaner() = delete;

    /// Drops the tiles whose app is in `removedAppPaths` (standardised) or is no longer there, and gives their
    /// number. Where none is dropped, nothing is written and the dock goes on undisturbed. A tile without an app stays,
    /// and a store of the wrong shape is left as it is. Blocks until the dock was told; never fails.
    static std::int64_t removeEntries(const std::set<std::string>& removedAppPaths);

    /// The same on any store, with anybody's word on whether something stands at a path.
    using FileExists = std::function<bool(const URL& url)>;
    static std::int64_t removeEntries(const std::set<std::string>& removedAppPaths, DockStore& store,
                                      const FileExists& fileExists = mayExist);

    /// An app in a folder that can't be looked into keeps its tile.
    [[nodiscard]] static bool mayExist(const URL& url);
};

}  // namespace tavrin
