// The results as groups: the cards of the gallery, the rows of the list of languages.
#pragma once

#include "TavrinClean/Kit/RowRoles.h"

#include <QAbstractListModel>
#include <QPoint>
#include <cstdint>
#include <map>
#include <memory>
#include <vector>

namespace tavrin {

class Findings;
class ModuleViewModel;
struct Arrangement;
struct SelectionChange;

/// The findings of one group, for a grid. Rows have the roles of a finding.
class GroupItemsModel : public QAbstractListModel {
    Q_OBJECT

  public:
    GroupItemsModel(const ModuleViewModel& flow, std::vector<std::uint32_t> items, QObject* parent);

    [[nodiscard]] int rowCount(const QModelIndex& parent = {}) const override;
    [[nodiscard]] QVariant data(const QModelIndex& index, int role) const override;
    [[nodiscard]] QHash<int, QByteArray> roleNames() const override { return rowRoleNames(); }

    /// The ticks of one finding, or of all.
    void selectionChanged(const SelectionChange& change);

  private:
    const ModuleViewModel* flow_;
    std::shared_ptr<const Findings> findings_;
    std::vector<std::uint32_t> items_;
};

/// One row for each group, with the roles of a group. The role `items` gives a GroupItemsModel, made when it is first
/// asked for and valid until the next reset.
class GroupsModel : public QAbstractListModel {
    Q_OBJECT
    Q_PROPERTY(int count READ count NOTIFY countChanged FINAL)

  public:
    explicit GroupsModel(ModuleViewModel& flow, QObject* parent = nullptr);
    ~GroupsModel() override;

    /// Shows `arrangement`, which belongs to the flow's present findings.
    void show(std::shared_ptr<const Arrangement> arrangement);
    void selectionChanged(const SelectionChange& change);

    // How the keyboard stays where it is in another order and under a search.

    /// Where a group stands, by the role `groupId`; -1 when it isn't shown.
    Q_INVOKABLE int rowOf(const QString& groupId) const;
    /// Where a finding stands, by the role `itemId`: x is its group's row, y its row among the group's. (-1, -1) when
    /// it isn't shown.
    Q_INVOKABLE QPoint placeOf(const QString& itemId) const;
    /// The other way round; empty where nothing stands.
    Q_INVOKABLE QString itemIdAt(int row, int item) const;

    [[nodiscard]] int count() const { return rowCount(); }
    [[nodiscard]] int rowCount(const QModelIndex& parent = {}) const override;
    [[nodiscard]] QVariant data(const QModelIndex& index, int role) const override;
    [[nodiscard]] QHash<int, QByteArray> roleNames() const override { return rowRoleNames(); }

  Q_SIGNALS:
    void countChanged();

  private:
    [[nodiscard]] QObject* itemsOf(std::uint32_t row) const;

    ModuleViewModel* flow_;
    std::shared_ptr<const Arrangement> arrangement_;
    /// By row. They are children of this object.
    mutable std::map<std::uint32_t, GroupItemsModel*> items_;
};

}  // namespace tavrin
