// On a bus of the test's own, with a server of its own.
#include "Support/TestFolder.h"
#include "TavrinClean/Platform/Linux/SessionBus.h"
#include "TavrinClean/Platform/Notifier.h"
#include "TavrinCleanTests/Platform/Linux/PrivateBus.h"
#include "TavrinCore/Strings.h"

#include <gtest/gtest.h>

#include <QCoreApplication>
#include <QDBusArgument>
#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusVirtualObject>
#include <QDeadlineTimer>
#include <vector>

namespace tavrin::test {
namespace {

class Server final : public QDBusVirtualObject {
  public:
    std::vector<QVariantList> banners;

    [[nodiscard]] QString introspect(const QString&) const override { return {}; }
    bool handleMessage(const QDBusMessage& message, const QDBusConnection&) override {
        if (message.member() == QStringLiteral("Notify")) banners.push_back(message.arguments());
        return true;
    }
};

TEST(Notifier, withoutABusNothingHappens) {
    const TestFolder nothing;
    const ScopedVariable address("DBUS_SESSION_BUS_ADDRESS", nullptr);
    const ScopedVariable runtime("XDG_RUNTIME_DIR", nothing.path().c_str());
    EXPECT_FALSE(hasSessionBus());
    Notifier::requestAuthorization();
    Notifier::notify("title", "body");
}

TEST(Notifier, twoCleansGiveTwoBanners) {
    ASSERT_FALSE(PrivateBus::address().isEmpty());
    const ScopedVariable address("DBUS_SESSION_BUS_ADDRESS", PrivateBus::address().constData());
    // Nobody serves it yet: silent.
    Notifier::notify("nobody", "hears");

    Server server;
    QDBusConnection connection =
        QDBusConnection::connectToBus(QString::fromLatin1(PrivateBus::address()), QStringLiteral("server"));
    ASSERT_TRUE(connection.registerVirtualObject(QStringLiteral("/org/freedesktop/Notifications"), &server));
    ASSERT_TRUE(connection.registerService(QStringLiteral("org.freedesktop.Notifications")));
    Notifier::notify("first", "1 item · 5 KB");
    Notifier::notify("second", "a < b & c");
    QDeadlineTimer deadline(30'000);
    while (server.banners.size() < 2 && !deadline.hasExpired())
        QCoreApplication::processEvents(QEventLoop::AllEvents, 20);

    ASSERT_EQ(server.banners.size(), 2U);
    const QVariantList& first = server.banners[0];
    ASSERT_EQ(first.size(), 8);
    EXPECT_EQ(first[0].toString().toStdString(), S::appName);
    EXPECT_EQ(first[1].toUInt(), 0U);
    EXPECT_EQ(first[2].toString(), QStringLiteral("org.tavrin.Clean"));
    EXPECT_EQ(first[3].toString(), QStringLiteral("first"));
    EXPECT_EQ(first[4].toString(), QStringLiteral("1 item · 5 KB"));
    EXPECT_EQ(qdbus_cast<QVariantMap>(first[6]).value(QStringLiteral("desktop-entry")).toString(),
              QStringLiteral("org.tavrin.Clean"));
    EXPECT_EQ(first[7].toInt(), -1);
    EXPECT_EQ(server.banners[1][1].toUInt(), 0U);
    EXPECT_EQ(server.banners[1][4].toString(), QStringLiteral("a &lt; b &amp; c"));
    QDBusConnection::disconnectFromBus(QStringLiteral("server"));
}

}  // namespace
}  // namespace tavrin::test
