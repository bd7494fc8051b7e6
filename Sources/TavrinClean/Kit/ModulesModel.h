// The modules of one section of the sidebar, in their order, with what each could free.
#pragma once

#ifndef Q_MOC_RUN
#include "TavrinCore/Models/ModuleKind.h"
#endif

#include <QAbstractListModel>
#include <vector>

namespace tavrin {

class ModuleStore;

/// Rows never come or go; the capsule of a row follows the store.
class ModulesModel : public QAbstractListModel {
    Q_OBJECT
    /// The section's title, as written in the table of messages; the sidebar shows it in capitals.
    Q_PROPERTY(QString title READ title CONSTANT FINAL)

  public:
    enum Role {
        /// The module's raw value: "systemJunk". What a screen is opened with.
        KeyRole = Qt::UserRole + 1,
        TitleRole,
        SubtitleRole,
        SymbolRole,
        /// The bytes that could go, as text; empty where there are none or nothing is known.
        CapsuleRole,
    };

    ModulesModel(ModuleSection section, ModuleStore& store, QObject* parent = nullptr);

    [[nodiscard]] QString title() const;

    [[nodiscard]] int rowCount(const QModelIndex& parent = {}) const override;
    [[nodiscard]] QVariant data(const QModelIndex& index, int role) const override;
    [[nodiscard]] QHash<int, QByteArray> roleNames() const override;

  private:
    void reclaimableChanged(ModuleKind kind);

    ModuleSection section_;
    ModuleStore* store_;
    std::vector<ModuleKind> kinds_;
};

}  // namespace tavrin
