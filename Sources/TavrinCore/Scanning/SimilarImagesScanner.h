// Pictures that look alike: bursts, resized copies, copies encoded anew. Nothing starts selected; the user decides.
#pragma once

#include "TavrinCore/Scanning/Scanner.h"

#include <cstdint>
#include <functional>
#include <optional>
#include <vector>

namespace tavrin {

class SimilarImagesScanner final : public Scanner {
  public:
    /// Nil for what is no picture, and once cancelled.
    using Hash =
        std::function<std::optional<std::uint64_t>(const URL& picture, const CancellationCallback& isCancelled)>;

    /// Nil `roots` are the default ones. Pictures are similar when their hashes differ in at most `threshold` bits
    /// of 64. Files that occupy less than `minimumSize` bytes are passed over. `hash` is for tests.
    SimilarImagesScanner(std::optional<std::vector<URL>> roots, int threshold, std::int64_t minimumSize,
                         Hash hash = nullptr);

    [[nodiscard]] ModuleKind kind() const override { return ModuleKind::similarImages; }

    using Scanner::scan;
    /// Groups come in the order in which their first pictures were met; in each, the largest file first, and it is the
    /// one to keep.
    [[nodiscard]] std::vector<CleanableItem> scan(const ProgressCallback& progress,
                                                  const CancellationCallback& isCancelled) const override;

  private:
    class Run;

    std::vector<URL> roots_;
    int threshold_;
    std::int64_t minimumSize_;
    Hash hash_;
};

}  // namespace tavrin
