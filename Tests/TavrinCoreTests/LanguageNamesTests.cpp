#include "TavrinCore/Scanning/LanguageNames.h"

#include <gtest/gtest.h>

#include <array>
#include <string>
#include <utility>

namespace tavrin {
namespace {

using enum Language;

TEST(LanguageCode, writesDashesAndKnowsTheOldNames) {
    EXPECT_EQ(languageCode("pt_BR"), "pt-BR");
    EXPECT_EQ(languageCode("zh-Hans"), "zh-Hans");
    EXPECT_EQ(languageCode("German"), "de");
    EXPECT_EQ(languageCode("TRADITIONALCHINESE"), "zh-Hant");
    EXPECT_EQ(languageCode("Klingon"), "Klingon");
    EXPECT_EQ(languageCode(""), "");
}

TEST(LanguageCode, everyOldNameHasItsCode) {
    constexpr std::array<std::pair<const char*, const char*>, 27> names{{
        {"english", "en"},
        {"spanish", "es"},
        {"french", "fr"},
        {"german", "de"},
        {"italian", "it"},
        {"dutch", "nl"},
        {"japanese", "ja"},
        {"korean", "ko"},
        {"portuguese", "pt"},
        {"russian", "ru"},
        {"swedish", "sv"},
        {"danish", "da"},
        {"norwegian", "nb"},
        {"finnish", "fi"},
        {"polish", "pl"},
        {"turkish", "tr"},
        {"arabic", "ar"},
        {"hebrew", "he"},
        {"greek", "el"},
        {"czech", "cs"},
        {"hungarian", "hu"},
        {"thai", "th"},
        {"ukrainian", "uk"},
        {"catalan", "ca"},
        {"chinese", "zh"},
        {"traditionalchinese", "zh-Hant"},
        {"simplifiedchinese", "zh-Hans"},
    }};
    for (const auto& [name, code] : names)
        EXPECT_EQ(languageCode(name), code) << name;
}

TEST(LanguageName, isInTheLanguageAskedForWithACapital) {
    EXPECT_EQ(languageName("de", english), "German");
    EXPECT_EQ(languageName("de", spanish), "Alem\u00e1n");
    EXPECT_EQ(languageName("en", spanish), "Ingl\u00e9s");
    EXPECT_EQ(languageName("el", spanish), "Griego");
}

TEST(LanguageName, isTheSameForACodeAndItsOldName) {
    EXPECT_EQ(languageName("English", english), languageName("en", english));
    EXPECT_EQ(languageName("SimplifiedChinese", spanish), languageName("zh_Hans", spanish));
}

TEST(LanguageName, tellsRegionsAndScripts) {
    EXPECT_EQ(languageName("pt_BR", english), "Portuguese (Brazil)");
    EXPECT_EQ(languageName("pt-BR", spanish), "Portugu\u00e9s (Brasil)");
    EXPECT_EQ(languageName("zh-Hant", english), "Chinese (Traditional)");
    EXPECT_EQ(languageName("es-419", spanish), "Espa\u00f1ol (Latinoam\u00e9rica)");
}

TEST(LanguageName, isTheLanguagesOwnWhereItsRegionIsUnknown) {
    EXPECT_EQ(languageName("de-XX", english), "German");
}

TEST(LanguageName, isTheCodeAsItStandsWhereNobodyKnowsIt) {
    for (const char* code :
         {"xx", "xx-YY", "xx_yy", "Testing", "localizable", "my stuff", "", "-", "_x", "@", "\xff\xfe"}) {
        EXPECT_EQ(languageName(code, english), code);
        EXPECT_EQ(languageName(code, spanish), code);
    }
    const std::string longest(249, 'q');
    EXPECT_EQ(languageName(longest, english), longest);
}

}  // namespace
}  // namespace tavrin
