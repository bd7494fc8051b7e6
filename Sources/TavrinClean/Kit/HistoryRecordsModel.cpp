#include "TavrinClean/Kit/HistoryRecordsModel.h"

#include "TavrinClean/Kit/HistoryModel.h"
#include "TavrinClean/Kit/Text.h"
#include "TavrinCore/Scanning/ByteFormatter.h"
#include "TavrinCore/Scanning/DateText.h"
#include "TavrinCore/Strings.h"

#include <algorithm>

namespace tavrin {

void HistoryRecordsModel::setHistory(HistoryModel* history) {
    if (!history_.isNull()) disconnect(history_, nullptr, this, nullptr);
    history_ = history;
    if (history != nullptr) {
        connect(history, &HistoryModel::recordsChanged, this, &HistoryRecordsModel::follow);
        connect(history, &HistoryModel::restoringChanged, this, [this] { emitAll({CanPutBackRole}); });
    }
    beginResetModel();
    rows_ = history != nullptr ? history->records() : std::vector<CleanupRecord>();
    endResetModel();
    Q_EMIT countChanged();
}

/// What left goes, what changed is told, what is new comes in. A file may hold one id twice: then rows can't be told
/// apart, and everything is taken anew.
void HistoryRecordsModel::follow() {
    const std::vector<CleanupRecord>& records = history_->records();
    const auto isGone = [&records](const CleanupRecord& row) {
        return std::ranges::find(records, row.id, &CleanupRecord::id) == records.end();
    };
    for (int row = rowCount() - 1; row >= 0; --row) {
        if (!isGone(rows_[static_cast<std::size_t>(row)])) continue;
        beginRemoveRows({}, row, row);
        rows_.erase(rows_.begin() + row);
        endRemoveRows();
    }
    for (std::size_t i = 0; i < records.size(); ++i) {
        const int row = static_cast<int>(i);
        if (i < rows_.size() && rows_[i].id == records[i].id) {
            if (rows_[i] == records[i]) continue;
            rows_[i] = records[i];
            Q_EMIT dataChanged(index(row), index(row));
        } else {
            beginInsertRows({}, row, row);
            rows_.insert(rows_.begin() + row, records[i]);
            endInsertRows();
        }
    }
    if (rows_.size() != records.size()) {
        beginResetModel();
        rows_ = records;
        endResetModel();
    }
    Q_EMIT countChanged();
}

void HistoryRecordsModel::emitAll(const QList<int>& roles) {
    if (!rows_.empty()) Q_EMIT dataChanged(index(0), index(rowCount() - 1), roles);
}

void HistoryRecordsModel::setRestoring(const std::optional<UUID>& id) {
    restoring_ = id;
    emitAll({RestoringRole});
}

int HistoryRecordsModel::rowCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : static_cast<int>(rows_.size());
}

QVariant HistoryRecordsModel::data(const QModelIndex& index, int role) const {
    if (!checkIndex(index, CheckIndexOption::IndexIsValid | CheckIndexOption::ParentIsInvalid)) return {};
    const CleanupRecord& record = rows_[static_cast<std::size_t>(index.row())];
    switch (role) {
        case RecordIdRole:
            return qtText(record.id.uuidString());
        case Qt::DisplayRole:
        case TitleRole:
            return qtLine(record.displayName());
        case DateTextRole:
            return qtText(dateAndTimeText(record.date));
        case SummaryRole:
            return qtText(S::countItemsSize(record.itemCount, ByteFormatter::string(record.reclaimedBytes)));
        case CanPutBackRole:
            return !record.entries.empty() && !history_.isNull() && !history_->isRestoring(record.id);
        case RestoringRole:
            return restoring_ == record.id;
        default:
            return {};
    }
}

QHash<int, QByteArray> HistoryRecordsModel::roleNames() const {
    return {{RecordIdRole, "recordId"}, {TitleRole, "title"},           {DateTextRole, "dateText"},
            {SummaryRole, "summary"},   {CanPutBackRole, "canPutBack"}, {RestoringRole, "restoring"}};
}

}  // namespace tavrin
