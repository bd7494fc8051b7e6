#include "Support/TestFolder.h"
#include "TavrinCore/Platform/Locale.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace tavrin {
namespace {

using test::ScopedVariable;
using Tags = std::vector<std::string>;

/// An environment that says nothing of language, to be filled in by each test.
class PreferredLanguages : public testing::Test {
    ScopedVariable language_{"LANGUAGE", nullptr};
    ScopedVariable all_{"LC_ALL", nullptr};
    ScopedVariable messages_{"LC_MESSAGES", nullptr};
    ScopedVariable numeric_{"LC_NUMERIC", nullptr};
    ScopedVariable time_{"LC_TIME", nullptr};
    ScopedVariable lang_{"LANG", nullptr};
};
using PreferredRegion = PreferredLanguages;

TEST_F(PreferredLanguages, areNoneWhereNothingIsSet) {
    EXPECT_EQ(preferredLanguages(), Tags{});
    const ScopedVariable language("LANGUAGE", "");
    const ScopedVariable lang("LANG", "");
    EXPECT_EQ(preferredLanguages(), Tags{});
}

TEST_F(PreferredLanguages, aLocaleNameBecomesATag) {
    for (const auto& [name, tag] : std::vector<std::pair<const char*, std::string>>{{"es_ES.UTF-8", "es-ES"},
                                                                                    {"es_ES@euro", "es-ES"},
                                                                                    {"es", "es"},
                                                                                    {"es_419", "es-419"},
                                                                                    {"ES_mx", "ES-mx"},
                                                                                    {"sr_RS.UTF-8@latin", "sr-RS"}}) {
        const ScopedVariable lang("LANG", name);
        EXPECT_EQ(preferredLanguages(), Tags{tag}) << name;
    }
}

TEST_F(PreferredLanguages, theListOfLanguagesComesBeforeTheLocale) {
    const ScopedVariable language("LANGUAGE", "es_MX:es:en");
    const ScopedVariable lang("LANG", "fr_FR.UTF-8");
    EXPECT_EQ(preferredLanguages(), (Tags{"es-MX", "es", "en", "fr-FR"}));
}

TEST_F(PreferredLanguages, emptyEntriesOfTheListAreSkipped) {
    const ScopedVariable language("LANGUAGE", "::es::en:");
    EXPECT_EQ(preferredLanguages(), (Tags{"es", "en"}));
}

TEST_F(PreferredLanguages, theFirstLocaleThatIsSetHidesTheOthers) {
    const ScopedVariable lang("LANG", "fr_FR.UTF-8");
    EXPECT_EQ(preferredLanguages(), Tags{"fr-FR"});
    const ScopedVariable messages("LC_MESSAGES", "de_DE.UTF-8");
    EXPECT_EQ(preferredLanguages(), Tags{"de-DE"});
    const ScopedVariable all("LC_ALL", "es_ES.UTF-8");
    EXPECT_EQ(preferredLanguages(), Tags{"es-ES"});
    const ScopedVariable emptied("LC_ALL", "");
    EXPECT_EQ(preferredLanguages(), Tags{"de-DE"});
}

TEST_F(PreferredLanguages, whoAsksForNoTranslationHasNone) {
    const ScopedVariable language("LANGUAGE", "es");
    const ScopedVariable lang("LANG", "es_ES.UTF-8");
    for (const char* name : {"C", "POSIX"}) {
        const ScopedVariable all("LC_ALL", name);
        EXPECT_EQ(preferredLanguages(), Tags{}) << name;
    }
}

TEST_F(PreferredLanguages, theListEndsWhereItAsksForNoTranslation) {
    const ScopedVariable lang("LANG", "es_ES.UTF-8");
    const ScopedVariable language("LANGUAGE", "en:C:fr");
    EXPECT_EQ(preferredLanguages(), Tags{"en"});
    const ScopedVariable none("LANGUAGE", "C");
    EXPECT_EQ(preferredLanguages(), Tags{});
}

TEST_F(PreferredLanguages, aLocaleOfCharactersAloneNamesNoLanguage) {
    const ScopedVariable lang("LANG", "C.UTF-8");
    EXPECT_EQ(preferredLanguages(), Tags{});
    const ScopedVariable language("LANGUAGE", "es");
    EXPECT_EQ(preferredLanguages(), Tags{"es"});
}

TEST_F(PreferredRegion, isThatOfTheLocaleOfNumbers) {
    EXPECT_EQ(preferredRegion(RegionOf::numbers), "");
    const ScopedVariable lang("LANG", "en_GB.UTF-8");
    EXPECT_EQ(preferredRegion(RegionOf::numbers), "GB");
    const ScopedVariable numeric("LC_NUMERIC", "es_ES.UTF-8");
    EXPECT_EQ(preferredRegion(RegionOf::numbers), "ES");
    const ScopedVariable all("LC_ALL", "es_mx");
    EXPECT_EQ(preferredRegion(RegionOf::numbers), "MX");
}

TEST_F(PreferredRegion, isThatOfTheFirstLanguageWhereTheLocaleNamesNone) {
    const ScopedVariable language("LANGUAGE", "es_AR:en_US");
    const ScopedVariable lang("LANG", "C.UTF-8");
    EXPECT_EQ(preferredRegion(RegionOf::numbers), "AR");
    const ScopedVariable bare("LANGUAGE", "es_419");
    EXPECT_EQ(preferredRegion(RegionOf::numbers), "");
}

TEST_F(PreferredRegion, ofDatesIsThatOfTheLocaleOfTimes) {
    const ScopedVariable lang("LANG", "en_US.UTF-8");
    EXPECT_EQ(preferredRegion(RegionOf::dates), "US");
    const ScopedVariable numeric("LC_NUMERIC", "es_ES.UTF-8");
    EXPECT_EQ(preferredRegion(RegionOf::dates), "US") << "numbers are another matter";
    const ScopedVariable time("LC_TIME", "en_GB.UTF-8");
    EXPECT_EQ(preferredRegion(RegionOf::dates), "GB");
    EXPECT_EQ(preferredRegion(RegionOf::numbers), "ES");
    const ScopedVariable all("LC_ALL", "es_MX.UTF-8");
    EXPECT_EQ(preferredRegion(RegionOf::dates), "MX");
}

}  // namespace
}  // namespace tavrin
