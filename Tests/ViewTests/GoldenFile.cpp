#include "GoldenFile.h"

#include <QDir>
#include <QTest>
#include <cstdio>
#include <utility>

namespace tavrin::test {

QImage settledPicture(QQuickWindow& window) {
    constexpr int most = 50;
    QImage last;
    for (int i = 0; i < most; ++i) {
        QTest::qWait(60);
        QImage now = window.grabWindow().convertToFormat(QImage::Format_RGB32);
        if (now == last) return now;
        last = std::move(now);
    }
    std::fprintf(stderr, "the picture never stands still\n");
    return last;
}

bool isGolden(const QImage& picture, const QString& name, qreal scale, bool accept) {
    const QString file = QStringLiteral("%1@%2x.png").arg(name).arg(scale);
    const QString folder = accept ? QStringLiteral(GOLDEN_FOLDER "/") : QStringLiteral(SHOTS_FOLDER "/");
    QDir().mkpath(folder);
    picture.save(folder + file, "PNG", 0);  // as small as it gets: they lie in the repository
    if (accept) return true;
    if (picture == QImage(QStringLiteral(GOLDEN_FOLDER "/") + file).convertToFormat(QImage::Format_RGB32)) return true;
    std::fprintf(stderr, "%s differs from the accepted picture; what was drawn is %s%s\n", qPrintable(file),
                 qPrintable(folder), qPrintable(file));
    return false;
}

}  // namespace tavrin::test
