// Draws each phase of the gallery and compares it, point by point, with the picture that was accepted. With --accept it
// takes what it draws as the new ones; look at them before you do.
#include "GoldenFile.h"
#include "TavrinClean/Theme/InstallTheme.h"

#include <QDateTime>
#include <QDir>
#include <QFile>
#include <QGuiApplication>
#include <QIcon>
#include <QQmlEngine>
#include <QQuickItem>
#include <QQuickView>
#include <QTest>
#include <array>
#include <cstdio>

namespace {

/// A phase of the gallery, and where the mouse is meanwhile.
struct Shot {
    const char* phase;
    enum class Mouse {
        away,
        over,
        down,
    } mouse = Mouse::away;
    const char* name = phase;
    /// Whether it is drawn at every scale, and not at scale 1 alone: large pictures weigh on the repository.
    bool atEveryScale = false;
};

constexpr std::array shots{
    Shot{"controls"},
    Shot{"controls", Shot::Mouse::over, "hovered"},
    Shot{"controls", Shot::Mouse::down, "pressed"},
    Shot{"focus", Shot::Mouse::away, "focus", true},
    Shot{"disabled"},
    Shot{"lists", Shot::Mouse::away, "lists", true},
    Shot{"gem"},
    Shot{"confirm"},
    Shot{"preview"},
};

// What the mouse is over: the gallery names it.
QPoint mousePlace(QQuickView& view) {
    const auto* item = view.rootObject()->property("mouseTarget").value<QQuickItem*>();
    return item->mapToScene(QPointF(item->width() / 2, item->height() / 2)).toPoint();
}

// The files that are shown, with a date that doesn't depend on when they were checked out. A run at another scale may
// go on at the same time, so each has its own.
QString prepareFiles(qreal scale) {
    const QString folder = QStringLiteral(SHOTS_FOLDER "/files@%1x/").arg(scale);
    QDir().mkpath(folder);
    const QDateTime date(QDate(2026, 3, 14), QTime(9, 26), Qt::UTC);
    for (const QString& name : QDir(QStringLiteral(FIXTURES)).entryList(QDir::Files)) {
        QFile::remove(folder + name);
        QFile::copy(QStringLiteral(FIXTURES "/") + name, folder + name);
        QFile file(folder + name);
        if (!file.open(QIODevice::ReadWrite) || !file.setFileTime(date, QFileDevice::FileModificationTime))
            std::fprintf(stderr, "%s can't be dated\n", qPrintable(name));
    }
    return QUrl::fromLocalFile(folder).toString();
}

QImage draw(QQuickView& view, const Shot& shot) {
    view.rootObject()->setProperty("phase", QString::fromLatin1(shot.phase));
    QCoreApplication::processEvents();
    if (shot.mouse != Shot::Mouse::away) QTest::mouseMove(&view, mousePlace(view));
    if (shot.mouse == Shot::Mouse::down) QTest::mousePress(&view, Qt::LeftButton, {}, mousePlace(view));
    const bool ready = QTest::qWaitFor([&view] { return view.rootObject()->property("ready").toBool(); });
    if (!ready) std::fprintf(stderr, "%s is never ready\n", shot.name);
    const QImage picture = tavrin::test::settledPicture(view);
    if (shot.mouse == Shot::Mouse::down) QTest::mouseRelease(&view, Qt::LeftButton, {}, QPoint(1, 1));
    QTest::mouseMove(&view, QPoint(1, 1));
    return picture;
}

}  // namespace

int main(int argc, char** argv) {
    QGuiApplication application(argc, argv);
    const bool accept = QCoreApplication::arguments().contains(QStringLiteral("--accept"));
    QIcon::setThemeName(QStringLiteral("none"));
    tavrin::installFonts();

    QQuickView view;
    tavrin::installTheme(*view.engine());
    view.setInitialProperties({{QStringLiteral("fixtures"), prepareFiles(application.devicePixelRatio())}});
    view.setSource(QUrl::fromLocalFile(QStringLiteral(GALLERY)));
    if (view.rootObject() == nullptr) return 2;
    view.show();
    if (!QTest::qWaitForWindowExposed(&view)) return 2;

    bool same = true;
    for (const Shot& shot : shots) {
        if (!shot.atEveryScale && view.devicePixelRatio() > 1) continue;
        same =
            tavrin::test::isGolden(draw(view, shot), QString::fromLatin1(shot.name), view.devicePixelRatio(), accept) &&
            same;
    }
    return same ? 0 : 1;
}
