// What a flow does off the main thread: a scan or a clean, and everything that can be worked out right behind it, so
// that the main thread only puts the results in their place.
#pragma once

#include "TavrinClean/Kit/Arrangement.h"
#include "TavrinClean/Kit/ModuleServices.h"
#include "TavrinClean/Kit/Selection.h"
#include "TavrinCore/Cleaning/CleanJournal.h"

#include <memory>
#include <optional>
#include <set>
#include <string>
#include <vector>

namespace tavrin {

struct ScanOutcome {
    enum class Kind : std::uint8_t {
        found,
        cancelled,
        accessDenied,
        failed,
    };
    Kind kind = Kind::found;
    /// The error's own words, for `failed`.
    std::string error = {};
    // Only for `found`.
    std::shared_ptr<const Findings> findings = nullptr;
    std::shared_ptr<const Arrangement> arrangement = nullptr;
    Selection selection = {};
};

/// What belongs to a running application isn't ticked any more when this comes back; which ones run is asked once.
struct ScanTask {
    std::shared_ptr<const Scanner> scanner;
    SortOrder sortOrder = SortOrder::sizeDesc;
    std::function<std::set<std::string>()> runningBundleIDs;
    InstallDate installDate;
    ProgressCallback progress;
    CancellationCallback isCancelled;

    [[nodiscard]] ScanOutcome operator()() const noexcept;
};

struct CleanOutcome {
    CleanResult result = {};
    /// Store-bought apps' findings, which were left alone.
    std::vector<CleanFailure> storeBought = {};
    /// Paths of the apps that were ticked, standardised: for the Dock.
    std::set<std::string> apps = {};
    /// What was cleaned, and what is left of it: everything that wasn't handed to the cleaner, whatever became of it.
    std::shared_ptr<const Findings> base = nullptr;
    std::shared_ptr<const Findings> findings = nullptr;
    std::shared_ptr<const Arrangement> arrangement = nullptr;
    /// Where each of `findings` stood in `base`.
    std::vector<std::uint32_t> left = {};
    std::shared_ptr<CleanJournal> journal = nullptr;
};

struct CleanTask {
    std::shared_ptr<const Findings> findings;
    std::vector<std::uint8_t> ticks;
    SortOrder sortOrder = SortOrder::sizeDesc;
    CleanFunction clean;
    /// Where each move is noted; none when nobody keeps a history.
    std::shared_ptr<CleanJournal> journal;
    InstallDate installDate;
    ProgressCallback progress;
    CancellationCallback isCancelled;

    [[nodiscard]] CleanOutcome operator()() const;
};

}  // namespace tavrin
