// What a clean left where it was, and why.
#pragma once

#ifndef Q_MOC_RUN
#include "TavrinCore/Cleaning/Cleaner.h"
#endif

#include <QAbstractListModel>
#include <vector>

namespace tavrin {

class FailuresModel : public QAbstractListModel {
    Q_OBJECT
    Q_PROPERTY(int count READ count NOTIFY countChanged FINAL)

  public:
    enum Role {
        NameRole = Qt::UserRole + 1,
        ReasonRole,
        /// The whole path: several may bear one name.
        PathRole,
    };

    using QAbstractListModel::QAbstractListModel;

    void show(std::vector<CleanFailure> failures);

    [[nodiscard]] int count() const { return rowCount(); }
    [[nodiscard]] int rowCount(const QModelIndex& parent = {}) const override;
    [[nodiscard]] QVariant data(const QModelIndex& index, int role) const override;
    [[nodiscard]] QHash<int, QByteArray> roleNames() const override;

  Q_SIGNALS:
    void countChanged();

  private:
    std::vector<CleanFailure> failures_;
};

}  // namespace tavrin
