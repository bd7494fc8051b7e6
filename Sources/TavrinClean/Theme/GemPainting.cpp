#include "GemPainting.h"

#include "Brand.h"

#include <QPainter>
#include <algorithm>

namespace tavrin {
namespace {

constexpr qreal fadeSeconds = 0.6;
constexpr qreal linesDelay = 0.25;
constexpr qreal betweenFacets = 0.07;

// The gem from the front: a table between two shoulders, the girdle below them, the point at the bottom.
constexpr QPointF tableLeft(0.29, 0.17);
constexpr QPointF tableMiddle(0.50, 0.17);
constexpr QPointF tableRight(0.71, 0.17);
constexpr QPointF girdleLeft(0.06, 0.41);
constexpr QPointF innerLeft(0.345, 0.41);
constexpr QPointF innerRight(0.655, 0.41);
constexpr QPointF girdleRight(0.94, 0.41);
constexpr QPointF point(0.50, 0.90);

constexpr std::array outline{tableLeft, tableRight, girdleRight, point, girdleLeft};

constexpr std::array crownLeft{girdleLeft, tableLeft, innerLeft};
constexpr std::array starLeft{tableLeft, tableMiddle, innerLeft};
constexpr std::array table{tableMiddle, innerRight, innerLeft};
constexpr std::array starRight{tableMiddle, tableRight, innerRight};
constexpr std::array crownRight{tableRight, girdleRight, innerRight};
constexpr std::array pavilionLeft{girdleLeft, innerLeft, point};
constexpr std::array pavilion{innerLeft, innerRight, point};
constexpr std::array pavilionRight{innerRight, girdleRight, point};

constexpr std::array designLines{
    DesignLine{girdleLeft, innerLeft},  DesignLine{innerLeft, innerRight},  DesignLine{innerRight, girdleRight},
    DesignLine{tableLeft, innerLeft},   DesignLine{innerLeft, tableMiddle}, DesignLine{tableMiddle, innerRight},
    DesignLine{innerRight, tableRight}, DesignLine{innerLeft, point},       DesignLine{innerRight, point},
};

// The light falls from the upper left.
std::array<Facet, GemPainting::facetCount> facets() {
    const QColor darkest = colorFromHex(u"211340");
    const QColor dark = colorFromHex(u"2A1A4A");
    const QColor middle = colorFromHex(u"2E1C52");
    const QColor light = colorFromHex(u"34205C");
    const QColor lightest = colorFromHex(u"3A2563");
    return {{{crownLeft, light},
             {starLeft, lightest},
             {table, light},
             {starRight, middle},
             {crownRight, dark},
             {pavilionLeft, middle},
             {pavilion, dark},
             {pavilionRight, darkest}}};
}

qreal easedOut(qreal seconds) {
    const qreal rest = 1 - std::clamp(seconds / fadeSeconds, 0.0, 1.0);
    return 1 - rest * rest * rest;
}

}  // namespace

GemPainting::GemPainting(QQuickItem* parent) : QQuickPaintedItem(parent), elapsed_(completeAfter()) {
    setAntialiasing(true);
}

qreal GemPainting::facetPhase(std::size_t facet) {
    return static_cast<qreal>(facet) * betweenFacets;
}

qreal GemPainting::facetOpacity(std::size_t facet, qreal elapsed) {
    return easedOut(elapsed - facetPhase(facet));
}

qreal GemPainting::linesOpacity(qreal elapsed) {
    return easedOut(elapsed - linesDelay);
}

qreal GemPainting::completeAfter() {
    return std::max(facetPhase(facetCount - 1), linesDelay) + fadeSeconds;
}

void GemPainting::setElapsed(qreal seconds) {
    if (qFuzzyCompare(seconds + 1, elapsed_ + 1)) return;
    elapsed_ = seconds;
    update();
    Q_EMIT elapsedChanged();
}

void GemPainting::paint(QPainter* painter) {
    const qreal side = std::min(width(), height());
    painter->setRenderHint(QPainter::Antialiasing);
    painter->translate((width() - side) / 2, (height() - side) / 2);
    painter->scale(side, side);

    std::size_t index = 0;
    for (const Facet& facet : facets()) {
        painter->setOpacity(facetOpacity(index++, elapsed_));
        // A stroke in the fill's own colour closes the hairline between two smoothed edges.
        painter->setPen(QPen(facet.fill, 0.006));
        painter->setBrush(facet.fill);
        painter->drawPolygon(facet.points.data(), static_cast<int>(facet.points.size()));
    }

    painter->setOpacity(linesOpacity(elapsed_));
    // Never thinner than a line that can be seen in the sidebar.
    const qreal hairline = std::max(0.007, 0.8 / side);
    painter->setBrush(Qt::NoBrush);
    painter->setPen(QPen(Brand::faded(Brand::gold(), 0.75), hairline, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
    for (const DesignLine& line : designLines)
        painter->drawLine(line.a, line.b);
    painter->setPen(QPen(Brand::gold(), hairline * 1.7, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
    painter->drawPolygon(outline.data(), static_cast<int>(outline.size()));
}

}  // namespace tavrin
