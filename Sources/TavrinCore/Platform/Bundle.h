// What a bundle (an .app, a .plugin) tells of itself.
#pragma once

#include "TavrinCore/Models/URL.h"
#include "TavrinCore/Scanning/PropertyList.h"

#include <optional>
#include <string>

namespace tavrin {

/// The dictionary that describes the bundle at `url`; nil for a path that is no bundle. Read each time, never cached.
[[nodiscard]] std::optional<PropertyList> bundleInfo(const URL& url);

/// The bundle's identifier ("com.example.app"), as written; nil for a path that is no bundle and for a bundle that has
/// none.
[[nodiscard]] std::optional<std::string> bundleIdentifier(const URL& url);

}  // namespace tavrin
