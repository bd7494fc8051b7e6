#include "InstallTheme.h"

#include "FileImages.h"
#include "GlowImages.h"

#include <QFontDatabase>
#include <QGuiApplication>
#include <QQmlEngine>
#include <array>

namespace tavrin {

void installTheme(QQmlEngine& engine) {
    engine.addImportPath(QStringLiteral(":/qt/qml"));
    // The engine owns what it is given.
    engine.addImageProvider(QStringLiteral("glow"), new GlowImages);
    engine.addImageProvider(QStringLiteral("fileicon"), new FileIconImages);
    engine.addImageProvider(QStringLiteral("thumbnail"), new ThumbnailImages);
}

void installFonts() {
    constexpr std::array weights{"Regular", "Medium", "SemiBold", "Bold"};
    for (const char* weight : weights) {
        const QString file = QStringLiteral(":/qt/qml/Tavrin/Theme/fonts/Inter-%1.otf").arg(QLatin1StringView(weight));
        if (QFontDatabase::addApplicationFont(file) < 0) qWarning("The typeface can't be read: %s", qPrintable(file));
    }
    QFont font(QStringLiteral("Inter"));
    font.setPixelSize(14);
    QGuiApplication::setFont(font);
}

void setReducedMotion(QQmlEngine& engine, bool reduced) {
    auto* const theme = engine.singletonInstance<QObject*>(qmlTypeId("Tavrin.Theme", 1, 0, "Theme"));
    if (theme != nullptr) theme->setProperty("reducedMotion", reduced);
}

}  // namespace tavrin
