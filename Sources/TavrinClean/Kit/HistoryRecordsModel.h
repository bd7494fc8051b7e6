// The rows of the history screen, newest first.
#pragma once

#ifndef Q_MOC_RUN
#include "TavrinCore/Cleaning/CleanupRecord.h"
#endif

#include <QAbstractListModel>
#include <QPointer>
#include <optional>
#include <vector>

namespace tavrin {

class HistoryModel;

/// Follows a history row by row: a new clean is inserted, one that was put back leaves.
class HistoryRecordsModel : public QAbstractListModel {
    Q_OBJECT
    Q_PROPERTY(int count READ count NOTIFY countChanged FINAL)

  public:
    enum Role {
        /// What a put back is asked with.
        RecordIdRole = Qt::UserRole + 1,
        TitleRole,
        DateTextRole,
        /// How many paths and how many bytes.
        SummaryRole,
        /// Something of it can be put back, and nobody is at it.
        CanPutBackRole,
        /// The row shows that it is being put back.
        RestoringRole,
    };

    using QAbstractListModel::QAbstractListModel;

    void setHistory(HistoryModel* history);
    /// The row that shows the indicator; nil for none.
    void setRestoring(const std::optional<UUID>& id);

    [[nodiscard]] int count() const { return rowCount(); }
    [[nodiscard]] int rowCount(const QModelIndex& parent = {}) const override;
    [[nodiscard]] QVariant data(const QModelIndex& index, int role) const override;
    [[nodiscard]] QHash<int, QByteArray> roleNames() const override;

  Q_SIGNALS:
    void countChanged();

  private:
    void follow();
    void emitAll(const QList<int>& roles);

    QPointer<HistoryModel> history_;
    std::vector<CleanupRecord> rows_;
    std::optional<UUID> restoring_;
};

}  // namespace tavrin
