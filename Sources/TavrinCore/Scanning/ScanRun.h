// One scan under way: what the scanners do alike. Lives for as long as one call of Scanner::scan, on its thread.
#pragma once

#include "TavrinCore/Models/Models.h"
#include "TavrinCore/Platform/CoarseClock.h"
#include "TavrinCore/Scanning/AccessDenials.h"

#include <chrono>
#include <cstdint>
#include <functional>
#include <optional>
#include <vector>

namespace tavrin {

class ScanRun {
  public:
    using Clock = std::function<std::chrono::steady_clock::time_point()>;

    /// Nobody who watches waits longer than this for a sign of life, once the scan has begun to report.
    static constexpr std::chrono::milliseconds longestSilence{500};

    /// The two callbacks must outlive this. `clock` is looked at with each poll.
    ScanRun(const ProgressCallback& progress, const CancellationCallback& isCancelled, Clock clock = coarseNow);
    ScanRun(const ScanRun&) = delete;
    ScanRun& operator=(const ScanRun&) = delete;

    /// For all that can be refused.
    [[nodiscard]] AccessDenials& denials() { return denials_; }

    /// Polls isCancelled().
    void throwIfCancelled();
    /// For all that takes long. Whoever polls it also keeps the scan talking: where the last report is older than
    /// longestSilence, it is sent once more.
    [[nodiscard]] const CancellationCallback& isCancelled() const { return poll_; }

    void report(ScanProgress report);

    /// The children that are not hidden; a refusal is recorded. Folders among them are marked as such, and links to
    /// folders are not folders. Throws when it was cancelled meanwhile.
    [[nodiscard]] std::vector<URL> children(const URL& folder);
    /// What FileSystemUtils::size says, with refusals recorded. Throws when it was cancelled meanwhile, so no partial
    /// sum is ever taken for a size.
    [[nodiscard]] std::int64_t size(const URL& url);
    /// The same for what isn't worth a word when it is refused.
    [[nodiscard]] std::int64_t sizeWithoutDenials(const URL& url);

    void add(CleanableItem item);
    /// Findings so far, and the sum of their sizes.
    [[nodiscard]] std::int64_t count() const { return static_cast<std::int64_t>(items_.size()); }
    [[nodiscard]] std::int64_t bytes() const { return bytes_; }

    /// The end of the scan: fails when nothing was found and something was refused, else sends the last report and
    /// gives the findings in the order in which they were added. Nothing may be asked of this afterwards.
    [[nodiscard]] std::vector<CleanableItem> finish(std::int64_t bytesFound);
    /// The same with the largest first, and equal ones in the order in which they were added.
    [[nodiscard]] std::vector<CleanableItem> finishLargestFirst(std::int64_t bytesFound);

  private:
    [[nodiscard]] std::int64_t measured(const URL& url, AccessDenials* denials);
    void breakSilence();

    const ProgressCallback& progress_;
    const CancellationCallback& isCancelled_;
    Clock clock_;
    CancellationCallback poll_;
    AccessDenials denials_;
    std::vector<CleanableItem> items_;
    std::int64_t bytes_ = 0;

    std::optional<ScanProgress> lastReport_;
    std::chrono::steady_clock::time_point lastReportTime_;
};

}  // namespace tavrin
