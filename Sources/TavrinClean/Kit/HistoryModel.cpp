#include "TavrinClean/Kit/HistoryModel.h"

#include "TavrinClean/Kit/Background.h"
#include "TavrinCore/Cleaning/HistoryList.h"

#include <QPointer>
#include <algorithm>
#include <utility>

namespace tavrin {

HistoryModel::HistoryModel(Background& background, Restore restore, QObject* parent)
    : QObject(parent), background_(&background), restore_(std::move(restore)), records_(store_.load()) {
    if (!restore_) restore_ = [](std::span<const TrashedEntry> entries) { return Cleaner().restore(entries); };
}

HistoryModel::~HistoryModel() = default;

std::int64_t HistoryModel::totalReclaimed() const {
    return tavrin::totalReclaimed(records_);
}

std::shared_ptr<CleanJournal> HistoryModel::journal(const std::string& module,
                                                    const std::optional<std::string>& moduleKey) const {
    return store_.journal(module, moduleKey);
}

void HistoryModel::add(const std::string& module, const std::optional<std::string>& moduleKey,
                       const CleanResult& result, const std::shared_ptr<CleanJournal>& journal) {
    const bool added = addRecord(records_,
                                 {.module = module,
                                  .moduleKey = moduleKey,
                                  .removedItems = result.removedItems,
                                  .reclaimedBytes = result.reclaimedBytes,
                                  .restorable = result.restorable},
                                 Date::now(), journal != nullptr ? journal->id() : UUID::random());
    if (!added) return;
    if (journal != nullptr) store_.settle(*journal);
    save();
}

void HistoryModel::clear() {
    records_.clear();
    save();
}

void HistoryModel::restore(const CleanupRecord& record, QObject* owner,
                           std::function<void(const RestoreResult&)> done) {
    restoring_.push_back(record.id);
    Q_EMIT restoringChanged();
    background_->run(
        Background::Lane::work, this, [restore = restore_, entries = record.entries] { return restore(entries); },
        [this, id = record.id, owner = QPointer<QObject>(owner), done = std::move(done)](const RestoreResult& result) {
            settle(id, result);
            if (!owner.isNull() && done) done(result);
        });
}

bool HistoryModel::isRestoring(const UUID& id) const {
    return std::ranges::find(restoring_, id) != restoring_.end();
}

void HistoryModel::settle(const UUID& id, const RestoreResult& result) {
    std::erase(restoring_, id);
    settleRestore(records_, id, result.pending);
    save();
    Q_EMIT restoringChanged();
}

void HistoryModel::save() {
    // A disk that refuses leaves the list as it is; the next save writes all of it.
    store_.save(records_);
    Q_EMIT recordsChanged();
}

}  // namespace tavrin
