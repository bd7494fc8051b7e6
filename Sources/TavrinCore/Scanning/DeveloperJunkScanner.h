// What developers' tools leave behind: caches in fixed places, which come back by themselves and start selected, and
// the build output inside the user's projects, which has to be built again and starts unselected.
#pragma once

#include "TavrinCore/Scanning/Scanner.h"

#include <optional>
#include <vector>

namespace tavrin {

class ScanRun;

class DeveloperJunkScanner final : public Scanner {
  public:
    /// A nil `home` is the user's. Nil `projectRoots` are the usual folders for projects below it, those that exist
    /// now. A root is of depth 0, and folders down to `maxDepth` are looked into.
    DeveloperJunkScanner(std::optional<URL> home, std::optional<std::vector<URL>> projectRoots, int maxDepth);

    [[nodiscard]] ModuleKind kind() const override { return ModuleKind::developerJunk; }
    [[nodiscard]] const std::vector<URL>& projectRoots() const { return projectRoots_; }

    using Scanner::scan;
    /// Findings come largest first; equal ones in the order they were found in. The last report counts the bytes of
    /// what starts selected alone.
    [[nodiscard]] std::vector<CleanableItem> scan(const ProgressCallback& progress,
                                                  const CancellationCallback& isCancelled) const override;

  private:
    void findToolCaches(ScanRun& run) const;
    [[nodiscard]] std::vector<URL> findBuildDirs(ScanRun& run) const;

    URL home_;
    std::vector<URL> projectRoots_;
    int maxDepth_;
};

}  // namespace tavrin
