// The contract that each of the fifteen scanners fulfils. A scanner looks, measures and proposes; it changes nothing.
#pragma once

#include "TavrinCore/Models/Models.h"

#include <vector>

namespace tavrin {

/// Holds configuration only and is immutable, so a new one is made for each scan and nothing carries over.
///
/// What each scan keeps to:
/// - one AccessDenials for the whole scan, handed to all that can be refused;
/// - a report at each step, and a last one with the final phase, no path, the fraction 1.0 and the count of refused
/// roots;
/// - a look at `isCancelled` for each source and each candidate; a cancelled scan throws and returns nothing partial;
/// - AccessDenials::throwIfNothingFound before the last report;
/// - a missing source is an empty one.
class Scanner {
  public:
    virtual ~Scanner() = default;

    [[nodiscard]] virtual ModuleKind kind() const = 0;

    /// Runs on the caller's thread from start to end, and calls back on it. Findings come in their final display order.
    /// Throws ScanError.
    [[nodiscard]] virtual std::vector<CleanableItem> scan(const ProgressCallback& progress,
                                                          const CancellationCallback& isCancelled) const = 0;
    /// The same, for a scan that nobody cancels.
    [[nodiscard]] std::vector<CleanableItem> scan(const ProgressCallback& progress) const {
        return scan(progress, neverCancelled);
    }

  protected:
    Scanner() = default;
    Scanner(const Scanner&) = default;
    Scanner& operator=(const Scanner&) = default;
};

}  // namespace tavrin
