// Which apps belong to the system or to its maker, and so can't be uninstalled.
#pragma once

#include "TavrinCore/Models/URL.h"

#include <optional>
#include <string>

namespace tavrin {

/// Pure functions of their arguments and the disk. What can't be examined doesn't protect by that alone.
class SystemAppGuard {
  public:
    SystemAppGuard() = delete;

    /// Whether the bundle at `url` is protected. Reads its identifier.
    [[nodiscard]] static bool isProtectedApp(const URL& url);
    /// The same, for an identifier that the caller has read; nil for a bundle without one.
    [[nodiscard]] static bool isProtectedApp(const URL& url, const std::optional<std::string>& bundleID);

    /// Whether the system itself forbids changes to what stands at `url`, a link being looked at as a link.
    [[nodiscard]] static bool isSIPRestricted(const URL& url);
};

}  // namespace tavrin
