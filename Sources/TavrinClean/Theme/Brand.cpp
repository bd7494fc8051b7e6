#include "Brand.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace tavrin {
namespace {

int hexDigit(QChar c) {
    const char16_t u = c.unicode();
    if (u >= u'0' && u <= u'9') return u - u'0';
    if (u >= u'a' && u <= u'f') return u - u'a' + 10;
    if (u >= u'A' && u <= u'F') return u - u'A' + 10;
    return -1;
}

double luminance(const QColor& color) {
    const auto linear = [](double c) { return c <= 0.04045 ? c / 12.92 : std::pow((c + 0.055) / 1.055, 2.4); };
    return 0.2126 * linear(color.redF()) + 0.7152 * linear(color.greenF()) + 0.0722 * linear(color.blueF());
}

}  // namespace

QColor colorFromHex(QStringView text) {
    text = text.trimmed();
    if (text.startsWith(u'#')) text = text.mid(1);
    if (text.startsWith(u"0x", Qt::CaseInsensitive)) text = text.mid(2);
    quint64 number = 0;
    for (const QChar c : text) {
        const int digit = hexDigit(c);
        if (digit < 0) break;
        // A number too long for 64 bits counts as the greatest one.
        if (number > std::numeric_limits<quint64>::max() >> 4U) return {255, 255, 255};
        number = number << 4U | static_cast<quint64>(digit);
    }
    return QColor::fromRgb(static_cast<int>(number >> 16U & 0xFFU), static_cast<int>(number >> 8U & 0xFFU),
                           static_cast<int>(number & 0xFFU));
}

QColor laidOver(const QColor& over, const QColor& ground) {
    const float share = over.alphaF();
    const auto mixed = [share](float top, float below) { return top * share + below * (1 - share); };
    return QColor::fromRgbF(mixed(over.redF(), ground.redF()), mixed(over.greenF(), ground.greenF()),
                            mixed(over.blueF(), ground.blueF()));
}

double contrastRatio(const QColor& text, const QColor& ground) {
    const auto [dark, light] = std::minmax({luminance(laidOver(text, ground)), luminance(ground)});
    return (light + 0.05) / (dark + 0.05);
}

QColor Brand::faded(const QColor& color, double opacity) {
    QColor result = color;
    result.setAlphaF(static_cast<float>(std::clamp(opacity, 0.0, 1.0)));
    return result;
}

}  // namespace tavrin
