// The tests of the views share this program: each tst_*.qml is given to it by name.
#include "TavrinClean/Theme/InstallTheme.h"

#include <QQmlEngine>
#include <QtQuickTest>

namespace {

class Setup : public QObject {
    Q_OBJECT

  public Q_SLOTS:
    void applicationAvailable() { tavrin::installFonts(); }
    void qmlEngineAvailable(QQmlEngine* engine) { tavrin::installTheme(*engine); }
};

}  // namespace

QUICK_TEST_MAIN_WITH_SETUP(views, Setup)

#include "Main.moc"
