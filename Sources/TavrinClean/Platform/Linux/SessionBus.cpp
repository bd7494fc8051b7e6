#include "TavrinClean/Platform/Linux/SessionBus.h"

#include <QDBusConnection>
#include <QDBusPendingCall>
#include <QFileInfo>

namespace tavrin {

bool hasSessionBus() {
    // With neither of the two, connecting would look for a bus by starting other programs, and wait for them.
    const bool told = !qEnvironmentVariableIsEmpty("DBUS_SESSION_BUS_ADDRESS");
    const QString runtime = qEnvironmentVariable("XDG_RUNTIME_DIR");
    if (!told && (runtime.isEmpty() || !QFileInfo::exists(runtime + QStringLiteral("/bus")))) return false;
    return QDBusConnection::sessionBus().isConnected();
}

void sendOnSessionBus(const QDBusMessage& call) {
    if (hasSessionBus()) (void)QDBusConnection::sessionBus().asyncCall(call);
}

}  // namespace tavrin
