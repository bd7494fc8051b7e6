// The ground of every screen.
#pragma once

#include <QtQml/qqmlregistration.h>

#include <QQuickPaintedItem>

namespace tavrin {

/// BrandBackground { anchors.fill: parent }
///
/// Three layers: top to bottom through the three purples, a breath of gold above the middle, a breath of purple at the
/// upper leading side. Painted when its size changes and never otherwise.
class BrandBackground : public QQuickPaintedItem {
    Q_OBJECT
    QML_ELEMENT

  public:
    explicit BrandBackground(QQuickItem* parent = nullptr);

    void paint(QPainter* painter) override;
};

}  // namespace tavrin
