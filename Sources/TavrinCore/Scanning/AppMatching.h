// To which app a file or folder in the Library belongs, told by its name alone.
//
// When nothing is certain, nobody owns it: leftovers that stay do less harm than another app's data taken.
#pragma once

#include "TavrinCore/Models/Models.h"

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace tavrin {

/// Pure functions. Names are compared without regard to case, nor to how an accent is stored.
class AppMatching {
  public:
    AppMatching() = delete;

    struct AppIdentity {
        /// The app's display name.
        std::string name;
        std::optional<std::string> bundleID;

        friend bool operator==(const AppIdentity&, const AppIdentity&) = default;
    };

    /// In the order of certainty.
    enum class MatchStrength : std::uint8_t {
        none = 0,
        byName = 1,
        byBundleID = 2,
    };

    /// Whether several apps share a folder of that name, or the system owns it. No app claims it by its own name.
    [[nodiscard]] static bool isSharedVendorFolder(std::string_view name);

    /// How surely `candidate`, the name of a file or folder, belongs to the app. The name of an app whose identifier is
    /// known counts only whole; that of another also with what follows a dot ("foo.bar.plist" for foo).
    [[nodiscard]] static MatchStrength strength(std::string_view candidate, std::string_view appName,
                                                const std::optional<std::string>& bundleID);
    /// Whether `strength` is not none.
    [[nodiscard]] static bool matchesApp(std::string_view candidate, std::string_view appName,
                                         const std::optional<std::string>& bundleID);

    /// For each candidate the index in `apps` of its one owner, or nil: the app of the highest strength. Of several,
    /// the one whose name is a piece of its identifier; if that doesn't leave exactly one, nobody. The time grows with
    /// the number of candidates and apps, not with their product. Once cancelled, the rest has no owner: ask again.
    [[nodiscard]] static std::vector<std::optional<std::size_t>> assignOwners(
        const std::vector<std::string>& candidates, const std::vector<AppIdentity>& apps,
        const CancellationCallback& isCancelled = neverCancelled);
};

}  // namespace tavrin
