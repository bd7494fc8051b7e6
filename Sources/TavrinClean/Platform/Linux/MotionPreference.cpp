// The desktops keep it in places of their own, and their portals hand out all of them.
#include "TavrinClean/Platform/MotionPreference.h"

#include "TavrinClean/Platform/Linux/SettingsPortal.h"

#include <array>
#include <bitset>

namespace tavrin {
namespace {

struct Setting {
    QLatin1StringView space;
    QLatin1StringView key;
    bool (*reduces)(const QVariant& value);
};

// "No animations at all" as a factor of their length, which is kept as text.
bool isZero(const QVariant& value) {
    bool isNumber = false;
    const double number = value.toString().toDouble(&isNumber);
    return isNumber && number == 0;
}

constexpr std::array settings{
    Setting{QLatin1StringView("org.freedesktop.appearance"), QLatin1StringView("reduced-motion"),
            [](const QVariant& value) { return value.toUInt() == 1; }},
    Setting{QLatin1StringView("org.gnome.desktop.interface"), QLatin1StringView("enable-animations"),
            [](const QVariant& value) { return value.typeId() == QMetaType::Bool && !value.toBool(); }},
    Setting{QLatin1StringView("org.kde.kdeglobals.KDE"), QLatin1StringView("AnimationDurationFactor"), isZero},
};

QStringList namespaces() {
    QStringList names;
    names.reserve(settings.size());
    for (const Setting& setting : settings)
        names.append(setting.space);
    return names;
}

}  // namespace

MotionPreference::MotionPreference(QObject* parent) : QObject(parent) {
    const auto* const portal = new SettingsPortal(namespaces(), this);
    connect(portal, &SettingsPortal::told, this,
            [this, reducing = std::bitset<settings.size()>()](const QString& space, const QString& key,
                                                              const QVariant& value) mutable {
                for (std::size_t i = 0; i < settings.size(); ++i) {
                    if (space == settings[i].space && key == settings[i].key) reducing[i] = settings[i].reduces(value);
                }
                setReduced(reducing.any());
            });
}

void MotionPreference::setReduced(bool reduced) {
    if (reduced == reduced_) return;
    reduced_ = reduced;
    Q_EMIT reducedChanged(reduced);
}

}  // namespace tavrin
