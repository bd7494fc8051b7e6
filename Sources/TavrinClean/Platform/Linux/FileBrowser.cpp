// org.freedesktop.FileManager1 (file manager D-Bus interface); where nobody serves it, the folder is opened by the
// desktop.
#include "TavrinClean/Platform/FileBrowser.h"

#include "TavrinClean/Platform/Linux/SessionBus.h"

#include <QCoreApplication>
#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusPendingCall>
#include <QDBusPendingCallWatcher>
#include <QProcess>
#include <QStandardPaths>
#include <QStringList>
#include <array>
#include <utility>

namespace tavrin {
namespace {

void openFolder(const QString& folder) {
    (void)QProcess::startDetached(QStringLiteral("xdg-open"), {folder});
}

}  // namespace

void showInFileBrowser(const URL& url) {
    const QString folder = QString::fromStdString(url.deletingLastPathComponent().absoluteString());
    if (!hasSessionBus()) return openFolder(folder);
    QDBusMessage call = QDBusMessage::createMethodCall(
        QStringLiteral("org.freedesktop.FileManager1"), QStringLiteral("/org/freedesktop/FileManager1"),
        QStringLiteral("org.freedesktop.FileManager1"), QStringLiteral("ShowItems"));
    call << QStringList{QString::fromStdString(url.absoluteString())} << QString();
    auto* watcher =
        new QDBusPendingCallWatcher(QDBusConnection::sessionBus().asyncCall(call), QCoreApplication::instance());
    QObject::connect(watcher, &QDBusPendingCallWatcher::finished, watcher, [watcher, folder] {
        if (watcher->isError()) openFolder(folder);
        watcher->deleteLater();
    });
}

void openAccessSettings() {
    // Access to one's own files isn't granted program by program here. The desktop's page on privacy is the nearest.
    const std::array<std::pair<QString, QStringList>, 2> pages{{
        {QStringLiteral("gnome-control-center"), {QStringLiteral("privacy")}},
        {QStringLiteral("systemsettings"), {}},
    }};
    for (const auto& [program, arguments] : pages) {
        const QString found = QStandardPaths::findExecutable(program);
        if (found.isEmpty()) continue;
        (void)QProcess::startDetached(found, arguments);
        return;
    }
}

}  // namespace tavrin
