// The colours of the program. Every other file, C++ or QML, names a colour from here; none spells one out.
#pragma once

#include <QtQml/qqmlregistration.h>

#include <QColor>
#include <QObject>
#include <QStringView>

namespace tavrin {

/// A colour from six hexadecimal digits, "#" in front or not, in sRGB and opaque. The text is read as one hexadecimal
/// number as far as its digits go, and its three low bytes are red, green and blue; text without a digit gives black.
[[nodiscard]] QColor colorFromHex(QStringView text);

/// How far `text` stands out from `ground`, from 1 to 21, as the Web Content Accessibility Guidelines 2.1 measure it.
/// The ground must be opaque; a translucent text is laid over it first.
[[nodiscard]] double contrastRatio(const QColor& text, const QColor& ground);

/// `over` laid on the opaque `ground`, as it is seen.
[[nodiscard]] QColor laidOver(const QColor& over, const QColor& ground);

/// The named palette. In QML: Brand.gold, Brand.white(0.05).
class Brand : public QObject {
    Q_OBJECT
    QML_ELEMENT
    QML_SINGLETON
    Q_PROPERTY(QColor deepest READ deepest CONSTANT FINAL)
    Q_PROPERTY(QColor deep READ deep CONSTANT FINAL)
    Q_PROPERTY(QColor purple READ purple CONSTANT FINAL)
    Q_PROPERTY(QColor purple2 READ purple2 CONSTANT FINAL)
    Q_PROPERTY(QColor gold READ gold CONSTANT FINAL)
    Q_PROPERTY(QColor goldHi READ goldHi CONSTANT FINAL)
    Q_PROPERTY(QColor lavender READ lavender CONSTANT FINAL)
    Q_PROPERTY(QColor muted READ muted CONSTANT FINAL)
    Q_PROPERTY(QColor ink READ ink CONSTANT FINAL)
    Q_PROPERTY(QColor danger READ danger CONSTANT FINAL)
    Q_PROPERTY(QColor dangerDeep READ dangerDeep CONSTANT FINAL)
    Q_PROPERTY(QColor softWarning READ softWarning CONSTANT FINAL)
    Q_PROPERTY(QColor safe READ safe CONSTANT FINAL)
    Q_PROPERTY(QColor onGold READ onGold CONSTANT FINAL)
    Q_PROPERTY(QColor onDanger READ onDanger CONSTANT FINAL)
    Q_PROPERTY(QColor sheet READ sheet CONSTANT FINAL)
    Q_PROPERTY(QColor well READ well CONSTANT FINAL)
    Q_PROPERTY(QColor clear READ clear CONSTANT FINAL)

  public:
    using QObject::QObject;

    /// Bottom, middle and top of the background; `purple` fills chips and surfaces.
    static QColor deepest() { return colorFromHex(u"120A26"); }
    static QColor deep() { return colorFromHex(u"160E2A"); }
    static QColor purple() { return colorFromHex(u"2A1A4A"); }
    static QColor purple2() { return colorFromHex(u"34205C"); }
    /// The accent: tint, figures of size, primary buttons; and the light end of its gradient.
    static QColor gold() { return colorFromHex(u"E8B04B"); }
    static QColor goldHi() { return colorFromHex(u"F6E2A6"); }
    /// Text on dark: primary `ink`, secondary `lavender`, captions `muted`.
    static QColor lavender() { return colorFromHex(u"C9BEEF"); }
    static QColor muted() { return colorFromHex(u"B6ACD6"); }
    static QColor ink() { return colorFromHex(u"F6F2FF"); }
    /// The light and the deep end of the gradient of danger.
    static QColor danger() { return colorFromHex(u"E5604E"); }
    static QColor dangerDeep() { return colorFromHex(u"C8412F"); }
    static QColor softWarning() { return colorFromHex(u"F0A0A0"); }
    /// What is safe, and what is kept.
    static QColor safe() { return colorFromHex(u"6EE7B7"); }
    static QColor onGold() { return colorFromHex(u"211340"); }
    static QColor onDanger() { return colorFromHex(u"FFFFFF"); }
    /// The ground of a sheet that lies over the screen: nothing shines through it.
    static QColor sheet() { return colorFromHex(u"211340"); }
    /// Laid on a card whose text is in the colour of danger, which needs a darker ground than any other text.
    static QColor well() { return faded(deepest(), 0.8); }
    static QColor clear() { return {0, 0, 0, 0}; }

    /// White and black at an opacity, for veils, strokes and the dimmed screen behind a sheet.
    Q_INVOKABLE static QColor white(double opacity) { return faded(colorFromHex(u"FFFFFF"), opacity); }
    Q_INVOKABLE static QColor black(double opacity) { return faded(colorFromHex(u"000000"), opacity); }
    /// `color` at an opacity.
    Q_INVOKABLE static QColor faded(const QColor& color, double opacity);
    /// For a colour that comes as text, from data.
    Q_INVOKABLE static QColor fromHex(const QString& text) { return colorFromHex(text); }
};

}  // namespace tavrin
