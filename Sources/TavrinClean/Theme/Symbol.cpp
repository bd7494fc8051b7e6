#include "Symbol.h"

#include "Brand.h"
#include "SymbolTable.h"

#include <QLinearGradient>
#include <QLoggingCategory>
#include <QPainter>
#include <QPixmapCache>
#include <QSvgRenderer>

namespace tavrin {
namespace {

// The drawing as an opaque shape of `side` device pixels. A list shows the same few symbols in every row, so each is
// drawn once; the cache of the toolkit bounds what is kept.
QPixmap shape(const QString& key, int side) {
    const QString cacheKey = QStringLiteral("symbol/%1/%2").arg(key).arg(side);
    QPixmap pixmap;
    if (QPixmapCache::find(cacheKey, &pixmap)) return pixmap;

    const std::string_view file = symbolFile(key.toStdString());
    if (file.empty()) {
        qWarning("There is no symbol called \"%s\"", qPrintable(key));
        return {};
    }
    QSvgRenderer drawing(QStringLiteral(":/qt/qml/Tavrin/Theme/icons/%1.svg")
                             .arg(QLatin1StringView(file.data(), static_cast<qsizetype>(file.size()))));
    pixmap = QPixmap(side, side);
    pixmap.fill(Qt::transparent);
    QPainter painter(&pixmap);
    drawing.render(&painter, QRectF(0, 0, side, side));
    painter.end();
    QPixmapCache::insert(cacheKey, pixmap);
    return pixmap;
}

}  // namespace

Symbol::Symbol(QQuickItem* parent) : QQuickPaintedItem(parent), color_(Brand::ink()), endColor_(Brand::clear()) {
    setAntialiasing(true);
    setImplicitSize(size_, size_);
}

void Symbol::paint(QPainter* painter) {
    const QRectF area(0, 0, width(), height());
    const qreal scale = painter->worldTransform().m11() * painter->device()->devicePixelRatio();
    const int side = qRound(std::min(area.width(), area.height()) * scale);
    if (side <= 0 || key_.isEmpty()) return;

    QPixmap tinted = shape(key_, side);
    if (tinted.isNull()) return;
    QPainter tint(&tinted);
    tint.setCompositionMode(QPainter::CompositionMode_SourceIn);
    QLinearGradient gradient(0, 0, side, side);
    gradient.setColorAt(0, color_);
    gradient.setColorAt(1, endColor_.alpha() == 0 ? color_ : endColor_);
    tint.fillRect(tinted.rect(), gradient);
    tint.end();

    // In the middle, and on whole pixels, so that nothing is drawn between two of them.
    const QPointF corner((area.width() - side / scale) / 2, (area.height() - side / scale) / 2);
    painter->drawPixmap(QRectF(corner, QSizeF(side / scale, side / scale)), tinted, QRectF(0, 0, side, side));
}

void Symbol::setKey(const QString& key) {
    if (key == key_) return;
    key_ = key;
    update();
    Q_EMIT keyChanged();
}

void Symbol::setColor(const QColor& color) {
    if (color == color_) return;
    color_ = color;
    update();
    Q_EMIT colorChanged();
}

void Symbol::setEndColor(const QColor& color) {
    if (color == endColor_) return;
    endColor_ = color;
    update();
    Q_EMIT endColorChanged();
}

void Symbol::setSize(qreal size) {
    if (qFuzzyCompare(size, size_)) return;
    size_ = size;
    setImplicitSize(size, size);
    update();
    Q_EMIT sizeChanged();
}

}  // namespace tavrin
