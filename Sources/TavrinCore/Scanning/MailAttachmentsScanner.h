// The folders in which mail programs keep copies of attachments: one finding for each program, with all its folders.
// Nothing starts selected, since a folder may hold the only copy.
#pragma once

#include "TavrinCore/Scanning/Scanner.h"

#include <optional>
#include <string>
#include <vector>

namespace tavrin {

class MailAttachmentsScanner final : public Scanner {
  public:
    /// A nil `home` is the user's.
    explicit MailAttachmentsScanner(std::optional<URL> home = std::nullopt);

    [[nodiscard]] ModuleKind kind() const override { return ModuleKind::mailAttachments; }

    using Scanner::scan;
    /// Findings come largest first; equal ones in the order of the programs. The group of a finding is the program's
    /// name, by which the screen tells whether its attachments can be downloaded again.
    [[nodiscard]] std::vector<CleanableItem> scan(const ProgressCallback& progress,
                                                  const CancellationCallback& isCancelled) const override;

  private:
    struct Source {
        /// The program's name, shown to the user.
        std::string label;
        URL root;
        /// Each child of the root is an attachment folder; otherwise the folders called "Attachments" below it are.
        bool directChildren;
    };
    class Run;

    [[nodiscard]] std::vector<Source> sources() const;

    URL home_;
};

}  // namespace tavrin
