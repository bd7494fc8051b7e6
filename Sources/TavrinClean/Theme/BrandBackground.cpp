#include "BrandBackground.h"

#include "Brand.h"

#include <QLinearGradient>
#include <QPainter>
#include <QRadialGradient>

namespace tavrin {
namespace {

void paintGlow(QPainter& painter, const QRectF& area, QPointF unitCentre, qreal radius, const QColor& color) {
    const QPointF centre(unitCentre.x() * area.width(), unitCentre.y() * area.height());
    QRadialGradient glow(centre, radius);
    glow.setColorAt(0, color);
    glow.setColorAt(1, Brand::faded(color, 0));
    const QRectF reach(centre - QPointF(radius, radius), QSizeF(2 * radius, 2 * radius));
    painter.fillRect(reach & area, glow);
}

}  // namespace

BrandBackground::BrandBackground(QQuickItem* parent) : QQuickPaintedItem(parent) {
    setOpaquePainting(true);
}

void BrandBackground::paint(QPainter* painter) {
    const QRectF area(0, 0, width(), height());
    QLinearGradient ground(area.topLeft(), area.bottomLeft());
    ground.setColorAt(0, Brand::purple2());
    ground.setColorAt(0.5, Brand::deep());
    ground.setColorAt(1, Brand::deepest());
    painter->fillRect(area, ground);
    paintGlow(*painter, area, {0.5, -0.05}, 520, Brand::faded(Brand::gold(), 0.1));
    paintGlow(*painter, area, {0.15, 0}, 420, Brand::faded(Brand::purple(), 0.35));
}

}  // namespace tavrin
