#include "Support/TestFolder.h"
#include "TavrinClean/Kit/AppConsent.h"

#include <gtest/gtest.h>

#include <QSettings>
#include <QSignalSpy>
#include <fstream>

namespace tavrin::test {
namespace {

struct Consent : testing::Test {
    TestFolder folder;
    const URL file = folder / "config/settings.ini";

    [[nodiscard]] QString path() const { return QString::fromStdString(file.path()); }
    void write(std::string_view contents) const { (void)folder.file("config/settings.ini", contents); }
    [[nodiscard]] bool accepted() const { return AppConsent(path()).accepted(); }
};

TEST_F(Consent, isAskedForAtTheFirstStart) {
    EXPECT_FALSE(accepted());
    EXPECT_FALSE(somethingAt(file));
}

TEST_F(Consent, isRememberedWithItsVersionAndItsDate) {
    AppConsent consent(path());
    const QSignalSpy changes(&consent, &AppConsent::acceptedChanged);
    consent.accept();
    EXPECT_TRUE(consent.accepted());
    EXPECT_EQ(changes.count(), 1);
    EXPECT_TRUE(accepted());
    const QSettings settings(path(), QSettings::IniFormat);
    EXPECT_EQ(settings.value(QStringLiteral("consentAcceptedVersion")).toInt(), 1);
    EXPECT_TRUE(settings.value(QStringLiteral("consentAcceptedDate")).toDateTime().isValid());
}

TEST_F(Consent, ofALaterVersionHoldsToo) {
    write("[General]\nconsentAcceptedVersion=2\n");
    EXPECT_TRUE(accepted());
}

TEST_F(Consent, ofAnEarlierVersionIsAskedForAgain) {
    write("[General]\nconsentAcceptedVersion=0\n");
    EXPECT_FALSE(accepted());
}

TEST_F(Consent, isAskedForAgainWhenTheFileIsDamaged) {
    for (const std::string_view damage :
         {std::string_view("\x00\x01\xFF[[[=\n", 8), std::string_view("[General]\nconsentAcceptedVersion=1x\n"),
          std::string_view("[General]\nconsentAcceptedVersion=\n"), std::string_view("consentAcceptedVersion"),
          std::string_view("[General]\nconsentAcceptedVersion=99999999999999999999\n"),
          std::string_view("[General]\nconsentAcceptedVersion=1, 2\n"),
          std::string_view("[General]\nconsentAcceptedVersion=@Variant(\\0\\0)\n")}) {
        write(damage);
        EXPECT_FALSE(accepted()) << damage;
        AppConsent(path()).accept();
        EXPECT_TRUE(accepted()) << damage;
    }
}

TEST_F(Consent, aFileThatCannotBeWrittenAsksAgainAtTheNextStartOnly) {
    (void)folder.folder("config/settings.ini/occupied");
    AppConsent consent(path());
    EXPECT_FALSE(consent.accepted());
    consent.accept();
    EXPECT_TRUE(consent.accepted());
    EXPECT_FALSE(accepted());
}

TEST_F(Consent, otherSettingsStayAsTheyAre) {
    write("[General]\nreminderFrequency=weekly\n");
    AppConsent(path()).accept();
    EXPECT_EQ(QSettings(path(), QSettings::IniFormat).value(QStringLiteral("reminderFrequency")).toString(),
              QStringLiteral("weekly"));
}

TEST(ConsentFile, liesInTheUsersConfiguration) {
    const TestFolder folder;
    const ScopedVariable config("XDG_CONFIG_HOME", folder.path().c_str());
    EXPECT_EQ(AppConsent::defaultSettingsFile().toStdString(), folder.path() + "/tavrin-clean/settings.ini");
}

}  // namespace
}  // namespace tavrin::test
