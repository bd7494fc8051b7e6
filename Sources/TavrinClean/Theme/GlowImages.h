// Shadows and glows as pictures, painted once: the renderer that needs no graphics driver draws no effects.
#pragma once

#include <QQuickImageProvider>

namespace tavrin {

/// What one picture shows: the light around a rounded rectangle, to be cut into nine pieces and stretched.
struct Glow {
    qreal radius = 0;
    /// How far the light reaches beyond the edge, in points.
    qreal blur = 0;
    QColor color;

    /// What each border of the picture measures; between them lies one pixel that is stretched.
    [[nodiscard]] int border() const;

    friend bool operator==(const Glow&, const Glow&) = default;
};

/// Nothing is painted inside the rectangle but below its edge, one point wide: a translucent card isn't darkened by its
/// own shadow, and no seam shows between the two.
[[nodiscard]] QImage glowImage(const Glow& glow);

/// A round light that fades from the middle to the edge of a square.
[[nodiscard]] QImage haloImage(int side, const QColor& color);

/// "image://glow/RADIUS/BLUR/RRGGBB" and, for the round one, "image://glow/halo/RRGGBB", which is as large as the
/// source size asks. Opacity is the item's own.
class GlowImages : public QQuickImageProvider {
  public:
    GlowImages() : QQuickImageProvider(Image) {}

    QImage requestImage(const QString& id, QSize* size, const QSize& requestedSize) override;
};

}  // namespace tavrin
