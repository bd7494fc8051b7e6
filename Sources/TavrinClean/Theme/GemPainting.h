// The gem itself, at one moment of its appearing.
#pragma once

#include <QtQml/qqmlregistration.h>

#include <QColor>
#include <QPointF>
#include <QQuickPaintedItem>
#include <array>
#include <span>

namespace tavrin {

/// A face of the gem: a polygon over `points`, which lie in a square of side 1.
struct Facet {
    std::span<const QPointF> points;
    QColor fill;
};

/// An edge of the gem, drawn in gold from `a` to `b`.
struct DesignLine {
    QPointF a;
    QPointF b;
};

/// What GemLogo shows. `elapsed` is the time since it appeared, in seconds: the facets fade in one after another, the
/// lines follow. From `completeAfter` on nothing changes any more.
class GemPainting : public QQuickPaintedItem {
    Q_OBJECT
    QML_ELEMENT
    Q_PROPERTY(qreal elapsed READ elapsed WRITE setElapsed NOTIFY elapsedChanged FINAL)
    Q_PROPERTY(qreal completeAfter READ completeAfter CONSTANT FINAL)

  public:
    static constexpr std::size_t facetCount = 8;

    explicit GemPainting(QQuickItem* parent = nullptr);

    void paint(QPainter* painter) override;

    [[nodiscard]] qreal elapsed() const { return elapsed_; }
    void setElapsed(qreal seconds);

    /// When a facet begins to fade in, in seconds after the gem appeared.
    [[nodiscard]] static qreal facetPhase(std::size_t facet);
    /// From 0 to 1, eased out over 0.6 seconds.
    [[nodiscard]] static qreal facetOpacity(std::size_t facet, qreal elapsed);
    [[nodiscard]] static qreal linesOpacity(qreal elapsed);
    [[nodiscard]] static qreal completeAfter();

  Q_SIGNALS:
    void elapsedChanged();

  private:
    qreal elapsed_;
};

}  // namespace tavrin
