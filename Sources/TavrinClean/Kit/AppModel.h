// What lives as long as the program: the flows, the history, the consent, and the threads behind them. In QML: `App`.
#pragma once

#include "TavrinClean/Kit/AppConsent.h"
#include "TavrinClean/Kit/HistoryModel.h"
#include "TavrinClean/Kit/ModuleStore.h"
#include "TavrinClean/Kit/ModulesModel.h"

#ifndef Q_MOC_RUN
#include "TavrinClean/Kit/ModuleServices.h"
#endif

#include <QObject>
#include <chrono>

namespace tavrin {

/// Made once, on the main thread, after the application object.
class AppModel : public QObject {
    Q_OBJECT
    Q_PROPERTY(tavrin::AppConsent* consent READ consent CONSTANT FINAL)
    Q_PROPERTY(tavrin::ModuleStore* store READ store CONSTANT FINAL)
    Q_PROPERTY(tavrin::HistoryModel* history READ history CONSTANT FINAL)
    /// The sidebar's modules, a model for each of its two sections.
    Q_PROPERTY(tavrin::ModulesModel* cleanupModules READ cleanupModules CONSTANT FINAL)
    Q_PROPERTY(tavrin::ModulesModel* spaceModules READ spaceModules CONSTANT FINAL)

  public:
    explicit AppModel(QObject* parent = nullptr);
    /// With services of one's own, for tests.
    explicit AppModel(ModuleServices services, QObject* parent = nullptr);
    /// Stops everything and waits for all of it.
    ~AppModel() override;

    /// For the end of the program: tells scans and cleans to stop. Waits for a clean as long as it takes, so that what
    /// it has moved is written down, and for what is being put back; for everything else no longer than `patience`.
    /// False when something still runs then, in a file system that doesn't answer: only the end of the process ends
    /// that.
    [[nodiscard]] bool stopWork(std::chrono::milliseconds patience);

    /// The main interface has appeared: asks for leave to show banners. Once; further calls do nothing.
    Q_INVOKABLE void mainInterfaceAppeared();

    [[nodiscard]] AppConsent* consent() { return &consent_; }
    [[nodiscard]] ModuleStore* store() { return &store_; }
    [[nodiscard]] HistoryModel* history() { return &history_; }
    [[nodiscard]] ModulesModel* cleanupModules() { return &cleanupModules_; }
    [[nodiscard]] ModulesModel* spaceModules() { return &spaceModules_; }

  private:
    ModuleServices services_;
    AppConsent consent_;
    HistoryModel history_;
    ModuleStore store_;
    ModulesModel cleanupModules_;
    ModulesModel spaceModules_;
    bool appeared_ = false;
};

}  // namespace tavrin
