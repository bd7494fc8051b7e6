#include "TavrinClean/Kit/ModuleViewModel.h"

#include "TavrinClean/Kit/HistoryModel.h"
#include "TavrinClean/Kit/ModuleTasks.h"
#include "TavrinCore/Scanning/ByteFormatter.h"
#include "TavrinCore/Strings.h"

#include <exception>
#include <utility>

namespace tavrin {
namespace {

/// From here on, what searching and sorting ask for is worked out beforehand: a person would feel the wait.
constexpr std::uint32_t kLongList = 5'000;

using Lane = Background::Lane;

}  // namespace

ModuleViewModel::ModuleViewModel(ModuleKind kind, const ModuleServices& services, QObject* parent)
    : QObject(parent), kind_(kind), services_(&services), mailbox_(*services.background, [this](const auto& report) {
          progress_ = report;
          Q_EMIT progressChanged();
      }) {
    clearFindings();
}

ModuleViewModel::~ModuleViewModel() {
    cancel();
}

void ModuleViewModel::setHistory(HistoryModel* history) {
    history_ = history;
}

CancellationCallback ModuleViewModel::cancellation() const {
    return [flag = cancelFlag_] { return flag->value(); };
}

void ModuleViewModel::cancel() {
    if (cancelFlag_ != nullptr) cancelFlag_->set();
}

void ModuleViewModel::startScan() {
    cancel();
    cancelFlag_ = std::make_shared<ManagedAtomicFlag>();
    ++scanGeneration_;
    blockedFolders_ = 0;
    progress_ = ScanProgress{.phase = S::moduleStarting()};
    clearFindings();
    setPhase(Phase::scanning);
    Q_EMIT progressChanged();

    services_->background->run(
        Lane::work, this,
        ScanTask{.scanner = services_->makeScanner(kind_),
                 .sortOrder = sortOrder_,
                 .runningBundleIDs = services_->runningBundleIDs,
                 .installDate = services_->installDate,
                 .progress = mailbox_.callback(),
                 .isCancelled = cancellation()},
        [this, generation = scanGeneration_](ScanOutcome outcome) { scanEnded(generation, std::move(outcome)); });
}

void ModuleViewModel::scanEnded(std::uint64_t generation, ScanOutcome outcome) {
    // A scan that was replaced may end after its successor has begun.
    if (generation != scanGeneration_)
        return services_->background->release(std::make_shared<ScanOutcome>(std::move(outcome)));
    mailbox_.flush();
    if (outcome.kind != ScanOutcome::Kind::found) return scanFailed(outcome);

    blockedFolders_ = progress_.blockedFolders;
    replaceFindings(std::move(outcome.findings), std::move(outcome.arrangement), std::move(outcome.selection));
    setPhase(Phase::results);
    if (onReclaimableChange) onReclaimableChange(kind_, totalBytes());
    if (findings_->size() < kLongList) return;
    const InstallDate dates = showsInstallDates(kind_) ? services_->installDate : InstallDate();
    services_->background->run(Lane::work, [findings = findings_, dates] { findings->prepare(dates); });
}

void ModuleViewModel::scanFailed(const ScanOutcome& outcome) {
    if (outcome.kind == ScanOutcome::Kind::failed) {
        failure_ = outcome.error;
        setPhase(Phase::failed);
    } else {
        setPhase(outcome.kind == ScanOutcome::Kind::cancelled ? Phase::idle : Phase::needsAccess);
    }
}

void ModuleViewModel::clean() {
    if (selection_.count() == 0) return;
    cancelFlag_ = std::make_shared<ManagedAtomicFlag>();
    setPhase(Phase::cleaning);
    services_->background->run(Lane::work, this,
                               CleanTask{.findings = findings_,
                                         .ticks = selection_.ticks(),
                                         .sortOrder = sortOrder_,
                                         .clean = services_->clean,
                                         .journal = journal(),
                                         .installDate = services_->installDate,
                                         .progress = mailbox_.callback(),
                                         .isCancelled = cancellation()},
                               [this](CleanOutcome outcome) { cleanEnded(std::move(outcome)); });
}

std::shared_ptr<CleanJournal> ModuleViewModel::journal() const {
    return history_.isNull() ? nullptr : history_->journal(title(kind_), std::string(rawValue(kind_)));
}

void ModuleViewModel::cleanEnded(CleanOutcome outcome) {
    mailbox_.flush();
    if (!history_.isNull()) history_->add(title(kind_), std::string(rawValue(kind_)), outcome.result, outcome.journal);
    keep(outcome);
    done_ = {.reclaimed = outcome.result.reclaimedBytes,
             .removed = outcome.result.removedItems,
             .failures = outcome.result.failures};
    done_.failures.insert(done_.failures.end(), outcome.storeBought.begin(), outcome.storeBought.end());
    setPhase(Phase::done);
    if (onReclaimableChange) onReclaimableChange(kind_, totalBytes());
    tell(outcome);
}

/// Only what was cleaned leaves the list; after another scan there is nothing of it to leave.
void ModuleViewModel::keep(CleanOutcome& outcome) {
    if (outcome.base != findings_) return;
    Selection selection(outcome.findings);
    for (std::uint32_t item = 0; item < outcome.left.size(); ++item)
        selection.set(item, selection_.contains(outcome.left[item]));
    outcome.base.reset();
    replaceFindings(std::move(outcome.findings), std::move(outcome.arrangement), std::move(selection));
}

void ModuleViewModel::tell(const CleanOutcome& outcome) {
    const CleanResult& result = outcome.result;
    if (result.reclaimedBytes > 0 || result.removedItems >= 1) {
        services_->notify(S::notifyCleanedTitle(),
                          S::notifyCleanedBody(ByteFormatter::string(result.reclaimedBytes), result.removedItems));
    }
    if (kind_ != ModuleKind::uninstaller) return;
    services_->background->run(Lane::work, [tidyDock = services_->tidyDock, apps = outcome.apps] { tidyDock(apps); });
}

void ModuleViewModel::replaceFindings(std::shared_ptr<const Findings> findings,
                                      std::shared_ptr<const Arrangement> arrangement, Selection selection) {
    std::shared_ptr<const Findings> before = std::exchange(findings_, std::move(findings));
    arrangement_ = std::move(arrangement);
    selection_ = std::move(selection);
    Q_EMIT itemsChanged();
    Q_EMIT selectionChanged({});
    if (before != nullptr && before->size() >= kLongList) services_->background->release(std::move(before));
    // The order may have been changed while the scan ran.
    if (isArranging()) rearrange();
}

void ModuleViewModel::clearFindings() {
    auto none = std::make_shared<const Findings>(kind_, std::vector<CleanableItem>{});
    replaceFindings(none, arranged(none, sortOrder_, {}), Selection(none));
}

void ModuleViewModel::setSortOrder(SortOrder order) {
    if (order == sortOrder_) return;
    sortOrder_ = order;
    Q_EMIT sortOrderChanged();
    rearrange();
}

void ModuleViewModel::rearrange() {
    services_->background->run(
        Lane::quick, this,
        [findings = findings_, order = sortOrder_, dates = services_->installDate] {
            return arranged(findings, order, dates);
        },
        [this](std::shared_ptr<const Arrangement> arrangement) {
            if (arrangement->findings != findings_ || arrangement->sortOrder != sortOrder_) return;
            arrangement_ = std::move(arrangement);
            Q_EMIT arrangementChanged();
        });
}

void ModuleViewModel::toggle(const UUID& id) {
    const std::optional<std::uint32_t> item = findings_->itemWithId(id);
    if (!item) return;
    selection_.set(*item, !selection_.contains(*item));
    Q_EMIT selectionChanged({.extent = SelectionChange::Extent::item, .index = *item});
}

void ModuleViewModel::setAll(bool selected, const std::string& groupID) {
    const std::optional<std::uint32_t> group = findings_->groupWithId(groupID);
    if (!group) return;
    selection_.setGroup(*group, selected);
    Q_EMIT selectionChanged({.extent = SelectionChange::Extent::group, .index = *group});
}

void ModuleViewModel::setAll(bool selected) {
    selection_.setAll(selected);
    Q_EMIT selectionChanged({});
}

void ModuleViewModel::evict() {
    if (phase_ == Phase::scanning || phase_ == Phase::cleaning) return;
    clearFindings();
    setPhase(Phase::idle);
}

void ModuleViewModel::setPhase(Phase phase) {
    phase_ = phase;
    Q_EMIT phaseChanged();
}

std::vector<CleanableItem> ModuleViewModel::items() const {
    std::vector<CleanableItem> items = findings_->items();
    for (std::uint32_t item = 0; item < items.size(); ++item)
        items[item].isSelected = selection_.contains(item);
    return items;
}

std::vector<CleanableItem> ModuleViewModel::selectedItems() const {
    std::vector<CleanableItem> selected = items();
    std::erase_if(selected, [](const CleanableItem& item) { return !item.isSelected; });
    return selected;
}

std::vector<CleanableItem> ModuleViewModel::sortedItems() const {
    const std::vector<CleanableItem> all = items();
    std::vector<CleanableItem> result;
    result.reserve(all.size());
    for (const std::uint32_t item : sorted(*findings_, sortOrder_, services_->installDate))
        result.push_back(all[item]);
    return result;
}

std::vector<ResultGroup> ModuleViewModel::groupedResults() const {
    const std::vector<CleanableItem> all = items();
    const auto arrangement = arranged(findings_, sortOrder_, services_->installDate);
    std::vector<ResultGroup> groups;
    groups.reserve(arrangement->groups.size());
    for (const ArrangedGroup& arranged : arrangement->groups) {
        ResultGroup& group = groups.emplace_back();
        group.id = findings_->groupId(arranged.group);
        group.title = groupTitle(*findings_, arranged);
        group.totalBytes = arranged.totalBytes;
        for (std::uint32_t at = arranged.begin; at < arranged.end; ++at) {
            group.items.push_back(all[arrangement->order[at]]);
            group.selectedCount += group.items.back().isSelected ? 1 : 0;
        }
    }
    return groups;
}

}  // namespace tavrin
