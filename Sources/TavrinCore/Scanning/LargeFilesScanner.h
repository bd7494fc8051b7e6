// Files in the user's own folders that are large, or that nobody has opened for a long time, and whatever lies in the
// Trash. Only what is in the Trash starts selected.
#pragma once

#include "TavrinCore/Scanning/FileSystemUtils.h"
#include "TavrinCore/Scanning/Scanner.h"

#include <chrono>
#include <optional>
#include <vector>

namespace tavrin {

class ScanRun;

class LargeFilesScanner final : public Scanner {
  public:
    /// Nil `roots` are userContentRoots of the home. A file is large from `largeThreshold` bytes on, and old when its
    /// last use lies more than `staleInterval` back.
    LargeFilesScanner(std::optional<std::vector<URL>> roots, std::int64_t largeThreshold,
                      std::chrono::seconds staleInterval, bool includeTrash);

    /// The folders that people keep their files in, those of them that exist. Library is none.
    [[nodiscard]] static std::vector<URL> userContentRoots(const URL& home);

    [[nodiscard]] ModuleKind kind() const override { return ModuleKind::largeFiles; }

    using Scanner::scan;
    /// Findings come largest first; equal ones in the order they were found in.
    [[nodiscard]] std::vector<CleanableItem> scan(const ProgressCallback& progress,
                                                  const CancellationCallback& isCancelled) const override;

    /// The finding that `file` is at `now`; nil for a file that is neither large nor old. There is no lower bound on
    /// the size of an old one.
    [[nodiscard]] std::optional<CleanableItem> judge(const FileInfo& file, Date now) const;

  private:
    static void findInTrash(ScanRun& run);

    std::vector<URL> roots_;
    std::int64_t largeThreshold_;
    std::chrono::seconds staleInterval_;
    bool includeTrash_;
};

}  // namespace tavrin
