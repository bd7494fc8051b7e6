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
    connect(history, &HistoryModel::restoringChanged, this, [this] {
        if (restoring_ && !history_->isRestoring(*restoring_)) setRestoring({});
    });
    records_.setHistory(history);
    // Begun on this screen before it was left the last time.
    if (!history->restoring().empty()) setRestoring(history->restoring().back());
    Q_EMIT historyChanged();
    Q_EMIT recordsChanged();
}

void HistoryScreenModel::putBack(const QString& recordId) {
    const auto id = UUID::fromString(recordId.toStdString());
    if (history_.isNull() || !id) return;
    const auto& records = history_->records();
    const auto record = std::ranges::find(records, *id, &CleanupRecord::id);
    if (record == records.end() || record->entries.empty()) return;
    if (history_->isRestoring(*id)) return;

    setRestoring(*id);
    setMessage({});
    history_->restore(*record, this, [this](const RestoreResult& result) { ended(result); });
}

void HistoryScreenModel::setRestoring(const std::optional<UUID>& id) {
    restoring_ = id;
    records_.setRestoring(id);
}

void HistoryScreenModel::ended(const RestoreResult& result) {
    setRestoring({});
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
