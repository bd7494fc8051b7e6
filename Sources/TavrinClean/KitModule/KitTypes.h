// The kit's types under the names that QML knows them by. The kit itself knows nothing of QML.
#pragma once

#include "TavrinClean/Kit/AppModel.h"
#include "TavrinClean/Kit/HistoryScreenModel.h"
#include "TavrinClean/Kit/ModuleScreenModel.h"

#include <QtQml/qqml.h>
#include <QtQml/qqmlregistration.h>

#include <QObject>

class QJSEngine;
class QQmlEngine;

namespace tavrin {

/// `App`, the one object that everything else is reached from. It stands in C++ and outlives every engine.
struct AppForQml {
    Q_GADGET
    QML_FOREIGN(tavrin::AppModel)
    QML_NAMED_ELEMENT(App)
    QML_SINGLETON

  public:
    static AppModel* create(QQmlEngine* engine, QJSEngine* jsEngine);
};

/// Which object `App` is, before the first document that uses it is read. The caller keeps it alive past the engine.
void setApp(AppModel& app);

struct ModuleScreenModelForQml {
    Q_GADGET
    QML_FOREIGN(tavrin::ModuleScreenModel)
    QML_NAMED_ELEMENT(ModuleScreenModel)
};

struct HistoryScreenModelForQml {
    Q_GADGET
    QML_FOREIGN(tavrin::HistoryScreenModel)
    QML_NAMED_ELEMENT(HistoryScreenModel)
};

// Known to QML as what properties hold; made by nobody there.

struct AppConsentForQml {
    Q_GADGET
    QML_FOREIGN(tavrin::AppConsent)
    QML_NAMED_ELEMENT(AppConsent)
    QML_UNCREATABLE("App has it")
};

struct ModuleStoreForQml {
    Q_GADGET
    QML_FOREIGN(tavrin::ModuleStore)
    QML_NAMED_ELEMENT(ModuleStore)
    QML_UNCREATABLE("App has it")
};

struct HistoryModelForQml {
    Q_GADGET
    QML_FOREIGN(tavrin::HistoryModel)
    QML_NAMED_ELEMENT(HistoryModel)
    QML_UNCREATABLE("App has it")
};

struct ModulesModelForQml {
    Q_GADGET
    QML_FOREIGN(tavrin::ModulesModel)
    QML_NAMED_ELEMENT(ModulesModel)
    QML_UNCREATABLE("App has them")
};

struct ResultsModelForQml {
    Q_GADGET
    QML_FOREIGN(tavrin::ResultsModel)
    QML_NAMED_ELEMENT(ResultsModel)
    QML_UNCREATABLE("a ModuleScreenModel has it")
};

struct GroupsModelForQml {
    Q_GADGET
    QML_FOREIGN(tavrin::GroupsModel)
    QML_NAMED_ELEMENT(GroupsModel)
    QML_UNCREATABLE("a ModuleScreenModel has it")
};

struct GroupItemsModelForQml {
    Q_GADGET
    QML_FOREIGN(tavrin::GroupItemsModel)
    QML_NAMED_ELEMENT(GroupItemsModel)
    QML_UNCREATABLE("a GroupsModel has them")
};

struct FailuresModelForQml {
    Q_GADGET
    QML_FOREIGN(tavrin::FailuresModel)
    QML_NAMED_ELEMENT(FailuresModel)
    QML_UNCREATABLE("a ModuleScreenModel has it")
};

struct HistoryRecordsModelForQml {
    Q_GADGET
    QML_FOREIGN(tavrin::HistoryRecordsModel)
    QML_NAMED_ELEMENT(HistoryRecordsModel)
    QML_UNCREATABLE("a HistoryScreenModel has it")
};

}  // namespace tavrin
