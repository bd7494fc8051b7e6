#include "TavrinClean/Platform/Linux/ActivationToken.h"

#include <gtest/gtest.h>

#include <QString>
#include <QtGlobal>

namespace tavrin {
namespace {

constexpr const char* token = "XDG_ACTIVATION_TOKEN";
constexpr const char* startup = "DESKTOP_STARTUP_ID";

class ActivationToken : public testing::Test {
  protected:
    void SetUp() override { clear(); }
    void TearDown() override { clear(); }

    static void clear() {
        qunsetenv(token);
        qunsetenv(startup);
    }
};

TEST_F(ActivationToken, aStartWithoutOneHandsNothingOver) {
    EXPECT_TRUE(activationOfThisStart().isEmpty());
    takeActivation({});
    EXPECT_FALSE(qEnvironmentVariableIsSet(token));
}

TEST_F(ActivationToken, whatTheLauncherGaveReachesTheOtherProcess) {
    qputenv(token, "one");
    qputenv(startup, "two");
    const QVariantMap data = activationOfThisStart();
    EXPECT_EQ(data.value(QStringLiteral("activation-token")).toString(), QStringLiteral("one"));
    EXPECT_EQ(data.value(QStringLiteral("desktop-startup-id")).toString(), QStringLiteral("two"));
    clear();
    takeActivation(data);
    EXPECT_EQ(qEnvironmentVariable(token), QStringLiteral("one"));
}

TEST_F(ActivationToken, theOlderOneServesWhereThereIsNoOther) {
    takeActivation({{QStringLiteral("desktop-startup-id"), QStringLiteral("two")}});
    EXPECT_EQ(qEnvironmentVariable(token), QStringLiteral("two"));
}

TEST_F(ActivationToken, whatIsNoTextIsNoRight) {
    takeActivation({{QStringLiteral("activation-token"), QVariantMap()}});
    EXPECT_FALSE(qEnvironmentVariableIsSet(token));
}

}  // namespace
}  // namespace tavrin
