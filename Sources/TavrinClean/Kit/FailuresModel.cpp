#include "TavrinClean/Kit/FailuresModel.h"

#include "TavrinClean/Kit/Text.h"

#include <utility>

namespace tavrin {

void FailuresModel::show(std::vector<CleanFailure> failures) {
    beginResetModel();
    failures_ = std::move(failures);
    endResetModel();
    Q_EMIT countChanged();
}

int FailuresModel::rowCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : static_cast<int>(failures_.size());
}

QVariant FailuresModel::data(const QModelIndex& index, int role) const {
    if (!checkIndex(index, CheckIndexOption::IndexIsValid | CheckIndexOption::ParentIsInvalid)) return {};
    const CleanFailure& failure = failures_[static_cast<std::size_t>(index.row())];
    switch (role) {
        case Qt::DisplayRole:
        case NameRole:
            return qtLine(failure.url.lastPathComponent());
        case ReasonRole:
            return qtLine(failure.reason);
        case PathRole:
            return qtLine(failure.url.path());
        default:
            return {};
    }
}

QHash<int, QByteArray> FailuresModel::roleNames() const {
    return {{NameRole, "name"}, {ReasonRole, "reason"}, {PathRole, "path"}};
}

}  // namespace tavrin
