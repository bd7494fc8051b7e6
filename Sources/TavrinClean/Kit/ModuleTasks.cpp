#include "TavrinClean/Kit/ModuleTasks.h"

#include "TavrinClean/Kit/AppBundle.h"
#include "TavrinCore/LiveCacheCheck.h"
#include "TavrinCore/Strings.h"

#include <exception>
#include <map>
#include <utility>

namespace tavrin {
namespace {

ScanOutcome failed(const ScanError& error) {
    const bool denied = error.kind() == ScanError::Kind::accessDenied;
    return {.kind = denied ? ScanOutcome::Kind::accessDenied : ScanOutcome::Kind::cancelled};
}

void deselectRunning(std::vector<CleanableItem>& items, const std::set<std::string>& running) {
    for (CleanableItem& item : items) {
        if (LiveCacheCheck::belongsToRunningApp(item, running)) item.isSelected = false;
    }
}

/// Whether a finding lies in an app from the store; each app is asked about once.
class StoreBoughtApps {
  public:
    [[nodiscard]] bool contain(const URL& url) {
        const std::optional<URL> bundle = appBundle(url);
        if (!bundle) return false;
        const auto [place, isNew] = known_.try_emplace(bundle->path(), false);
        if (isNew) place->second = isStoreBought(*bundle);
        return place->second;
    }

  private:
    std::map<std::string, bool> known_;
};

/// Sorts the ticked items out: what is handed to the cleaner, and what is left alone.
struct Split {
    std::vector<CleanableItem> actionable;
    CleanOutcome outcome;
};

Split split(const Findings& findings, const std::vector<std::uint8_t>& ticks) {
    Split result;
    StoreBoughtApps storeBought;
    const bool leavesStoreBought = findings.kind() == ModuleKind::appLanguages;
    for (std::uint32_t index = 0; index < findings.size(); ++index) {
        const CleanableItem& item = findings[index];
        const bool spared = ticks[index] != 0 && leavesStoreBought && storeBought.contain(item.url);
        if (spared) result.outcome.storeBought.push_back({.url = item.url, .reason = S::moduleMASProtected()});
        if (ticks[index] != 0 && item.url.pathExtension() == "app")
            result.outcome.apps.insert(item.url.standardizedFileURL().path());
        if (ticks[index] == 0 || spared) {
            result.outcome.left.push_back(index);
        } else {
            result.actionable.push_back(item);
            result.actionable.back().isSelected = true;
        }
    }
    return result;
}

}  // namespace

ScanOutcome ScanTask::operator()() const noexcept {
    try {
        std::vector<CleanableItem> items = scanner->scan(progress, isCancelled);
        deselectRunning(items, runningBundleIDs());
        ScanOutcome outcome;
        outcome.findings = std::make_shared<const Findings>(scanner->kind(), std::move(items));
        outcome.arrangement = arranged(outcome.findings, sortOrder, installDate);
        outcome.selection = Selection(outcome.findings);
        return outcome;
    } catch (const ScanError& error) {
        return failed(error);
    } catch (const std::exception& error) {
        return {.kind = ScanOutcome::Kind::failed, .error = error.what()};
    } catch (...) {
        return {.kind = ScanOutcome::Kind::failed};
    }
}

CleanOutcome CleanTask::operator()() const {
    Split parts = split(*findings, ticks);
    CleanOutcome outcome = std::move(parts.outcome);
    outcome.result = clean(parts.actionable, progress, isCancelled, [this](const TrashedEntry& entry, auto bytes) {
        if (journal != nullptr) journal->note(entry, bytes);
    });
    outcome.journal = journal;
    outcome.findings = std::make_shared<const Findings>(*findings, outcome.left);
    outcome.arrangement = arranged(outcome.findings, sortOrder, installDate);
    outcome.base = findings;
    return outcome;
}

}  // namespace tavrin
