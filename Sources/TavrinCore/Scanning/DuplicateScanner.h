// Files with the same bytes in the user's main folders: all but the oldest of each group are offered for removal.
//
// A funnel, so that most files are never opened: first the sizes, then the first bytes, then all of them. Exact:
// nothing is reported unless the whole contents are equal.
#pragma once

#include "TavrinCore/Scanning/Scanner.h"

#include <cstdint>
#include <optional>
#include <vector>

namespace tavrin {

class DuplicateScanner final : public Scanner {
  public:
    /// Nil `roots` are the default ones. Files that occupy less than `minimumSize` bytes are passed over.
    DuplicateScanner(std::optional<std::vector<URL>> roots, std::int64_t minimumSize);

    /// Those of the user's folders that exist.
    [[nodiscard]] static std::vector<URL> defaultRoots();

    [[nodiscard]] ModuleKind kind() const override { return ModuleKind::duplicates; }

    using Scanner::scan;
    /// Findings come largest first; groups of one size in the order of their hashes. Those of a group stand together,
    /// the one to keep first, then the others by their dates. Their group is the SHA-256 of their contents.
    [[nodiscard]] std::vector<CleanableItem> scan(const ProgressCallback& progress,
                                                  const CancellationCallback& isCancelled) const override;

  private:
    class Run;

    std::vector<URL> roots_;
    std::int64_t minimumSize_;
};

}  // namespace tavrin
