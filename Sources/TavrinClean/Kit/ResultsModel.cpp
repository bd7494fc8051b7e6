#include "TavrinClean/Kit/ResultsModel.h"

#include "TavrinClean/Kit/ItemData.h"
#include "TavrinClean/Kit/ItemFacts.h"
#include "TavrinClean/Kit/ModuleViewModel.h"
#include "TavrinClean/Kit/Text.h"
#include "TavrinCore/Scanning/ByteFormatter.h"
#include "TavrinCore/Strings.h"

#include <utility>

namespace tavrin {
namespace {

/// The characters of a UUID, which a row of an opened finding begins with as well.
constexpr qsizetype kIdLength = 36;

const QList<int>& tickRoles() {
    static const QList<int> roles{SelectedRole, SelectedCountRole, CheckStateRole, KeptRole};
    return roles;
}

}  // namespace

ResultsModel::ResultsModel(ModuleViewModel& flow, ItemFacts& facts, QObject* parent)
    : QAbstractListModel(parent), flow_(&flow), facts_(&facts), reading_(std::make_shared<ManagedAtomicFlag>()) {
    replace(flow.arrangement());
}

ResultsModel::~ResultsModel() {
    reading_->set();
}

int ResultsModel::rowCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : layout_.rowCount();
}

RowLayout ResultsModel::layoutOf(const std::shared_ptr<const Arrangement>& arrangement) const {
    std::vector<bool> collapsed;
    collapsed.reserve(arrangement->groups.size());
    for (const ArrangedGroup& group : arrangement->groups)
        collapsed.push_back(collapsed_.contains(arrangement->findings->groupId(group.group)));
    std::vector<std::pair<std::uint32_t, int>> extras;
    for (const std::uint32_t item : expansions_.open()) {
        const std::uint32_t place = arrangement->places[item];
        if (place != Arrangement::nowhere && item != inChange_) extras.emplace_back(place, expansions_.rows(item));
    }
    return {arrangement, std::move(collapsed), extras};
}

void ResultsModel::replace(std::shared_ptr<const Arrangement> arrangement) {
    beginResetModel();
    counts_.assign(arrangement->groups.size(), {});
    layout_ = layoutOf(arrangement);
    arrangement_ = std::move(arrangement);
    endResetModel();
    Q_EMIT countChanged();
}

void ResultsModel::reset(std::shared_ptr<const Arrangement> arrangement) {
    reading_->set();
    reading_ = std::make_shared<ManagedAtomicFlag>();
    expansions_.clear();
    replace(std::move(arrangement));
}

void ResultsModel::show(std::shared_ptr<const Arrangement> arrangement) {
    if (arrangement == arrangement_) return;
    const bool sameRows = arrangement->findings == arrangement_->findings && arrangement->query == arrangement_->query;
    sameRows ? relayout(std::move(arrangement)) : replace(std::move(arrangement));
}

void ResultsModel::relayout(std::shared_ptr<const Arrangement> arrangement) {
    Q_EMIT layoutAboutToBeChanged({}, VerticalSortHint);
    const QModelIndexList before = persistentIndexList();
    QStringList held;
    held.reserve(before.size());
    for (const QModelIndex& index : before)
        held.append(data(index, RowIdRole).toString());

    counts_.assign(arrangement->groups.size(), {});
    layout_ = layoutOf(arrangement);
    arrangement_ = std::move(arrangement);

    QModelIndexList after;
    after.reserve(before.size());
    for (const QString& rowId : held)
        after.append(index(rowOf(rowId)));
    changePersistentIndexList(before, after);
    Q_EMIT layoutChanged({}, VerticalSortHint);
}

int ResultsModel::rowOfItem(std::uint32_t item) const {
    const std::uint32_t place = arrangement_->places[item];
    return place != Arrangement::nowhere ? layout_.rowOfPlace(place) : -1;
}

std::optional<std::uint32_t> ResultsModel::itemWithId(const QString& itemId) const {
    const std::optional<UUID> id = UUID::fromString(itemId.toStdString());
    return id ? arrangement_->findings->itemWithId(*id) : std::nullopt;
}

