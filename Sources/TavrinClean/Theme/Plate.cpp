#include "Plate.h"

#include "Brand.h"

#include <QLinearGradient>
#include <QPainter>
#include <algorithm>

namespace tavrin {

Plate::Plate(QQuickItem* parent)
    : QQuickPaintedItem(parent), color_(Brand::clear()), endColor_(Brand::clear()), strokeColor_(Brand::clear()) {
    setAntialiasing(true);
    connect(this, &Plate::changed, this, [this] { update(); });
}

void Plate::paint(QPainter* painter) {
    const QRectF area(0, 0, width(), height());
    const qreal radius = std::min({radius_, area.width() / 2, area.height() / 2});
    painter->setRenderHint(QPainter::Antialiasing);
    painter->setPen(Qt::NoPen);
    QLinearGradient gradient(area.topLeft(), area.bottomRight());
    gradient.setColorAt(0, color_);
    gradient.setColorAt(1, endColor_.alpha() == 0 ? color_ : endColor_);
    painter->setBrush(gradient);
    painter->drawRoundedRect(area, radius, radius);

    if (strokeColor_.alpha() == 0 || strokeWidth_ <= 0) return;
    const qreal inset = strokeWidth_ / 2;
    painter->setBrush(Qt::NoBrush);
    painter->setPen(QPen(strokeColor_, strokeWidth_));
    painter->drawRoundedRect(area.adjusted(inset, inset, -inset, -inset), std::max(0.0, radius - inset),
                             std::max(0.0, radius - inset));
}

}  // namespace tavrin
