// The disk caches of eight browsers. They come back by themselves, so every finding starts selected. Only cache folders
// are listed: never history, cookies, passwords or profiles.
#pragma once

#include "TavrinCore/Scanning/Scanner.h"

#include <optional>
#include <string>
#include <vector>

namespace tavrin {

class ScanRun;

class BrowserCacheScanner final : public Scanner {
  public:
    /// A nil `library` is ~/Library; everything lies below it. A folder is listed from `minSize` bytes on.
    explicit BrowserCacheScanner(std::int64_t minSize, std::optional<URL> library = std::nullopt);

    [[nodiscard]] ModuleKind kind() const override { return ModuleKind::browserCaches; }

    using Scanner::scan;
    /// Findings come largest first; equal ones in the order they were found in.
    [[nodiscard]] std::vector<CleanableItem> scan(const ProgressCallback& progress,
                                                  const CancellationCallback& isCancelled) const override;

  private:
    void considerFolder(ScanRun& run, const URL& folder, const std::string& label) const;
    void findInProfiles(ScanRun& run) const;

    std::int64_t minSize_;
    URL library_;
};

}  // namespace tavrin
