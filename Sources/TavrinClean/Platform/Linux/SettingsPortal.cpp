// org.freedesktop.portal.Settings, version 1.
#include "TavrinClean/Platform/Linux/SettingsPortal.h"

#include "TavrinClean/Platform/Linux/SessionBus.h"

#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusPendingCallWatcher>
#include <QDBusPendingReply>
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
    // The slot is looked up by the names of its types, and this one has none before its first use.
    qRegisterMetaType<QDBusVariant>();
    // From whoever has that path and interface: to look up who serves a name would mean to wait for the bus.
    QDBusConnection::sessionBus().connect({}, path(), interface(), QStringLiteral("SettingChanged"), this,
                                          SLOT(changed(QString, QString, QDBusVariant)));
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

void SettingsPortal::changed(const QString& space, const QString& key, const QDBusVariant& value) {
    Q_EMIT told(space, key, value.variant());
}

}  // namespace tavrin
