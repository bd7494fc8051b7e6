// Whether a finding belongs to an app that is running right now, so that it isn't proposed.
#pragma once

#include "TavrinCore/Models/Models.h"

#include <set>
#include <string>

namespace tavrin {

class LiveCacheCheck {
  public:
    LiveCacheCheck() = delete;

    /// `runningBundleIDs` holds the lower-cased identifiers of the apps that run.
    ///
    /// Caches, logs, leftovers and derived data are known by their name: it is one of the identifiers, or begins with
    /// one. No dot is asked for behind it, since helpers' caches carry suffixes of all kinds. An application is known
    /// by its bundle's identifier. Nothing else belongs to anybody here.
    [[nodiscard]] static bool belongsToRunningApp(const CleanableItem& item,
                                                  const std::set<std::string>& runningBundleIDs);
};

}  // namespace tavrin
