#include "TavrinClean/Kit/GroupsModel.h"

#include "TavrinClean/Kit/Arrangement.h"
#include "TavrinClean/Kit/ItemData.h"
#include "TavrinClean/Kit/ModuleViewModel.h"
#include "TavrinClean/Kit/Text.h"

#include <algorithm>
#include <utility>

namespace tavrin {

GroupItemsModel::GroupItemsModel(const ModuleViewModel& flow, std::vector<std::uint32_t> items, QObject* parent)
    : QAbstractListModel(parent), flow_(&flow), findings_(flow.findings()), items_(std::move(items)) {}

int GroupItemsModel::rowCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : static_cast<int>(items_.size());
}

QVariant GroupItemsModel::data(const QModelIndex& index, int role) const {
    if (!checkIndex(index, CheckIndexOption::IndexIsValid | CheckIndexOption::ParentIsInvalid)) return {};
    // A grid may still be asked for a row of findings that have just been replaced.
    if (flow_->findings() != findings_) return {};
    const std::uint32_t item = items_[static_cast<std::size_t>(index.row())];
    if (role == SelectedRole) return flow_->selection().contains(item);
    if (role == GroupIdRole) return groupHandle(*findings_, findings_->groupOf(item));
    return itemRoleValue((*findings_)[item], nullptr, role);
}

void GroupItemsModel::selectionChanged(const SelectionChange& change) {
    if (items_.empty()) return;
    QModelIndex first = index(0);
    QModelIndex last = index(rowCount() - 1);
    if (change.extent == SelectionChange::Extent::item) {
        const auto found = std::ranges::find(items_, change.index);
        if (found == items_.end()) return;
        first = last = index(static_cast<int>(found - items_.begin()));
    }
    Q_EMIT dataChanged(first, last, {SelectedRole});
}

GroupsModel::GroupsModel(ModuleViewModel& flow, QObject* parent)
    : QAbstractListModel(parent), flow_(&flow), arrangement_(flow.arrangement()) {}

GroupsModel::~GroupsModel() = default;

int GroupsModel::rowCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : static_cast<int>(arrangement_->groups.size());
}

void GroupsModel::show(std::shared_ptr<const Arrangement> arrangement) {
    if (arrangement == arrangement_) return;
    beginResetModel();
    arrangement_ = std::move(arrangement);
    // A delegate that is about to go may still hold one.
    for (const auto& [group, items] : items_)
        items->deleteLater();
    items_.clear();
    endResetModel();
    Q_EMIT countChanged();
}

QVariant GroupsModel::data(const QModelIndex& index, int role) const {
    if (!checkIndex(index, CheckIndexOption::IndexIsValid | CheckIndexOption::ParentIsInvalid)) return {};
    const auto row = static_cast<std::uint32_t>(index.row());
    if (role == ItemsRole) return QVariant::fromValue(itemsOf(row));
    const ArrangedGroup& group = arrangement_->groups[row];
    std::uint32_t selected = 0;
    for (std::uint32_t at = group.begin; at < group.end; ++at)
        selected += flow_->selection().contains(arrangement_->order[at]) ? 1 : 0;
    return groupRoleValue(*arrangement_->findings, group, selected, role);
}

int GroupsModel::rowOf(const QString& groupId) const {
    const auto group = groupWithHandle(*arrangement_->findings, groupId);
    const auto place = group ? arrangement_->placeOfGroup(*group) : std::nullopt;
    return place ? static_cast<int>(*place) : -1;
}

QPoint GroupsModel::placeOf(const QString& itemId) const {
    const auto id = UUID::fromString(itemId.toStdString());
    const auto item = id ? arrangement_->findings->itemWithId(*id) : std::nullopt;
    const std::uint32_t place = item ? arrangement_->places[*item] : Arrangement::nowhere;
    if (place == Arrangement::nowhere) return {-1, -1};
    const std::uint32_t row = arrangement_->groupAt(place);
    return {static_cast<int>(row), static_cast<int>(place - arrangement_->groups[row].begin)};
}

QString GroupsModel::itemIdAt(int row, int item) const {
    if (row < 0 || row >= rowCount() || item < 0) return {};
    const ArrangedGroup& group = arrangement_->groups[static_cast<std::size_t>(row)];
    const auto number = static_cast<std::uint32_t>(item);
    if (number >= group.count()) return {};
    return qtText((*arrangement_->findings)[arrangement_->order[group.begin + number]].id.uuidString());
}

QObject* GroupsModel::itemsOf(std::uint32_t row) const {
    GroupItemsModel*& items = items_[row];
    if (items == nullptr) {
        const ArrangedGroup& group = arrangement_->groups[row];
        const auto order = arrangement_->order.begin();
        // The parent owns it, which asking doesn't change.
        items = new GroupItemsModel(*flow_, {order + group.begin, order + group.end}, const_cast<GroupsModel*>(this));
    }
    return items;
}

void GroupsModel::selectionChanged(const SelectionChange& change) {
    static const QList<int> roles{SelectedCountRole, CheckStateRole, KeptRole};
    if (arrangement_->groups.empty()) return;
    if (change.extent == SelectionChange::Extent::all) {
        Q_EMIT dataChanged(index(0), index(rowCount() - 1), roles);
        for (const auto& [row, items] : items_)
            items->selectionChanged(change);
        return;
    }
    const bool ofItem = change.extent == SelectionChange::Extent::item;
    const auto place =
        arrangement_->placeOfGroup(ofItem ? arrangement_->findings->groupOf(change.index) : change.index);
    if (!place) return;
    const QModelIndex row = index(static_cast<int>(*place));
    Q_EMIT dataChanged(row, row, roles);
    if (const auto found = items_.find(*place); found != items_.end()) found->second->selectionChanged(change);
}

}  // namespace tavrin
