#include "KitTypes.h"

#include <QQmlEngine>

namespace tavrin {
namespace {

AppModel* theApp = nullptr;

}  // namespace

void setApp(AppModel& app) {
    theApp = &app;
}

AppModel* AppForQml::create(QQmlEngine*, QJSEngine*) {
    QQmlEngine::setObjectOwnership(theApp, QQmlEngine::CppOwnership);
    return theApp;
}

}  // namespace tavrin
