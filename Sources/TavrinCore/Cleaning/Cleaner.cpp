#include "TavrinCore/Cleaning/Cleaner.h"

#include "TavrinCore/Cleaning/Protection.h"
#include "TavrinCore/Scanning/FileSystemUtils.h"
#include "TavrinCore/Strings.h"

#include <algorithm>
#include <functional>

namespace tavrin {
namespace {

/// What is done to a path at last: where it went, if anywhere.
using Act = std::function<Result<std::optional<URL>>(HeldItem&)>;

/// One clean from its first path to its last.
class Run {
  public:
    Run(FileEffects& effects, Act act, const TrashedCallback& onTrashed = {})
        : effects_(effects), act_(std::move(act)), onTrashed_(onTrashed) {}

    [[nodiscard]] CleanResult over(std::span<const URL> urls, const ProgressCallback& progress,
                                   const CancellationCallback& isCancelled) {
        for (std::size_t i = 0; i < urls.size() && !isCancelled(); ++i) {
            progress({.phase = S::scanRemoving(),
                      .currentPath = std::string(urls[i].lastPathComponent()),
                      .fractionCompleted = static_cast<double>(i) / static_cast<double>(urls.size())});
            take(urls[i]);
        }
        progress({.phase = S::scanDone(), .fractionCompleted = 1.0});
        return std::move(result_);
    }

  private:
    void take(const URL& url) {
        if (const std::string* reason = protectionReason(url)) return refuse(url, *reason);
        if (!effects_.exists(url)) return;
        Result<std::unique_ptr<HeldItem>> held = effects_.hold(url);
        if (!held) {
            // Vanished since the last line: as if it had never been there.
            if (!held.error().meansMissing()) refuse(url, held.error().localizedDescription);
            return;
        }
        // A link on the way must not lead to what may not be touched.
        if (const URL& real = (*held)->realURL(); real != url) {
            if (const std::string* reason = protectionReason(real)) return refuse(url, *reason);
        }
        act(url, **held);
    }

    void act(const URL& url, HeldItem& held) {
        const std::int64_t size = FileSystemUtils::size(url);
        Result<std::optional<URL>> went = act_(held);
        if (!went) return refuse(url, went.error().localizedDescription);
        result_.removedItems += 1;
        result_.reclaimedBytes += size;
        if (!*went) return;
        result_.restorable.push_back({.original = url, .trashed = std::move(**went)});
        if (onTrashed_) onTrashed_(result_.restorable.back(), size);
    }

    void refuse(const URL& url, std::string reason) { result_.failures.push_back({url, std::move(reason)}); }

    FileEffects& effects_;
    Act act_;
    TrashedCallback onTrashed_;
    CleanResult result_;
};

std::vector<URL> flattened(std::span<const CleanableItem> items) {
    std::vector<URL> urls;
    for (const CleanableItem& item : items) {
        urls.push_back(item.url);
        urls.insert(urls.end(), item.relatedURLs.begin(), item.relatedURLs.end());
    }
    return urls;
}

std::vector<TrashedEntry> shallowestFirst(std::span<const TrashedEntry> entries) {
    std::vector<TrashedEntry> sorted(entries.begin(), entries.end());
    std::ranges::stable_sort(sorted, {}, [](const TrashedEntry& entry) {
        return entry.original.standardizedFileURL().pathComponents().size();
    });
    return sorted;
}

Outcome putBack(FileEffects& effects, const TrashedEntry& entry) {
    const URL parent = entry.original.deletingLastPathComponent();
    if (!effects.exists(parent)) {
        if (Outcome made = effects.createDirectory(parent); !made) return made;
    }
    return effects.putBack(entry.trashed, entry.original);
}

}  // namespace

CleanResult Cleaner::clean(std::span<const CleanableItem> items, const ProgressCallback& progress,
                           const CancellationCallback& isCancelled, const TrashedCallback& onTrashed) const {
    Run run(
        *effects_, [this](HeldItem& held) { return effects_->trashItem(held); }, onTrashed);
    return run.over(flattened(items), progress, isCancelled);
}

CleanResult Cleaner::removePermanently(std::span<const URL> urls, const ProgressCallback& progress,
                                       const CancellationCallback& isCancelled) const {
    Run run(*effects_, [this](HeldItem& held) -> Result<std::optional<URL>> {
        if (const Outcome removed = effects_->removeItem(held); !removed) return removed.error();
        return std::optional<URL>();
    });
    return run.over(urls, progress, isCancelled);
}

RestoreResult Cleaner::restore(std::span<const TrashedEntry> entries) const {
    RestoreResult result;
    for (const TrashedEntry& entry : shallowestFirst(entries)) {
        // By name, not by where it leads: a relative link dangles while it lies in the Trash, and it must come back.
        const bool isThere = effects_->itemExists(entry.trashed);
        const Outcome back = isThere ? putBack(*effects_, entry) : success();
        if (isThere && back) {
            result.restored += 1;
            continue;
        }
        result.failures.push_back(
            {entry.original, isThere ? back.error().localizedDescription : S::restoreGoneFromTrash()});
        result.pending.push_back(entry);
    }
    return result;
}

}  // namespace tavrin
