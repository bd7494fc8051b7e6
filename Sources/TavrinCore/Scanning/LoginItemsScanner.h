// What starts when the user logs in: the property lists that launchd reads. Only the broken ones start selected, those
// whose program is no longer there; to remove one that works is the user's own decision.
#pragma once

#include "TavrinCore/Scanning/Scanner.h"

#include <optional>
#include <string>
#include <vector>

namespace tavrin {

class LoginItemsScanner final : public Scanner {
  public:
    /// `injectedRoots` replace the folders whole; then `includePrivileged` isn't looked at.
    explicit LoginItemsScanner(bool includePrivileged, std::optional<std::vector<URL>> injectedRoots = std::nullopt);

    [[nodiscard]] ModuleKind kind() const override { return ModuleKind::loginItems; }

    using Scanner::scan;
    /// The broken ones come first, and both halves by name. Sends no report but the last. A cancel is noticed before
    /// each folder.
    [[nodiscard]] std::vector<CleanableItem> scan(const ProgressCallback& progress,
                                                  const CancellationCallback& isCancelled) const override;

    /// The folders whose direct children are looked at: the user's LaunchAgents, and the system's two if privileged.
    [[nodiscard]] std::vector<URL> roots() const;

    /// What one property list tells of itself.
    struct AgentInfo {
        /// The line under its name.
        std::string detail;
        /// Its program is named by an absolute path at which nothing stands.
        bool isBroken = false;

        friend bool operator==(const AgentInfo&, const AgentInfo&) = default;
    };
    /// A file that can't be read, or is no property list within the limits, is never broken.
    [[nodiscard]] static AgentInfo inspectAgent(const URL& file);

  private:
    bool includePrivileged_;
    std::optional<std::vector<URL>> injectedRoots_;
};

}  // namespace tavrin
