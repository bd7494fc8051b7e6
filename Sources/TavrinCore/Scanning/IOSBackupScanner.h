// Backups of phones and tablets, each with its device's name, its model and its day. They can't be made again once the
// device is gone: nothing starts selected.
#pragma once

#include "TavrinCore/Scanning/Scanner.h"

#include <optional>
#include <string>
#include <vector>

namespace tavrin {

class IOSBackupScanner final : public Scanner {
  public:
    /// A nil `backupRoot` is where the system keeps them in ~/Library.
    explicit IOSBackupScanner(std::optional<URL> backupRoot = std::nullopt);

    /// "Ana's iPhone (iPhone 13) · Jan 2, 2024", from the property lists of the backup. What they don't tell, or tell
    /// in another type, is left out or replaced: by "iOS device", and by the folder's own date.
    [[nodiscard]] static std::string describe(const URL& backup);

    [[nodiscard]] ModuleKind kind() const override { return ModuleKind::iosBackups; }

    using Scanner::scan;
    /// Findings come largest first; equal ones in the order they were found in. A root that isn't there gives nothing,
    /// and no report either.
    [[nodiscard]] std::vector<CleanableItem> scan(const ProgressCallback& progress,
                                                  const CancellationCallback& isCancelled) const override;

  private:
    URL backupRoot_;
};

}  // namespace tavrin