int ResultsModel::rowOf(const QString& rowId) const {
    const Findings& findings = *arrangement_->findings;
    if (const auto item = itemWithId(rowId.left(kIdLength))) {
        const int row = rowOfItem(*item);
        const int below = rowId.size() > kIdLength ? QStringView(rowId).mid(kIdLength + 1).toInt() + 1 : 0;
        return row < 0 || below > expansions_.rows(*item) ? -1 : row + below;
    }
    const QString prefix = QStringLiteral("group ");
    if (!rowId.startsWith(prefix)) return -1;
    const auto group = groupWithHandle(findings, rowId.mid(prefix.size()));
    const auto place = group ? arrangement_->placeOfGroup(*group) : std::nullopt;
    return place ? layout_.rowOfGroup(*place) : -1;
}

QVariant ResultsModel::data(const QModelIndex& index, int role) const {
    if (!checkIndex(index, CheckIndexOption::IndexIsValid | CheckIndexOption::ParentIsInvalid)) return {};
    const RowRef row = layout_.at(index.row());
    switch (row.kind) {
        case RowRef::Kind::group:
            return groupRowData(row, role);
        case RowRef::Kind::item:
            return itemRowData(row, role);
        case RowRef::Kind::extra:
            break;
    }
    return extraRowData(row, role);
}

QVariant ResultsModel::groupRowData(const RowRef& row, int role) const {
    if (role == CollapsedRole) return layout_.isCollapsed(row.group);
    const bool countsTicks = role == SelectedCountRole || role == CheckStateRole || role == KeptRole;
    return groupRoleValue(*arrangement_->findings, arrangement_->groups[row.group],
                          countsTicks ? selectedIn(row.group) : 0, role);
}

std::uint32_t ResultsModel::selectedIn(std::uint32_t group) const {
    GroupCount& count = counts_[group];
    if (count.revision != revision_) {
        const ArrangedGroup& arranged = arrangement_->groups[group];
        count = {.revision = revision_, .selected = 0};
        for (std::uint32_t at = arranged.begin; at < arranged.end; ++at)
            count.selected += flow_->selection().contains(arrangement_->order[at]) ? 1 : 0;
    }
    return count.selected;
}

QVariant ResultsModel::itemRowData(const RowRef& row, int role) const {
    const std::uint32_t item = arrangement_->order[row.place];
    const Findings& findings = *arrangement_->findings;
    switch (role) {
        case SelectedRole:
            return flow_->selection().contains(item);
        case ExpandedRole:
            return expansions_.isOpen(item);
        case GroupIdRole:
            return groupHandle(findings, findings.groupOf(item));
        case IsDirectoryRole:
        case ExpandableRole:
        case DateTextRole:
        case RunningWarningRole:
            return itemRoleValue(findings[item], facts_->find(item), role);
        default:
            return itemRoleValue(findings[item], nullptr, role);
    }
}

QVariant ResultsModel::extraRowData(const RowRef& row, int role) const {
    const std::uint32_t item = arrangement_->order[row.place];
    const std::optional<std::vector<DirChild>>& children = *expansions_.find(item);
    const auto number = static_cast<std::size_t>(row.extra);
    const bool isChild = children && number < std::min(children->size(), Expansions::shownChildren);
    if (role == KindRole) return static_cast<int>(isChild ? Child : Note);
    if (role == RowIdRole) {
        const QString id = qtText((*arrangement_->findings)[item].id.uuidString());
        return id + QLatin1Char(' ') + QString::number(row.extra);
    }
    if (!isChild) {
        if (role != NameRole && role != Qt::DisplayRole) return emptyRoleValue(role);
        if (!children) return qtText(S::moduleReadingContents());
        if (children->empty()) return qtText(S::moduleEmptyFolder());
        return qtText(S::moduleMoreItems(static_cast<std::int64_t>(children->size() - Expansions::shownChildren)));
    }
    const DirChild& child = (*children)[number];
    switch (role) {
        case Qt::DisplayRole:
        case NameRole:
            return qtLine(child.url.lastPathComponent());
        case SizeTextRole:
            return qtText(ByteFormatter::string(child.size));
        case UrlRole:
            return qtText(child.url.absoluteString());
        case IsDirectoryRole:
            return child.isDirectory;
        default:
            return emptyRoleValue(role);
    }
}

