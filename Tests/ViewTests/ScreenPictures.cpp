// Draws the screens in each of their phases and compares them, point by point, with the pictures that were accepted.
// With
// --accept it takes what it draws as the new ones; look at them before you do. The other argument is the language of
// this run, which stands in the pictures' names.
#include "GoldenFile.h"
#include "Stage.h"
#include "TavrinClean/Kit/AppModel.h"
#include "TavrinClean/KitModule/KitTypes.h"
#include "TavrinClean/Theme/InstallTheme.h"

#include <QGuiApplication>
#include <QIcon>
#include <QQmlContext>
#include <QQmlEngine>
#include <QQuickItem>
#include <QQuickView>
#include <QTest>
#include <cstdio>

namespace {

QString argument(int index) {
    const QStringList arguments = QCoreApplication::arguments();
    return index < arguments.size() ? arguments[index] : QString();
}

// What the page shows next; false when it never gets there.
bool show(QQuickItem& page, const QString& shot) {
    page.setProperty("ready", false);
    QMetaObject::invokeMethod(&page, "show", Q_ARG(QVariant, shot));
    if (QTest::qWaitFor([&page] { return page.property("ready").toBool(); }, 20'000)) return true;
    std::fprintf(stderr, "%s is never ready\n", qPrintable(shot));
    return false;
}

// The part of the window that the page says matters.
QImage picture(QQuickView& view) {
    const QImage whole = tavrin::test::settledPicture(view);
    const int left = qRound(view.rootObject()->property("leftEdge").toInt() * view.devicePixelRatio());
    return whole.copy(left, 0, whole.width() - left, whole.height());
}

}  // namespace

int main(int argc, char** argv) {
    QGuiApplication application(argc, argv);
    const bool accept = QCoreApplication::arguments().contains(QStringLiteral("--accept"));
    QIcon::setThemeName(QStringLiteral("none"));
    tavrin::installFonts();
    tavrin::test::Stage stage(tavrin::test::Stage::History::ofThree);
    tavrin::setApp(stage.app());

    QQuickView view;
    tavrin::installTheme(*view.engine());
    view.engine()->rootContext()->setContextProperty(QStringLiteral("stage"), &stage);
    view.setResizeMode(QQuickView::SizeViewToRootObject);
    view.setSource(QUrl::fromLocalFile(QStringLiteral(SCREENS)));
    if (view.rootObject() == nullptr) return 2;
    view.show();
    if (!QTest::qWaitForWindowExposed(&view)) return 2;

    bool same = true;
    const bool scaled = view.devicePixelRatio() > 1;
    for (const QString& shot : view.rootObject()->property(scaled ? "scaledShots" : "shots").toStringList()) {
        same = show(*view.rootObject(), shot) && same;
        same =
            tavrin::test::isGolden(picture(view), argument(1) + QChar(u'-') + shot, view.devicePixelRatio(), accept) &&
            same;
    }
    return same ? 0 : 1;
}
