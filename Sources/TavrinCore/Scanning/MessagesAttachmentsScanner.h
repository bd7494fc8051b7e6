// Large single files in the attachment store of the messages program. They are the user's own photos and videos:
// nothing starts selected.
#pragma once

#include "TavrinCore/Scanning/Scanner.h"

#include <optional>
#include <vector>

namespace tavrin {

class MessagesAttachmentsScanner final : public Scanner {
  public:
    /// A file is listed from `minSize` bytes on. A nil `root` is the store in ~/Library.
    explicit MessagesAttachmentsScanner(std::int64_t minSize, std::optional<URL> root = std::nullopt);

    [[nodiscard]] ModuleKind kind() const override { return ModuleKind::messagesAttachments; }

    using Scanner::scan;
    /// Findings come largest first; equal ones in the order of the walk. A store that isn't there gives nothing, and no
    /// report either; one that refuses fails the scan at once.
    [[nodiscard]] std::vector<CleanableItem> scan(const ProgressCallback& progress,
                                                  const CancellationCallback& isCancelled) const override;

  private:
    std::int64_t minSize_;
    URL root_;
};

}  // namespace tavrin
