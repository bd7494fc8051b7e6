#include "TavrinCore/Scanning/TextCase.h"

#include <gtest/gtest.h>
#include <unicode/locid.h>
#include <unicode/uchar.h>
#include <unicode/unistr.h>

#include <string>

namespace tavrin {
namespace {

using namespace std::string_literals;

TEST(Lowercased, asciiChangesItsCapitalsAlone) {
    std::string all;
    std::string expected;
    for (int c = 0; c < 128; ++c) {
        all.push_back(static_cast<char>(c));
        expected.push_back(static_cast<char>(c >= 'A' && c <= 'Z' ? c + 32 : c));
    }
    EXPECT_EQ(lowercased(all), expected);
    EXPECT_EQ(lowercased(""), "");
}

TEST(Lowercased, everyCharacterFollowsTheUnicodeTablesInAnyLanguage) {
    for (UChar32 character = 0; character <= 0x10FFFF; ++character) {
        if (U_IS_SURROGATE(character)) continue;
        std::string text;
        icu::UnicodeString(character).toUTF8String(text);
        std::string expected;
        icu::UnicodeString(character).toLower(icu::Locale::getRoot()).toUTF8String(expected);
        ASSERT_EQ(lowercased(text), expected) << std::hex << character;
    }
}

TEST(Lowercased, accentsAndOtherScriptsFollow) {
    EXPECT_EQ(lowercased("CAFÉ Ñandú"), "café ñandú");
    EXPECT_EQ(lowercased("ЯНДЕКС"), "яндекс");
    EXPECT_EQ(lowercased("İ"), "i\u0307");
    EXPECT_EQ(lowercased("日本"), "日本");
}

TEST(Lowercased, whatBeginsAlikeBeginsAlikeInLowerCase) {
    EXPECT_EQ(lowercased("ΟΔΟΣ"), "οδοσ");
    EXPECT_TRUE(lowercased("ΟΔΟΣ.x").starts_with(lowercased("ΟΔΟΣ")));
}

TEST(Lowercased, bytesThatAreNoUTF8Survive) {
    EXPECT_EQ(lowercased("A\xFFÉ\xC3"), "a\xFFé\xC3");
    EXPECT_EQ(lowercased("\xC3Q"), "\xC3q");
    EXPECT_EQ(lowercased("\xED\xA0\x80Q"), "\xED\xA0\x80q");
    EXPECT_EQ(lowercased("A\0É"s), "a\0é"s);
    EXPECT_NE(lowercased("A\xFF"), lowercased("A\xFE"));
}

TEST(Trimmed, whiteSpaceOfAnyKindGoesFromBothEndsAndStaysWithin) {
    EXPECT_EQ(trimmed(" \t\n\r\f\v"), "");
    EXPECT_EQ(trimmed(""), "");
    EXPECT_EQ(trimmed("a"), "a");
    EXPECT_EQ(trimmed(" a b "), "a b");
    EXPECT_EQ(trimmed("\u00A0\u3000a\u2003é\u2028\u0085"), "a\u2003é");
    EXPECT_EQ(trimmed(" \xFF "), "\xFF");
}

TEST(ComparisonForm, composedAndDecomposedAccentsAreTheSame) {
    EXPECT_EQ(comparisonForm("CAFE\u0301"), comparisonForm("café"));
    EXPECT_NE(comparisonForm("cafe"), comparisonForm("café"));
    EXPECT_EQ(comparisonForm("Plain.ASCII"), "plain.ascii");
}

TEST(ComparisonForm, bytesThatAreNoUTF8Survive) {
    EXPECT_EQ(comparisonForm("CAFÉ\xFF"), "café\xFF");
}

TEST(LettersAndDigits, keepsThoseOfAnyScript) {
    EXPECT_EQ(lettersAndDigits("foo helper-2_x!"), "foohelper2x");
    EXPECT_EQ(lettersAndDigits("ñandú 日本 ٣"), "ñandú日本٣");
    EXPECT_EQ(lettersAndDigits("\xFF-. "), "");
}

}  // namespace
}  // namespace tavrin
