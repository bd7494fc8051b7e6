#include "TavrinClean/Kit/ModuleStore.h"

#include "TavrinClean/Kit/HistoryModel.h"
#include "TavrinClean/Kit/ModuleViewModel.h"

#include <QPointer>
#include <algorithm>

namespace tavrin {

ModuleStore::ModuleStore(const ModuleServices& services, HistoryModel* history, QObject* parent)
    : QObject(parent), services_(services), history_(history) {}

ModuleStore::~ModuleStore() = default;

ModuleViewModel& ModuleStore::viewModel(ModuleKind kind, HistoryModel* history) {
    touch(kind);
    std::unique_ptr<ModuleViewModel>& model = models_[kind];
    if (model == nullptr) {
        model = std::make_unique<ModuleViewModel>(kind, services_);
        model->onReclaimableChange = [store = QPointer<ModuleStore>(this)](ModuleKind changed, std::int64_t bytes) {
            if (store.isNull()) return;
            store->reclaimable_[changed] = bytes;
            Q_EMIT store->reclaimableChanged(changed);
        };
    }
    model->setHistory(history);
    return *model;
}

void ModuleStore::touch(ModuleKind kind) {
    std::erase(recent_, kind);
    recent_.insert(recent_.begin(), kind);
    if (recent_.size() <= keptModules) return;
    for (std::size_t i = keptModules; i < recent_.size(); ++i) {
        // A busy one keeps its state, and is passed over for good unless it is opened again.
        const auto found = models_.find(recent_[i]);
        if (found != models_.end()) found->second->evict();
    }
    recent_.resize(keptModules);
}

void ModuleStore::cancelAll() {
    for (const auto& [kind, model] : models_)
        model->cancel();
}

bool ModuleStore::isCleaning() const {
    return std::ranges::any_of(
        models_, [](const auto& entry) { return entry.second->phase() == ModuleViewModel::Phase::cleaning; });
}

}  // namespace tavrin
