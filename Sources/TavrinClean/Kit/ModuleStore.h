// The flows of all modules, made when they are first opened, and what the sidebar shows of them.
#pragma once

#ifndef Q_MOC_RUN
#include "TavrinClean/Kit/ModuleServices.h"
#include "TavrinCore/Models/ModuleKind.h"
#endif

#include <QObject>
#include <cstdint>
#include <map>
#include <memory>
#include <vector>

namespace tavrin {

class HistoryModel;
class ModuleViewModel;

/// Confined to the main thread. Keeps the findings of the three most recently opened modules; those of the others are
/// let go, unless they are being scanned or cleaned. What the sidebar shows of a module outlives its findings.
class ModuleStore : public QObject {
    Q_OBJECT

  public:
    /// Modules whose findings stay in memory.
    static constexpr std::size_t keptModules = 3;

    /// `history` is what viewModel(key) hands to a flow; it may be null.
    ModuleStore(const ModuleServices& services, HistoryModel* history, QObject* parent = nullptr);
    ~ModuleStore() override;

    /// The flow of a module, which counts as opening it. Lives as long as the store.
    [[nodiscard]] ModuleViewModel& viewModel(ModuleKind kind, HistoryModel* history);
    [[nodiscard]] ModuleViewModel& viewModel(ModuleKind kind) { return viewModel(kind, history_); }

    /// The bytes that each module last told; modules that never told any are missing.
    [[nodiscard]] const std::map<ModuleKind, std::int64_t>& reclaimable() const { return reclaimable_; }
    /// Most recently opened first.
    [[nodiscard]] const std::vector<ModuleKind>& recent() const { return recent_; }
    [[nodiscard]] const ModuleServices& services() const { return services_; }

    /// Tells every flow to stop what runs.
    void cancelAll();
    /// Whether any flow is in the middle of a clean.
    [[nodiscard]] bool isCleaning() const;

  Q_SIGNALS:
    void reclaimableChanged(tavrin::ModuleKind kind);

  private:
    void touch(ModuleKind kind);

    const ModuleServices& services_;
    HistoryModel* history_;
    std::map<ModuleKind, std::unique_ptr<ModuleViewModel>> models_;
    std::map<ModuleKind, std::int64_t> reclaimable_;
    std::vector<ModuleKind> recent_;
};

}  // namespace tavrin
