// org.freedesktop.portal.Settings, version 1.
#include "TavrinClean/Platform/Linux/SettingsPortal.h"

#include "TavrinClean/Platform/Linux/SessionBus.h"

#include <QDBusArgument>
#include <QDBusConnection>
#include <QDBusPendingCallWatcher>
#include <QDBusVariant>
#include <QMap>

namespace tavrin {
namespace {

using Settings = QMap<QString, QVariantMap>;

QString path() {
    return QStringLiteral("/org/freedesktop/portal/desktop");
}

QString interface() {
    return QStringLiteral("org.freedesktop.portal.Settings");
}

}  // namespace

SettingsPortal::SettingsPortal(const QStringList& namespaces, QObject* parent) : QObject(parent) {
    if (!hasSessionBus()) return;
    // From whoever has that path and interface: to look up who serves a name would mean to wait for the bus.
    QDBusConnection::sessionBus().connect({}, path(), interface(), QStringLiteral("SettingChanged"), this,
                                          SLOT(changed(QDBusMessage)));
    ask(namespaces);
}

void SettingsPortal::ask(const QStringList& namespaces) {
    QDBusMessage call = QDBusMessage::createMethodCall(QStringLiteral("org.freedesktop.portal.Desktop"), path(),
                                                       interface(), QStringLiteral("ReadAll"));
    call << namespaces;
    auto* const watcher = new QDBusPendingCallWatcher(QDBusConnection::sessionBus().asyncCall(call), this);
    connect(watcher, &QDBusPendingCallWatcher::finished, this, [this, watcher] {
        watcher->deleteLater();
        const QDBusMessage reply = watcher->reply();
        if (reply.type() != QDBusMessage::ReplyMessage || reply.signature() != QStringLiteral("a{sa{sv}}")) return;
        const auto settings = qdbus_cast<Settings>(reply.arguments().constFirst());
        for (auto space = settings.begin(); space != settings.end(); ++space) {
            for (auto setting = space->begin(); setting != space->end(); ++setting)
                Q_EMIT told(space.key(), setting.key(), setting.value());
        }
    });
}

void SettingsPortal::changed(const QDBusMessage& signal) {
    if (signal.signature() != QStringLiteral("ssv")) return;
    const QList<QVariant> what = signal.arguments();
    Q_EMIT told(what[0].toString(), what[1].toString(), what[2].value<QDBusVariant>().variant());
}

}  // namespace tavrin
