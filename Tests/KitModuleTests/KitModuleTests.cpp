// The kit as QML sees it: by name, with its properties, roles and enumerations.
#include "Support/TestFolder.h"
#include "TavrinClean/KitModule/KitTypes.h"
#include "TavrinCore/Models/ModuleKind.h"

#include <gtest/gtest.h>

#include <QCoreApplication>
#include <QQmlComponent>
#include <QQmlEngine>
#include <memory>

namespace tavrin::test {
namespace {

TEST(KitModule, aDocumentReachesTheModelsByTheirNames) {
    const TestFolder folder;
    const ScopedVariable dataHome("XDG_DATA_HOME", folder.path().c_str());
    const ScopedVariable config("XDG_CONFIG_HOME", folder.path().c_str());
    AppModel app;
    setApp(app);
    QQmlEngine engine;
    engine.addImportPath(QStringLiteral(":/qt/qml"));
    QQmlComponent component(&engine);
    component.setData(R"(
        import QtQml
        import Tavrin.Kit
        QtObject {
            readonly property ModuleScreenModel screen: ModuleScreenModel {
                store: App.store
                moduleKey: "similarImages"
            }
            readonly property HistoryScreenModel history: HistoryScreenModel { history: App.history }
            readonly property bool idle: screen.phase === ModuleScreenModel.Idle
            readonly property bool isGallery: screen.layout === ModuleScreenModel.Gallery
            readonly property string title: screen.title
            readonly property int groups: screen.groups.count
            readonly property bool accepted: App.consent.accepted
            readonly property bool empty: history.isEmpty
            readonly property int modules: App.cleanupModules.rowCount() + App.spaceModules.rowCount()
            readonly property int childKind: ResultsModel.Child
        }
    )",
                      QUrl());
    const std::unique_ptr<QObject> root(component.create());
    ASSERT_NE(root, nullptr) << component.errorString().toStdString();
    EXPECT_EQ(root->property("title").toString().toStdString(), title(ModuleKind::similarImages));
    EXPECT_TRUE(root->property("idle").toBool());
    EXPECT_TRUE(root->property("isGallery").toBool());
    EXPECT_EQ(root->property("groups").toInt(), 0);
    EXPECT_FALSE(root->property("accepted").toBool());
    EXPECT_TRUE(root->property("empty").toBool());
    EXPECT_EQ(root->property("modules").toInt(), 15);
    EXPECT_EQ(root->property("childKind").toInt(), ResultsModel::Child);
}

}  // namespace
}  // namespace tavrin::test
