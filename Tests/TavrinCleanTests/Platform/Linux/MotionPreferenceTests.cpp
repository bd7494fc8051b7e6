// On a bus of the test's own, with a portal of its own.
#include "Support/TestFolder.h"
#include "TavrinClean/Platform/MotionPreference.h"
#include "TavrinCleanTests/Platform/Linux/PrivateBus.h"

#include <gtest/gtest.h>

#include <QCoreApplication>
#include <QDBusArgument>
#include <QDBusConnection>
#include <QDBusConnectionInterface>
#include <QDBusMessage>
#include <QDBusMetaType>
#include <QDBusVariant>
#include <QDBusVirtualObject>
#include <QDeadlineTimer>
#include <QMap>
#include <functional>

namespace tavrin::test {
namespace {

using Settings = QMap<QString, QVariantMap>;

const QString path = QStringLiteral("/org/freedesktop/portal/desktop");
const QString interface = QStringLiteral("org.freedesktop.portal.Settings");

class Portal final : public QDBusVirtualObject {
  public:
    Settings settings;
    QStringList asked;

    [[nodiscard]] QString introspect(const QString&) const override { return {}; }
    bool handleMessage(const QDBusMessage& message, const QDBusConnection& bus) override {
        if (message.interface() != interface || message.member() != QStringLiteral("ReadAll")) return false;
        asked = message.arguments().constFirst().toStringList();
        return bus.send(message.createReply(QVariant::fromValue(settings)));
    }
};

class Motion : public testing::Test {
  protected:
    Motion() : address_("DBUS_SESSION_BUS_ADDRESS", PrivateBus::address().constData()) {
        qDBusRegisterMetaType<Settings>();
        EXPECT_TRUE(bus_.isConnected());
        EXPECT_TRUE(bus_.registerVirtualObject(path, &portal));
    }
    ~Motion() override { QDBusConnection::disconnectFromBus(QStringLiteral("portal")); }

    void serve() { ASSERT_TRUE(bus_.registerService(QStringLiteral("org.freedesktop.portal.Desktop"))); }

    void change(const char* space, const char* key, const QVariant& value) {
        QDBusMessage signal = QDBusMessage::createSignal(path, interface, QStringLiteral("SettingChanged"));
        signal << QString::fromLatin1(space) << QString::fromLatin1(key) << QVariant::fromValue(QDBusVariant(value));
        ASSERT_TRUE(bus_.send(signal));
    }

    [[nodiscard]] static bool comes(const std::function<bool()>& isTrue) {
        const QDeadlineTimer deadline(30'000);
        while (!isTrue() && !deadline.hasExpired())
            QCoreApplication::processEvents(QEventLoop::AllEvents, 20);
        return isTrue();
    }

    Portal portal;

  private:
    ScopedVariable address_;
    QDBusConnection bus_ =
        QDBusConnection::connectToBus(QString::fromLatin1(PrivateBus::address()), QStringLiteral("portal"));
};

TEST(MotionWithoutABus, isAsUsual) {
    const TestFolder nothing;
    const ScopedVariable address("DBUS_SESSION_BUS_ADDRESS", nullptr);
    const ScopedVariable runtime("XDG_RUNTIME_DIR", nothing.path().c_str());
    const MotionPreference motion;
    QCoreApplication::processEvents();
    EXPECT_FALSE(motion.isReduced());
}

TEST_F(Motion, isAsUsualUntilSomebodySaysOtherwise) {
    const MotionPreference motion;
    EXPECT_FALSE(motion.isReduced());
    // Nobody serves the portal yet. Who comes later is heard, once the bus knows that somebody listens.
    (void)QDBusConnection::sessionBus().interface()->isServiceRegistered(QStringLiteral("org.freedesktop.DBus"));
    serve();
    change("org.freedesktop.appearance", "reduced-motion", 1U);
    EXPECT_TRUE(comes([&] { return motion.isReduced(); }));
}

TEST_F(Motion, isReducedWhereTheDesktopSaysSo) {
    const Settings saying[]{
        {{QStringLiteral("org.freedesktop.appearance"), {{QStringLiteral("reduced-motion"), 1U}}}},
        {{QStringLiteral("org.gnome.desktop.interface"), {{QStringLiteral("enable-animations"), false}}}},
        {{QStringLiteral("org.kde.kdeglobals.KDE"),
          {{QStringLiteral("AnimationDurationFactor"), QStringLiteral("0")}}}},
    };
    serve();
    for (const Settings& settings : saying) {
        portal.settings = settings;
        const MotionPreference motion;
        EXPECT_TRUE(comes([&] { return motion.isReduced(); })) << settings.firstKey().toStdString();
        EXPECT_TRUE(portal.asked.contains(settings.firstKey()));
    }
}

TEST_F(Motion, followsTheDesktopAndHearsNothingElse) {
    portal.settings = {
        {QStringLiteral("org.gnome.desktop.interface"),
         {{QStringLiteral("enable-animations"), true}, {QStringLiteral("font-name"), QStringLiteral("0")}}},
        {QStringLiteral("org.kde.kdeglobals.KDE"),
         {{QStringLiteral("AnimationDurationFactor"), QStringLiteral("0.5")}}},
        {QStringLiteral("org.freedesktop.appearance"), {{QStringLiteral("reduced-motion"), 0U}}},
    };
    serve();
    const MotionPreference motion;
    QList<bool> told;
    QObject::connect(&motion, &MotionPreference::reducedChanged, &portal, [&told](bool reduced) { told << reduced; });
    ASSERT_TRUE(comes([&] { return !portal.asked.isEmpty(); }));

    change("org.gnome.desktop.interface", "cursor-blink", false);
    change("org.gnome.desktop.interface", "enable-animations", false);
    ASSERT_TRUE(comes([&] { return told.size() == 1; }));
    // One of them is enough.
    change("org.freedesktop.appearance", "reduced-motion", 1U);
    change("org.gnome.desktop.interface", "enable-animations", true);
    change("org.freedesktop.appearance", "reduced-motion", 0U);
    ASSERT_TRUE(comes([&] { return told.size() == 2; }));
    EXPECT_EQ(told, (QList<bool>{true, false}));
}

}  // namespace
}  // namespace tavrin::test
