// What one process reads, from its first message on. TAVRIN_EXPECTED_LANGUAGE says which language that must be.
#include "Support/TestFolder.h"
#include "TavrinCore/Platform/Locale.h"
#include "TavrinCore/Platform/SystemError.h"
#include "TavrinCore/Scanning/ByteFormatter.h"
#include "TavrinCore/Scanning/DateText.h"
#include "TavrinCore/Strings.h"

#include <gtest/gtest.h>

#include <cerrno>
#include <cstdlib>
#include <latch>
#include <set>
#include <stdexcept>
#include <string>
#include <string_view>
#include <thread>
#include <vector>

namespace tavrin {
namespace {

Language expectedLanguage() {
    const char* value = std::getenv("TAVRIN_EXPECTED_LANGUAGE");
    const std::string_view name = value != nullptr ? value : "";
    if (name == "spanish") return Language::spanish;
    if (name == "english") return Language::english;
    throw std::runtime_error("TAVRIN_EXPECTED_LANGUAGE must be english or spanish");
}

/// Each key as it is read in the program, in the order of the table.
constexpr const std::string& (*kKeys[])() = {
#define TAVRIN_MESSAGE(key, english, spanish) &S::key,
#include "TavrinCore/Strings/Messages.def"
#undef TAVRIN_MESSAGE
};

struct FirstRead {
    std::vector<const std::string*> messages;
    std::string built;
    std::string size;
};

FirstRead readEverything() {
    FirstRead read;
    for (const auto key : kKeys)
        read.messages.push_back(&key());
    read.built = S::countItems(2);
    read.size = ByteFormatter::string(0);
    return read;
}

// Stands first, so that these are the first reads of the process.
TEST(RunningLanguage, concurrentFirstReadsFindOneStoredConstantForEachKey) {
    constexpr int threads = 8;
    std::latch start(threads);
    std::vector<FirstRead> reads(threads);
    {
        std::vector<std::jthread> readers;
        for (FirstRead& read : reads) {
            readers.emplace_back([&start, &read] {
                start.arrive_and_wait();
                read = readEverything();
            });
        }
    }
    for (const FirstRead& read : reads) {
        EXPECT_EQ(read.messages, reads.front().messages);
        EXPECT_EQ(read.built, reads.front().built);
        EXPECT_EQ(read.size, reads.front().size);
    }
}

TEST(RunningLanguage, everyKeyGivesItsTextInThisLanguage) {
    const auto rows = S::staticMessages();
    ASSERT_EQ(rows.size(), std::size(kKeys));
    for (std::size_t i = 0; i < rows.size(); ++i)
        EXPECT_EQ(kKeys[i](), rows[i].in(expectedLanguage())) << rows[i].key;
    EXPECT_EQ(S::useEnglish(), expectedLanguage() == Language::english);
    EXPECT_EQ(S::navHistory(), expectedLanguage() == Language::english ? "History" : "Historial");
}

TEST(RunningLanguage, builtMessagesAndSystemTextsFollowIt) {
    const bool english = expectedLanguage() == Language::english;
    EXPECT_EQ(S::countItems(1), english ? "1 item" : "1 elemento(s)");
    EXPECT_EQ(ByteFormatter::string(0), english ? "Zero KB" : "Cero KB");
    EXPECT_EQ(S::legacyOutlookName(), english ? "Outlook (legacy)" : "Outlook (antiguo)");
    const Date newYear = Date::fromUnix(1'704'110'400);
    EXPECT_EQ(dateText(newYear), dateText(newYear, {expectedLanguage(), preferredRegion(RegionOf::dates), {}}));
    EXPECT_NE(dateText(newYear).find(english ? "Jan" : "ene"), std::string::npos) << dateText(newYear);
    const SystemError error = SystemError::posix(EROFS);
    EXPECT_EQ(error.localizedDescription, english ? "The disk is read-only." : "El disco es de solo lectura.");
    EXPECT_EQ(error.systemText, "Read-only file system");
}

TEST(RunningLanguage, thePrivacyPolicyIsThePageOfThisLanguage) {
    const bool english = expectedLanguage() == Language::english;
    EXPECT_TRUE(S::privacyPolicyURL().starts_with("https://"));
    EXPECT_TRUE(S::privacyPolicyURL().ends_with(english ? "/clean-privacy" : "/clean-privacidad"));
}

TEST(RunningLanguage, staysWhenTheUsersSettingsChange) {
    const std::string before = S::scanDone();
    const bool english = S::useEnglish();
    const test::ScopedVariable locale("LC_ALL", english ? "es_ES.UTF-8" : "en_US.UTF-8");
    const test::ScopedVariable language("LANGUAGE", english ? "es" : "en");
    EXPECT_EQ(S::useEnglish(), english);
    EXPECT_EQ(S::scanDone(), before);
    EXPECT_EQ(S::countItems(2), S::countItems.in(english ? Language::english : Language::spanish, 2));
}

}  // namespace
}  // namespace tavrin
