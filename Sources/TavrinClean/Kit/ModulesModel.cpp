#include "TavrinClean/Kit/ModulesModel.h"

#include "TavrinClean/Kit/ModuleStore.h"
#include "TavrinClean/Kit/Text.h"
#include "TavrinCore/Scanning/ByteFormatter.h"

#include <algorithm>

namespace tavrin {

ModulesModel::ModulesModel(ModuleSection section, ModuleStore& store, QObject* parent)
    : QAbstractListModel(parent), section_(section), store_(&store) {
    std::ranges::copy_if(allModuleKinds, std::back_inserter(kinds_),
                         [section](ModuleKind kind) { return tavrin::section(kind) == section; });
    connect(&store, &ModuleStore::reclaimableChanged, this, &ModulesModel::reclaimableChanged);
}

QString ModulesModel::title() const {
    return qtText(tavrin::title(section_));
}

int ModulesModel::rowCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : static_cast<int>(kinds_.size());
}

QVariant ModulesModel::data(const QModelIndex& index, int role) const {
    if (!checkIndex(index, CheckIndexOption::IndexIsValid | CheckIndexOption::ParentIsInvalid)) return {};
    const ModuleKind kind = kinds_[static_cast<std::size_t>(index.row())];
    switch (role) {
        case KeyRole:
            return qtText(rawValue(kind));
        case Qt::DisplayRole:
        case TitleRole:
            return qtText(tavrin::title(kind));
        case SubtitleRole:
            return qtText(subtitle(kind));
        case SymbolRole:
            return qtText(symbol(kind));
        case CapsuleRole: {
            const auto found = store_->reclaimable().find(kind);
            const bool shown = found != store_->reclaimable().end() && found->second >= 1;
            return shown ? qtText(ByteFormatter::string(found->second)) : QString();
        }
        default:
            return {};
    }
}

QHash<int, QByteArray> ModulesModel::roleNames() const {
    return {{KeyRole, "key"},
            {TitleRole, "title"},
            {SubtitleRole, "subtitle"},
            {SymbolRole, "symbol"},
            {CapsuleRole, "capsule"}};
}

void ModulesModel::reclaimableChanged(ModuleKind kind) {
    const auto found = std::ranges::find(kinds_, kind);
    if (found == kinds_.end()) return;
    const QModelIndex row = index(static_cast<int>(found - kinds_.begin()));
    Q_EMIT dataChanged(row, row, {CapsuleRole});
}

}  // namespace tavrin
