#include "GlowImages.h"

#include "Brand.h"

#include <QImage>
#include <algorithm>
#include <cmath>

namespace tavrin {
namespace {

// For the side of a halo: more is a slip in the asking.
constexpr int mostHaloPixels = 1024;

// From a rounded square of `side` that begins at `margin` to a point: negative inside.
double distanceToEdge(double x, double y, double margin, double side, double radius) {
    const double half = side / 2;
    const double dx = std::abs(x - margin - half) - (half - radius);
    const double dy = std::abs(y - margin - half) - (half - radius);
    const double outside = std::hypot(std::max(dx, 0.0), std::max(dy, 0.0));
    return outside + std::min(std::max(dx, dy), 0.0) - radius;
}

QRgb lit(const QColor& color, double strength) {
    const int alpha = static_cast<int>(std::lround(255 * std::clamp(strength, 0.0, 1.0)));
    return qPremultiply(qRgba(color.red(), color.green(), color.blue(), alpha));
}

// A soft fall from 1 to 0 that begins and ends level.
double falloff(double share) {
    const double rest = 1 - std::clamp(share, 0.0, 1.0);
    return rest * rest * (3 - 2 * rest) * rest;
}

}  // namespace

int Glow::border() const {
    return static_cast<int>(std::ceil(radius + blur));
}

QImage glowImage(const Glow& glow) {
    const int border = glow.border();
    const int side = 2 * border + 1;
    QImage image(side, side, QImage::Format_ARGB32_Premultiplied);
    for (int y = 0; y < side; ++y) {
        auto* line = reinterpret_cast<QRgb*>(image.scanLine(y));
        for (int x = 0; x < side; ++x) {
            const double distance = distanceToEdge(x + 0.5, y + 0.5, glow.blur, side - 2 * glow.blur, glow.radius);
            // A point of it lies below the edge, and ends smoothed over one pixel: at a scale that isn't whole, the
            // edge of what it surrounds lets through what is below.
            const double outside = std::clamp(distance + 1.5, 0.0, 1.0);
            line[x] = lit(glow.color, outside * falloff(distance / glow.blur));
        }
    }
    return image;
}

QImage haloImage(int side, const QColor& color) {
    QImage image(side, side, QImage::Format_ARGB32_Premultiplied);
    const double middle = side / 2.0;
    for (int y = 0; y < side; ++y) {
        auto* line = reinterpret_cast<QRgb*>(image.scanLine(y));
        for (int x = 0; x < side; ++x)
            line[x] = lit(color, falloff(std::hypot(x + 0.5 - middle, y + 0.5 - middle) / middle));
    }
    return image;
}

QImage GlowImages::requestImage(const QString& id, QSize* size, const QSize& requestedSize) {
    const QStringList parts = id.split(u'/');
    QImage image;
    if (parts.size() == 2 && parts[0] == QLatin1StringView("halo")) {
        image = haloImage(std::clamp(requestedSize.width(), 1, mostHaloPixels), colorFromHex(parts[1]));
    } else if (parts.size() == 3) {
        const Glow glow{parts[0].toDouble(), parts[1].toDouble(), colorFromHex(parts[2])};
        // A picture larger than any card's corner is a slip in the asking.
        if (glow.blur >= 1 && glow.radius >= 0 && glow.border() <= 256) image = glowImage(glow);
    }
    *size = image.size();
    return image;
}

}  // namespace tavrin