void ResultsModel::emitRows(int first, int last, const QList<int>& roles) {
    if (first >= 0 && first <= last) Q_EMIT dataChanged(index(first), index(last), roles);
}

void ResultsModel::selectionChanged(const SelectionChange& change) {
    ++revision_;
    if (change.extent == SelectionChange::Extent::all) return emitRows(0, rowCount() - 1, tickRoles());
    const bool ofItem = change.extent == SelectionChange::Extent::item;
    const std::uint32_t group = ofItem ? arrangement_->findings->groupOf(change.index) : change.index;
    const auto place = arrangement_->placeOfGroup(group);
    if (!place) return;
    const int header = layout_.rowOfGroup(*place);
    if (!ofItem) return emitRows(header, header + layout_.rowsBelowGroup(*place), tickRoles());
    const int row = rowOfItem(change.index);
    emitRows(row, row, {SelectedRole});
    emitRows(header, header, {SelectedCountRole, CheckStateRole, KeptRole});
}

void ResultsModel::factsChanged(const std::vector<std::uint32_t>& items) {
    for (const std::uint32_t item : items) {
        const int row = rowOfItem(item);
        emitRows(row, row, {IsDirectoryRole, ExpandableRole, DateTextRole, RunningWarningRole});
    }
}

void ResultsModel::runningAppsChanged() {
    emitRows(0, rowCount() - 1, {RunningWarningRole});
}

void ResultsModel::toggleCollapsed(const QString& groupId) {
    const auto group = groupWithHandle(*arrangement_->findings, groupId);
    const auto place = group ? arrangement_->placeOfGroup(*group) : std::nullopt;
    if (!place) return;
    const int header = layout_.rowOfGroup(*place);
    if (layout_.isCollapsed(*place)) {
        collapsed_.erase(arrangement_->findings->groupId(*group));
        RowLayout opened = layoutOf(arrangement_);
        beginInsertRows({}, header + 1, header + opened.rowsBelowGroup(*place));
        layout_ = std::move(opened);
        endInsertRows();
    } else {
        beginRemoveRows({}, header + 1, header + layout_.rowsBelowGroup(*place));
        collapsed_.insert(arrangement_->findings->groupId(*group));
        layout_ = layoutOf(arrangement_);
        endRemoveRows();
    }
    emitRows(header, header, {CollapsedRole});
    Q_EMIT countChanged();
}

/// The rows below an item go, `change` is made, and those that it has then come.
void ResultsModel::changeRowsBelow(std::uint32_t item, const std::function<void()>& change) {
    const int row = rowOfItem(item);
    const int before = expansions_.rows(item);
    if (row >= 0 && before > 0) {
        beginRemoveRows({}, row + 1, row + before);
        inChange_ = item;
        layout_ = layoutOf(arrangement_);
        endRemoveRows();
    }
    change();
    inChange_.reset();
    RowLayout changed = layoutOf(arrangement_);
    const int after = expansions_.rows(item);
    if (row >= 0 && after > 0) beginInsertRows({}, row + 1, row + after);
    layout_ = std::move(changed);
    if (row >= 0 && after > 0) endInsertRows();
    emitRows(row, row, {ExpandedRole});
    if (after != before) Q_EMIT countChanged();
}

void ResultsModel::toggleExpanded(const QString& itemId) {
    const auto item = itemWithId(itemId);
    if (!item || rowOfItem(*item) < 0) return;
    if (!itemRoleValue((*arrangement_->findings)[*item], facts_->find(*item), ExpandableRole).toBool()) return;
    bool mustRead = false;
    changeRowsBelow(*item, [this, item, &mustRead] { mustRead = expansions_.toggle(*item); });
    if (mustRead) read(*item);
}

void ResultsModel::read(std::uint32_t item) {
    flow_->services().background->run(
        Background::Lane::rows, this,
        [findings = arrangement_->findings, item, flag = reading_] {
            return childrenOf((*findings)[item], [flag] { return flag->value(); });
        },
        [this, item, flag = reading_](std::vector<DirChild> children) {
            if (flag != reading_) return;
            changeRowsBelow(item, [this, item, &children] { expansions_.setChildren(item, std::move(children)); });
        });
}

}  // namespace tavrin
