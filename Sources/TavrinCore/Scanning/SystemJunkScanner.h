// What the system and its apps leave in the user's Library and make again by themselves: caches, logs, crash reports,
// saved window state, build products, and the caches inside app containers. Everything found starts selected.
#pragma once

#include "TavrinCore/Scanning/Scanner.h"

#include <optional>
#include <vector>

namespace tavrin {

class ScanRun;

class SystemJunkScanner final : public Scanner {
  public:
    /// A nil `library` is ~/Library. Every source lies below it, but the two privileged ones.
    explicit SystemJunkScanner(bool includePrivileged, std::optional<URL> library = std::nullopt);

    [[nodiscard]] ModuleKind kind() const override { return ModuleKind::systemJunk; }

    using Scanner::scan;
    /// Findings come largest first; equal ones in the order they were found in.
    [[nodiscard]] std::vector<CleanableItem> scan(const ProgressCallback& progress,
                                                  const CancellationCallback& isCancelled) const override;

  private:
    struct Source {
        URL url;
        ScanCategory category;
        /// Each child is a finding of its own; otherwise the source itself is one.
        bool perChild;
    };
    class Run;

    [[nodiscard]] std::vector<Source> makeSources(ScanRun& run) const;

    bool includePrivileged_;
    URL library_;
};

}  // namespace tavrin
