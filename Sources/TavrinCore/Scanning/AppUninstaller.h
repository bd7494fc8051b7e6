// The apps that the user may remove, each with what it left in the Library, so that its traces go along with it.
// Nothing starts selected: apps are chosen one by one.
#pragma once

#include "TavrinCore/Scanning/AccessDenials.h"
#include "TavrinCore/Scanning/AppMatching.h"
#include "TavrinCore/Scanning/Scanner.h"

#include <optional>
#include <vector>

namespace tavrin {

class AppUninstaller final : public Scanner {
  public:
    /// Nil `searchDirectories`, whose direct children are the apps: /Applications and ~/Applications, those that exist.
    /// Nil `leftoverRoots`, whose direct children may be leftovers: defaultLeftoverRoots().
    explicit AppUninstaller(std::optional<std::vector<URL>> searchDirectories = std::nullopt,
                            std::optional<std::vector<URL>> leftoverRoots = std::nullopt);

    [[nodiscard]] ModuleKind kind() const override { return ModuleKind::uninstaller; }

    using Scanner::scan;
    /// Findings come by name. Their size is that of the app and its leftovers together. A cancel is noticed before each
    /// app; after the last one it comes too late.
    [[nodiscard]] std::vector<CleanableItem> scan(const ProgressCallback& progress,
                                                  const CancellationCallback& isCancelled) const override;

    /// The eight folders of the user's Library where apps keep things, whether they exist or not.
    [[nodiscard]] static std::vector<URL> defaultLeftoverRoots();

    /// The leftovers of each app, parallel to `apps`: the direct children of the roots that AppMatching gives to it,
    /// hidden ones left out. No path is given twice. A root that refuses is recorded, if `denials` is given. Once
    /// cancelled, those found so far: ask again.
    [[nodiscard]] static std::vector<std::vector<URL>> assignLeftovers(
        const std::vector<URL>& roots, const std::vector<AppMatching::AppIdentity>& apps, AccessDenials* denials,
        const CancellationCallback& isCancelled = neverCancelled);

  private:
    std::vector<URL> searchDirectories_;
    std::vector<URL> leftoverRoots_;
};

}  // namespace tavrin
