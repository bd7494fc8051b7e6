// Drops the Dock's tiles of apps that are gone.
#pragma once

#include "TavrinClean/Platform/DockStore.h"
#include "TavrinCore/Models/URL.h"

#include <cstddef>
#include <functional>
#include <set>
#include <string>

namespace tavrin {

class DockCleaner {
  public:
    DockCleaner() = delete;

    /// Drops each tile whose app is among `removedAppPaths` (standardised), and each whose app stands no more: tiles of
    /// apps that went away earlier are swept out too. A tile without a path, a spacer, is kept. Returns how many were
    /// dropped; with none, nothing is written and the Dock isn't started anew.
    ///
    /// Blocks until the Dock has gone; nothing is reported, whatever the Dock's store refuses.
    static std::size_t removeEntries(const std::set<std::string>& removedAppPaths);
    /// The same on any store.
    static std::size_t removeEntries(const std::set<std::string>& removedAppPaths, DockStore& store,
                                     const std::function<bool(const URL&)>& exists);
};

}  // namespace tavrin
