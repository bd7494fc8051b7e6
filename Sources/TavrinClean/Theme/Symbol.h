// A symbol of the icon set in one colour or in a gradient.
#pragma once

#include <QtQml/qqmlregistration.h>

#include <QColor>
#include <QQuickPaintedItem>

namespace tavrin {

/// Symbol { key: "trash"; color: Brand.gold; size: 18 }
///
/// An unknown key paints nothing and is told on the log. A symbol has no name for screen readers: what it stands beside
/// says it, or whoever uses it gives it one.
class Symbol : public QQuickPaintedItem {
    Q_OBJECT
    QML_ELEMENT
    Q_PROPERTY(QString key READ key WRITE setKey NOTIFY keyChanged REQUIRED FINAL)
    Q_PROPERTY(QColor color READ color WRITE setColor NOTIFY colorChanged FINAL)
    /// Where the gradient from `color` ends, at the bottom trailing corner; no gradient while it is clear.
    Q_PROPERTY(QColor endColor READ endColor WRITE setEndColor NOTIFY endColorChanged FINAL)
    /// The side of the square that the symbol fills, in points.
    Q_PROPERTY(qreal size READ size WRITE setSize NOTIFY sizeChanged FINAL)

  public:
    explicit Symbol(QQuickItem* parent = nullptr);

    void paint(QPainter* painter) override;

    [[nodiscard]] QString key() const { return key_; }
    [[nodiscard]] QColor color() const { return color_; }
    [[nodiscard]] QColor endColor() const { return endColor_; }
    [[nodiscard]] qreal size() const { return size_; }
    void setKey(const QString& key);
    void setColor(const QColor& color);
    void setEndColor(const QColor& color);
    void setSize(qreal size);

  Q_SIGNALS:
    void keyChanged();
    void colorChanged();
    void endColorChanged();
    void sizeChanged();

  private:
    QString key_;
    QColor color_;
    QColor endColor_;
    qreal size_ = 16;
};

}  // namespace tavrin
