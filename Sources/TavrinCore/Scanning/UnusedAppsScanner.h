// The apps that haven't been opened for months, each with its leftovers: the uninstaller narrowed by a date. Nothing
// starts selected.
#pragma once

#include "TavrinCore/Platform/AppUsage.h"
#include "TavrinCore/Scanning/Scanner.h"

#include <functional>
#include <optional>
#include <vector>

namespace tavrin {

/// Where that scan learns of time.
struct AppTimes {
    /// When an app was last opened; nil where nobody knows, and such an app is never unused.
    std::function<std::optional<Date>(const URL& app)> lastUsed = lastUsedDate;
    std::function<Date()> now = Date::now;
};

class UnusedAppsScanner final : public Scanner {
  public:
    /// An app is unused when it was last opened more than `unusedAfterDays` times 24 hours before the scan. Nil
    /// `searchDirectories`, whose direct children are the apps: /Applications and ~/Applications, those that exist.
    explicit UnusedAppsScanner(int unusedAfterDays, std::optional<std::vector<URL>> searchDirectories = std::nullopt,
                               AppTimes times = {});

    [[nodiscard]] ModuleKind kind() const override { return ModuleKind::unusedApps; }

    using Scanner::scan;
    /// Findings come largest first. Their size is that of the app and its leftovers together; the owner of a leftover
    /// is settled among all apps, used or not. A cancel is noticed before each app; after the last one it comes too
    /// late.
    [[nodiscard]] std::vector<CleanableItem> scan(const ProgressCallback& progress,
                                                  const CancellationCallback& isCancelled) const override;

  private:
    int unusedAfterDays_;
    std::vector<URL> searchDirectories_;
    AppTimes times_;
};

}  // namespace tavrin
