// A rounded rectangle with a diagonal gradient and a stroke, smooth on every renderer.
#pragma once

#include <QtQml/qqmlregistration.h>

#include <QColor>
#include <QQuickPaintedItem>

namespace tavrin {

/// Plate { color: Brand.goldHi; endColor: Brand.gold; radius: height / 2; strokeColor: Brand.white(0.18) }
///
/// Rectangle knows no diagonal gradient, and scaling it frays its corners on the software renderer; this one is painted
/// once into an image and shown as that.
class Plate : public QQuickPaintedItem {
    Q_OBJECT
    QML_ELEMENT
    Q_PROPERTY(QColor color MEMBER color_ NOTIFY changed FINAL)
    /// The colour at the bottom trailing corner; `color` all over while it is clear.
    Q_PROPERTY(QColor endColor MEMBER endColor_ NOTIFY changed FINAL)
    Q_PROPERTY(QColor strokeColor MEMBER strokeColor_ NOTIFY changed FINAL)
    /// The stroke lies inside the edge.
    Q_PROPERTY(qreal strokeWidth MEMBER strokeWidth_ NOTIFY changed FINAL)
    /// At most half of the shorter side counts.
    Q_PROPERTY(qreal radius MEMBER radius_ NOTIFY changed FINAL)

  public:
    explicit Plate(QQuickItem* parent = nullptr);

    void paint(QPainter* painter) override;

  Q_SIGNALS:
    void changed();

  private:
    QColor color_;
    QColor endColor_;
    QColor strokeColor_;
    qreal strokeWidth_ = 1;
    qreal radius_ = 0;
};

}  // namespace tavrin
