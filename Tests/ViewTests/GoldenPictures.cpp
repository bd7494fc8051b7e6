// Draws each phase of the gallery and compares it, point by point, with the picture that was accepted. With --accept it
// takes what it draws as the new ones; look at them before you do.
#include "GoldenFile.h"
#include "TavrinClean/Theme/InstallTheme.h"

#include <QDateTime>
#include <QDir>
#include <QFile>
#include <QGuiApplication>
#include <QIcon>
#include <QPainter>
#include <QQmlEngine>
#include <QQmlListReference>
#include <QQuickItem>
#include <QQuickView>
#include <QTest>
#include <algorithm>
#include <array>
#include <cstdio>

namespace {

/// A phase of the gallery.
struct Shot {
    const char* phase;
    /// Whether it is drawn at every scale, and not at scale 1 alone: large pictures weigh on the repository.
    bool atEveryScale = false;
};

constexpr std::array shots{
    Shot{"controls"}, Shot{"focus", true}, Shot{"disabled"}, Shot{"lists", true},    Shot{"gem"},
    Shot{"confirm"},  Shot{"preview"},     Shot{"picture"},  Shot{"withoutPreview"},
};

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

void enter(QQuickView& view, const char* phase) {
    view.rootObject()->setProperty("phase", QString::fromLatin1(phase));
    QCoreApplication::processEvents();
    const bool ready = QTest::qWaitFor([&view] { return view.rootObject()->property("ready").toBool(); });
    if (!ready) std::fprintf(stderr, "%s is never ready\n", phase);
}

QImage draw(QQuickView& view, const Shot& shot) {
    enter(view, shot.phase);
    return tavrin::test::settledPicture(view);
}

// One control of each kind under the mouse, and below it the same one pressed.
QImage drawUnderTheMouse(QQuickView& view) {
    constexpr int margin = 4;
    enter(view, "controls");
    QList<std::array<QImage, 2>> cells;
    int width = 0;
    int height = 0;
    const QQmlListReference targets(view.rootObject(), "mouseTargets");
    for (qsizetype index = 0; index < targets.size(); ++index) {
        const auto* item = qobject_cast<QQuickItem*>(targets.at(index));
        const QRect place(item->mapToScene({0, 0}).toPoint(), item->size().toSize());
        QTest::mouseMove(&view, place.center());
        const QRect cell = place.adjusted(-margin, -margin, margin, margin);
        const QImage hovered = tavrin::test::settledPicture(view).copy(cell);
        QTest::mousePress(&view, Qt::LeftButton, {}, place.center());
        const QImage pressed = tavrin::test::settledPicture(view).copy(cell);
        // Not a click: that would open or turn what is shown here.
        QTest::mouseMove(&view, {1, 1});
        QTest::mouseRelease(&view, Qt::LeftButton, {}, {1, 1});
        QMetaObject::invokeMethod(view.rootObject(), "forceActiveFocus");
        cells.append({hovered, pressed});
        width += cell.width();
        height = std::max(height, cell.height());
    }
    QImage all(width, 2 * height, QImage::Format_RGB32);
    all.fill(Qt::black);
    QPainter painter(&all);
    int x = 0;
    for (const auto& [hovered, pressed] : cells) {
        painter.drawImage(x, 0, hovered);
        painter.drawImage(x, height, pressed);
        x += hovered.width();
    }
    return all;
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
    const qreal scale = view.devicePixelRatio();
    const auto compare = [&same, scale, accept](const QImage& picture, const char* name) {
        same = tavrin::test::isGolden(picture, QString::fromLatin1(name), scale, accept) && same;
    };
    for (const Shot& shot : shots)
        if (shot.atEveryScale || scale <= 1) compare(draw(view, shot), shot.phase);
    if (scale <= 1) compare(drawUnderTheMouse(view), "mouse");
    return same ? 0 : 1;
}
