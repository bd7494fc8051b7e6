#include "TavrinClean/Kit/HistoryScreenModel.h"

#include "TavrinClean/Kit/Text.h"
#include "TavrinCore/Scanning/ByteFormatter.h"
#include "TavrinCore/Strings.h"

#include <algorithm>
#include <utility>

namespace tavrin {

HistoryScreenModel::HistoryScreenModel(QObject* parent) : QObject(parent) {}

void HistoryScreenModel::setHistory(HistoryModel* history) {
    if (history == history_ || !history_.isNull()) return;
    history_ = history;
    connect(history, &HistoryModel::recordsChanged, this, &HistoryScreenModel::recordsChanged);
    records_.setHistory(history);
    Q_EMIT historyChanged();
    Q_EMIT recordsChanged();
}

void HistoryScreenModel::putBack(const QString& recordId) {
    const auto id = UUID::fromString(recordId.toStdString());
    if (history_.isNull() || !id) return;
    const auto& records = history_->records();
    const auto record = std::ranges::find(records, *id, &CleanupRecord::id);
    if (record == records.end() || record->entries.empty()) return;
    // A second run over the same entries would report as gone what the first has just put back.
    if (!inFlight_.insert(*id).second) return;

    restoring_ = *id;
    records_.setRestoring(restoring_);
    records_.setBusy(inFlight_);
    setMessage({});
    history_->restore(*record, this, [this, id = *id](const RestoreResult& result) { ended(id, result); });
}

void HistoryScreenModel::ended(const UUID& id, const RestoreResult& result) {
    inFlight_.erase(id);
    restoring_.reset();
    records_.setRestoring(restoring_);
    records_.setBusy(inFlight_);
    const auto failed = static_cast<std::int64_t>(result.failures.size());
    setMessage(qtText(failed == 0 ? S::historyPutBackDone(result.restored)
                                  : S::historyPutBackPartial(result.restored, failed)));
}

void HistoryScreenModel::setMessage(const QString& message) {
    message_ = message;
    Q_EMIT messageChanged();
}

void HistoryScreenModel::askToClear() {
    if (isEmpty() || std::exchange(confirmingClear_, true)) return;
    Q_EMIT confirmingClearChanged();
}

void HistoryScreenModel::dismissClear() {
    if (!std::exchange(confirmingClear_, false)) return;
    Q_EMIT confirmingClearChanged();
}

void HistoryScreenModel::clear() {
    dismissClear();
    if (!history_.isNull()) history_->clear();
}

QString HistoryScreenModel::totalText() const {
    const std::int64_t bytes = history_.isNull() ? 0 : history_->totalReclaimed();
    return qtText(S::historyTotalReclaimed(ByteFormatter::string(bytes)));
}

bool HistoryScreenModel::isEmpty() const {
    return history_.isNull() || history_->records().empty();
}

QString HistoryScreenModel::clearMessage() const {
    return qtText(S::historyClearConfirmMessage(history_.isNull() ? 0 : history_->count()));
}

}  // namespace tavrin
