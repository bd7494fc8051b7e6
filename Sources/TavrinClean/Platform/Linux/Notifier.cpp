// Desktop Notifications Specification 1.2.
#include "TavrinClean/Platform/Notifier.h"

#include "TavrinClean/Platform/Linux/SessionBus.h"
#include "TavrinClean/Platform/ProgramId.h"
#include "TavrinCore/Strings.h"

#include <QDBusMessage>
#include <QString>
#include <QStringList>
#include <QVariantMap>

namespace tavrin {
namespace {

/// The body may be read as markup, so what would be markup is escaped.
QString body(const std::string& text) {
    return QString::fromStdString(text).toHtmlEscaped();
}

}  // namespace

// This system asks nobody.
void Notifier::requestAuthorization() {}

void Notifier::notify(const std::string& title, const std::string& text) {
    QDBusMessage call = QDBusMessage::createMethodCall(
        QStringLiteral("org.freedesktop.Notifications"), QStringLiteral("/org/freedesktop/Notifications"),
        QStringLiteral("org.freedesktop.Notifications"), QStringLiteral("Notify"));
    // 0 replaces none of those that are shown; -1 leaves to the desktop how long it stands.
    call << QString::fromUtf8(S::appName.data(), static_cast<qsizetype>(S::appName.size())) << 0U
         << programId.toString() << QString::fromStdString(title) << body(text) << QStringList()
         << QVariantMap{{QStringLiteral("desktop-entry"), programId.toString()},
                        {QStringLiteral("sound-name"), QStringLiteral("complete")}}
         << -1;
    sendOnSessionBus(call);
}

}  // namespace tavrin
