// The results list: a header for each group, a row for each finding, and below an opened one what lies in it.
#pragma once

#include "TavrinClean/Kit/RowRoles.h"

#ifndef Q_MOC_RUN
#include "TavrinClean/Kit/Expansions.h"
#include "TavrinClean/Kit/ManagedAtomicFlag.h"
#include "TavrinClean/Kit/RowLayout.h"
#endif

#include <QAbstractListModel>
#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <set>
#include <string>
#include <vector>

namespace tavrin {

class ItemFacts;
class ModuleViewModel;
struct Arrangement;
struct SelectionChange;

/// One flat list, so that 200,000 findings scroll like twenty. Opening and closing groups and rows inserts and removes
/// rows, a tick changes its own row and its group's, ticking all is one change of all rows; a new order is a change of
/// layout, and a new search a reset.
///
/// What a row must ask the disk for (whether it is a folder, its date, whether its app runs) arrives a moment later as
/// a change of that row.
class ResultsModel : public QAbstractListModel {
    Q_OBJECT
    /// Headers, rows and what is opened.
    Q_PROPERTY(int count READ count NOTIFY countChanged FINAL)

  public:
    /// What a row is, the role `kind`.
    enum Kind {
        Group,
        Item,
        /// An entry of an opened row.
        Child,
        /// A line of text below an opened row: that it is being read, is empty, or has more.
        Note,
    };
    Q_ENUM(Kind)

    ResultsModel(ModuleViewModel& flow, ItemFacts& facts, QObject* parent = nullptr);
    ~ResultsModel() override;

    /// Shows `arrangement`, which belongs to the flow's present findings. Same rows in another order are a change of
    /// layout, anything else a reset.
    void show(std::shared_ptr<const Arrangement> arrangement);
    /// The findings are others now: what was opened is forgotten, and closed groups stay closed.
    void reset(std::shared_ptr<const Arrangement> arrangement);
    void selectionChanged(const SelectionChange& change);
    void factsChanged(const std::vector<std::uint32_t>& items);
    void runningAppsChanged();

    /// Opens or closes a group. A closed group stays closed in another order, under a search and after another scan.
    void toggleCollapsed(const QString& groupId);
    /// Opens or closes a row.
    void toggleExpanded(const QString& itemId);

    /// Where a row stands now, by the role `rowId`; -1 when it isn't shown. How the keyboard stays on a finding in
    /// another order.
    Q_INVOKABLE int rowOf(const QString& rowId) const;

    [[nodiscard]] int count() const { return rowCount(); }
    [[nodiscard]] int rowCount(const QModelIndex& parent = {}) const override;
    [[nodiscard]] QVariant data(const QModelIndex& index, int role) const override;
    [[nodiscard]] QHash<int, QByteArray> roleNames() const override { return rowRoleNames(); }

  Q_SIGNALS:
    void countChanged();

  private:
    struct GroupCount {
        std::uint64_t revision = 0;
        std::uint32_t selected = 0;
    };

    [[nodiscard]] QVariant groupRowData(const RowRef& row, int role) const;
    [[nodiscard]] QVariant itemRowData(const RowRef& row, int role) const;
    [[nodiscard]] QVariant extraRowData(const RowRef& row, int role) const;
    [[nodiscard]] std::uint32_t selectedIn(std::uint32_t group) const;
    [[nodiscard]] std::optional<std::uint32_t> itemWithId(const QString& itemId) const;
    [[nodiscard]] int rowOfItem(std::uint32_t item) const;
    [[nodiscard]] RowLayout layoutOf(const std::shared_ptr<const Arrangement>& arrangement) const;
    void relayout(std::shared_ptr<const Arrangement> arrangement);
    void replace(std::shared_ptr<const Arrangement> arrangement);
    void read(std::uint32_t item);
    void changeRowsBelow(std::uint32_t item, const std::function<void()>& change);
    void emitRows(int first, int last, const QList<int>& roles = {});

    ModuleViewModel* flow_;
    ItemFacts* facts_;
    std::shared_ptr<const Arrangement> arrangement_;
    RowLayout layout_;
    /// Keys of groups, which the next findings have as well.
    std::set<std::string> collapsed_;
    Expansions expansions_;
    /// The opened item whose rows have gone and are about to come again.
    std::optional<std::uint32_t> inChange_;
    /// Set when what is being read is wanted no more.
    std::shared_ptr<ManagedAtomicFlag> reading_;
    mutable std::vector<GroupCount> counts_;
    std::uint64_t revision_ = 1;
};

}  // namespace tavrin
