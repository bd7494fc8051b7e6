// A well-known name on the session bus, and the interface org.freedesktop.Application of the Desktop Entry
// Specification 1.5, which desktops use as well. Beyond the bus's reach, a lock on the folder of the history
// (flock(2)), which goes with the process that holds it, however that ends.
#include "TavrinClean/Platform/SingleInstance.h"

#include "SingleInstanceAdaptor.h"
#include "TavrinClean/Platform/Linux/ActivationToken.h"
#include "TavrinClean/Platform/Linux/SessionBus.h"
#include "TavrinClean/Platform/ProgramId.h"
#include "TavrinCore/Cleaning/HistoryStore.h"
#include "TavrinCore/Platform/Folders.h"

#include <fcntl.h>
#include <pwd.h>
#include <sys/file.h>
#include <unistd.h>

#include <QCryptographicHash>
#include <QDBusConnection>
#include <QDBusMessage>
#include <cerrno>
#include <optional>
#include <vector>

namespace tavrin {
namespace {

constexpr int answerTimeout = 3000;  // milliseconds

QString path() {
    return QStringLiteral("/org/tavrin/Clean");
}

// The home that the account has; empty where the database names none.
std::string homeOfAccount() {
    std::vector<char> buffer(std::size_t{16} * 1024);
    passwd entry{};
    passwd* found = nullptr;
    if (getpwuid_r(geteuid(), &entry, buffer.data(), buffer.size(), &found) != 0 || found == nullptr) return {};
    return URL::fromPath(found->pw_dir, true).path();
}

QString serviceName() {
    const std::string home = homeFolder().path();
    const QString name = programId.toString();
    if (home == homeOfAccount()) return name;
    const QByteArray hash = QCryptographicHash::hash(QByteArray::fromStdString(home), QCryptographicHash::Sha256);
    return name + QStringLiteral(".home") + QString::fromLatin1(hash.toHex().left(16));
}

// RequestName of the D-Bus specification. Nil where the bus doesn't answer.
std::optional<bool> ownsName(const QDBusConnection& bus, const QString& name) {
    constexpr quint32 doNotQueue = 4;
    constexpr quint32 primaryOwner = 1;
    constexpr quint32 alreadyOwner = 4;
    QDBusMessage request =
        QDBusMessage::createMethodCall(QStringLiteral("org.freedesktop.DBus"), QStringLiteral("/org/freedesktop/DBus"),
                                       QStringLiteral("org.freedesktop.DBus"), QStringLiteral("RequestName"));
    request << name << doNotQueue;
    const QDBusMessage reply = bus.call(request, QDBus::Block, answerTimeout);
    if (reply.type() != QDBusMessage::ReplyMessage || reply.arguments().isEmpty()) return std::nullopt;
    const quint32 answer = reply.arguments().constFirst().toUInt();
    return answer == primaryOwner || answer == alreadyOwner;
}

bool activate(const QDBusConnection& bus, const QString& name) {
    QDBusMessage call = QDBusMessage::createMethodCall(name, path(), QStringLiteral("org.freedesktop.Application"),
                                                       QStringLiteral("Activate"));
    call << activationOfThisStart();
    return bus.call(call, QDBus::Block, answerTimeout).type() == QDBusMessage::ReplyMessage;
}

}  // namespace

SingleInstance::SingleInstance(QObject* parent) : QObject(parent) {
    new SingleInstanceAdaptor(this);
}

SingleInstance::~SingleInstance() {
    if (historyFolder_ >= 0) ::close(historyFolder_);
}

SingleInstance::Start SingleInstance::claim() {
    const Start start = claimName();
    return start == Start::first && !claimHistory() ? Start::otherIsStuck : start;
}

SingleInstance::Start SingleInstance::claimName() {
    if (!hasSessionBus()) return Start::first;
    QDBusConnection bus = QDBusConnection::sessionBus();
    // Before the name: who finds the name must find somebody behind it.
    bus.registerObject(path(), this);
    const QString name = serviceName();
    if (ownsName(bus, name).value_or(true)) return Start::first;
    bus.unregisterObject(path());
    return activate(bus, name) ? Start::handedOver : Start::otherIsStuck;
}

/// False only when somebody else holds it: a disk that knows no locks must not keep anybody out.
bool SingleInstance::claimHistory() {
    const std::string folder = HistoryStore().fileURL().deletingLastPathComponent().path();
    historyFolder_ = ::open(folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    return historyFolder_ < 0 || ::flock(historyFolder_, LOCK_EX | LOCK_NB) == 0 || errno != EWOULDBLOCK;
}

}  // namespace tavrin
