// A scan with all that it said, and what every scanner owes whoever stops it.
#pragma once

#include "Support/TestFolder.h"
#include "TavrinCore/Scanning/Scanner.h"

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace tavrin::test {

struct RecordedScan {
    std::vector<CleanableItem> items;
    std::vector<ScanProgress> reports;
    /// How it failed; nil for one that gave a result.
    std::optional<ScanError> failure;

    /// Of the findings, relative to `world`, in their order.
    [[nodiscard]] std::vector<std::string> paths(const TestFolder& world) const;
    /// Of the findings, in their order.
    [[nodiscard]] std::vector<std::string> names() const;
    /// Of the findings, in their order; "nil" for one without.
    [[nodiscard]] std::vector<std::string> details() const;
    /// The finding whose URL has this last name; fails the test and gives an empty one where there is none.
    [[nodiscard]] CleanableItem named(std::string_view name) const;
    /// Of the reports before the last one: their phases.
    [[nodiscard]] std::vector<std::string> phasesBeforeTheEnd() const;
};

/// The last report of a scan that was refused nothing.
[[nodiscard]] ScanProgress doneReport(std::int64_t itemsFound, std::int64_t bytesFound);

[[nodiscard]] RecordedScan record(const Scanner& scanner, const CancellationCallback& isCancelled = neverCancelled);
/// `onReport` hears of each report as well, while the scan waits.
[[nodiscard]] RecordedScan record(const Scanner& scanner, const CancellationCallback& isCancelled,
                                  const ProgressCallback& onReport);

/// Stops the scan at each of the moments at which it asks, one after the other: each time it must fail as cancelled, at
/// once, without a last report. What it scans must stay as it is.
void expectCancellableAtEveryPoll(const Scanner& scanner);

}  // namespace tavrin::test
