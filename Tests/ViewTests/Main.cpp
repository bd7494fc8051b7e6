// The tests of the views share this program: each tst_*.qml is given to it by name.
#include "Stage.h"
#include "TavrinClean/Kit/AppModel.h"
#include "TavrinClean/KitModule/KitTypes.h"
#include "TavrinClean/Theme/InstallTheme.h"

#include <QQmlContext>
#include <QQmlEngine>
#include <QtQuickTest>
#include <optional>

namespace {

class Setup : public QObject {
    Q_OBJECT

  public Q_SLOTS:
    void applicationAvailable() {
        tavrin::installFonts();
        stage_.emplace();
        tavrin::setApp(stage_->app());
    }
    void qmlEngineAvailable(QQmlEngine* engine) {
        tavrin::installTheme(*engine);
        engine->rootContext()->setContextProperty(QStringLiteral("stage"), &*stage_);
    }
    void cleanupTestCase() { stage_.reset(); }

  private:
    std::optional<tavrin::test::Stage> stage_;
};

}  // namespace

QUICK_TEST_MAIN_WITH_SETUP(views, Setup)

#include "Main.moc"
