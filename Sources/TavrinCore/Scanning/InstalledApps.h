// The apps on the user's disk, as the scanners that look at apps see them.
//
// An app is what bears the extension "app", in just this case, right inside a search directory: a bundle, a link to
// one, even a plain file. Subfolders are not entered.
#pragma once

#include "TavrinCore/Models/URL.h"
#include "TavrinCore/Scanning/AppMatching.h"

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace tavrin {

class ScanRun;

/// /Applications and ~/Applications, those of them that exist. Looked for each time.
[[nodiscard]] std::vector<URL> defaultAppDirectories();

/// The extension that makes an app, with its dot; what an app is called without it is its name.
inline constexpr std::string_view appSuffix = ".app";
[[nodiscard]] bool isApp(const URL& url);
/// Of an app: the last path component without the extension.
[[nodiscard]] std::string_view appName(const URL& app);

/// The apps in `directories`, hidden ones left out, in the order of the directories and in each as the file system
/// lists. A directory that refuses is recorded; one that is missing is an empty one. Throws ScanError::cancelled.
[[nodiscard]] std::vector<URL> appsIn(const std::vector<URL>& directories, ScanRun& run);

/// An app that its user may remove. The identity is what AppMatching knows it by; a bundle that can't be read has no
/// identifier.
struct RemovableApp {
    URL url;
    AppMatching::AppIdentity identity;

    friend bool operator==(const RemovableApp&, const RemovableApp&) = default;
};

/// appsIn() without the apps that SystemAppGuard protects. Throws ScanError::cancelled.
[[nodiscard]] std::vector<RemovableApp> removableAppsIn(const std::vector<URL>& directories, ScanRun& run);

/// The identities alone, in the same order.
[[nodiscard]] std::vector<AppMatching::AppIdentity> identitiesOf(const std::vector<RemovableApp>& apps);

/// An app and what it left elsewhere, measured.
struct MeasuredApp {
    std::int64_t appBytes = 0;
    std::int64_t leftoverBytes = 0;
    /// How many there are.
    std::int64_t leftovers = 0;

    /// All of it.
    [[nodiscard]] std::int64_t bytes() const;
};

/// Once cancelled, what was measured so far, without a word: the scans of apps notice a cancel at the next app.
[[nodiscard]] MeasuredApp measure(const URL& app, const std::vector<URL>& leftovers, ScanRun& run);

/// The report that goes before the work on the app with this index, of `count`. No bytes stand in it.
void reportApp(ScanRun& run, const std::string& phase, const URL& app, std::size_t index, std::size_t count);

}  // namespace tavrin
