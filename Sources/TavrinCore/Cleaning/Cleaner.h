// The only component that changes what a scan found. What is cleaned is moved to the user's Trash, not deleted, and
// comes back with a record that undoes it; a protected path is refused, whoever asks.
#pragma once

#include "TavrinCore/Cleaning/TrashedEntry.h"
#include "TavrinCore/Models/Models.h"
#include "TavrinCore/Platform/FileEffects.h"

#include <cstdint>
#include <functional>
#include <span>
#include <string>
#include <vector>

namespace tavrin {

/// One path that stayed where it was, and why.
struct CleanFailure {
    URL url;
    /// For people, in the running language.
    std::string reason;

    /// Path and reason: one path may stand in a list with two of them.
    [[nodiscard]] std::string id() const { return url.path() + "|" + reason; }

    friend bool operator==(const CleanFailure&, const CleanFailure&) = default;
};

struct CleanResult {
    /// Paths that went away, and what they measured. In the Trash they go on taking up the disk until it is emptied.
    std::int64_t removedItems = 0;
    std::int64_t reclaimedBytes = 0;
    std::vector<CleanFailure> failures = {};
    std::vector<TrashedEntry> restorable = {};

    friend bool operator==(const CleanResult&, const CleanResult&) = default;
};

struct RestoreResult {
    std::int64_t restored = 0;
    std::vector<CleanFailure> failures = {};
    /// The entries that are not back, for whatever reason, those that never can be included.
    std::vector<TrashedEntry> pending = {};

    friend bool operator==(const RestoreResult&, const RestoreResult&) = default;
};

/// Hears of each path right after it went to the Trash: where it is now, and its bytes.
using TrashedCallback = std::function<void(const TrashedEntry&, std::int64_t bytes)>;

/// Holds no state, so one can be made wherever it is needed. Runs on the caller's thread from start to end and calls
/// back on it. Never fails as a whole: what goes wrong is told per path, and the next path follows.
class Cleaner {
  public:
    Cleaner() : Cleaner(systemFileEffects()) {}
    explicit Cleaner(FileEffects& effects) : effects_(&effects) {}

    /// Moves each item's url, then its relatedURLs, to the Trash. Doesn't look at isSelected. What is missing already
    /// is passed over without a word: so a folder and a child of it may both be given. A cancel is heeded between two
    /// paths; what was done stays done.
    [[nodiscard]] CleanResult clean(std::span<const CleanableItem> items, const ProgressCallback& progress,
                                    const CancellationCallback& isCancelled,
                                    const TrashedCallback& onTrashed = {}) const;

    /// The same, but deletes for good: `restorable` stays empty. For the contents of the Trash only.
    [[nodiscard]] CleanResult removePermanently(std::span<const URL> urls, const ProgressCallback& progress,
                                                const CancellationCallback& isCancelled = neverCancelled) const;

    /// Puts back what `clean` moved, parents before what lay in them. Nothing is ever replaced: where something stands
    /// at `original`, it stays, and the entry stays pending.
    [[nodiscard]] RestoreResult restore(std::span<const TrashedEntry> entries) const;

    /// Whether a path may never be touched. By the text of the path, without regard to case.
    [[nodiscard]] static bool isProtected(const URL& url);

  private:
    FileEffects* effects_;
};

}  // namespace tavrin

template <>
struct std::hash<tavrin::CleanFailure> {
    std::size_t operator()(const tavrin::CleanFailure& failure) const noexcept {
        return std::hash<std::string>{}(failure.id());
    }
};
