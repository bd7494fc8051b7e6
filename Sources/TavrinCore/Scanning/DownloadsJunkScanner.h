// What lies right in the Downloads folder and is probably done with: installers and archives of any age, and files that
// nobody has opened for a long time. They are the user's own: nothing starts selected.
#pragma once

#include "TavrinCore/Platform/FileStatus.h"
#include "TavrinCore/Scanning/Scanner.h"

#include <optional>
#include <string>
#include <vector>

namespace tavrin {

class ScanRun;

class DownloadsJunkScanner final : public Scanner {
  public:
    /// Days count 86,400 seconds. Nil `downloads` are the folder of that name in the home.
    explicit DownloadsJunkScanner(int staleAfterDays, std::optional<URL> downloads = std::nullopt);

    [[nodiscard]] ModuleKind kind() const override { return ModuleKind::downloadsJunk; }

    using Scanner::scan;
    /// Findings come largest first; equal ones in the order they were found in. A folder that isn't there gives
    /// nothing, and no report either.
    [[nodiscard]] std::vector<CleanableItem> scan(const ProgressCallback& progress,
                                                  const CancellationCallback& isCancelled) const override;

    /// Why the file belongs on the list at `now`, with the day of its last use; nil when it doesn't, or is a folder.
    [[nodiscard]] std::optional<std::string> reason(const URL& url, const FileStatus& status, Date now) const;

  private:
    void consider(ScanRun& run, const URL& child, Date now) const;

    std::chrono::seconds staleAfter_;
    URL downloads_;
};

}  // namespace tavrin
