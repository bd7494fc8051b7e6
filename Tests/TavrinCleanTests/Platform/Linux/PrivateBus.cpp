#include "TavrinCleanTests/Platform/Linux/PrivateBus.h"

#include <QCoreApplication>

namespace tavrin::test {

PrivateBus::PrivateBus() {
    daemon_.start(QStringLiteral("dbus-daemon"),
                  {QStringLiteral("--session"), QStringLiteral("--nofork"), QStringLiteral("--print-address=1")});
    if (daemon_.waitForReadyRead(30'000)) address_ = daemon_.readLine().trimmed();
}

PrivateBus::~PrivateBus() {
    daemon_.terminate();
    daemon_.waitForFinished();
}

const QByteArray& PrivateBus::address() {
    static const PrivateBus* bus = nullptr;
    if (bus == nullptr) {
        bus = new PrivateBus;
        qAddPostRoutine([] { delete bus; });
    }
    return bus->address_;
}

}  // namespace tavrin::test
