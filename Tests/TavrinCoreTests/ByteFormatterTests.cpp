#include "TavrinCore/Scanning/ByteCountText.h"
#include "TavrinCore/Scanning/ByteFormatter.h"
#include "TavrinCore/Strings.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <string>
#include <utility>
#include <vector>

namespace tavrin {
namespace {

constexpr std::int64_t kMiB = std::int64_t{1} << 20U;
constexpr std::int64_t kGiB = std::int64_t{1} << 30U;
const ByteWords kEnglish{"Zero KB", "byte", "bytes"};
const ByteWords kSpanish{"Cero KB", "byte", "bytes"};

std::string file(std::int64_t bytes) {
    return byteCountText(bytes, ByteSteps::decimal, NumberSigns::of(Language::english, "US"), kEnglish);
}
std::string memory(std::int64_t bytes) {
    return byteCountText(bytes, ByteSteps::binary, NumberSigns::of(Language::english, "US"), kEnglish);
}
std::string spanish(std::int64_t bytes, ByteSteps steps, const std::string& region) {
    return byteCountText(bytes, steps, NumberSigns::of(Language::spanish, region), kSpanish);
}

TEST(ByteFormatter, nothingIsZeroKBInWords) {
    EXPECT_EQ(file(0), "Zero KB");
    EXPECT_EQ(memory(0), "Zero KB");
    EXPECT_EQ(spanish(0, ByteSteps::decimal, "ES"), "Cero KB");
}

TEST(ByteFormatter, bytesAreCountedWhole) {
    EXPECT_EQ(file(1), "1 byte");
    EXPECT_EQ(file(2), "2 bytes");
    EXPECT_EQ(file(999), "999 bytes");
    EXPECT_EQ(spanish(1, ByteSteps::decimal, "ES"), "1 byte");
    EXPECT_EQ(spanish(999, ByteSteps::decimal, "ES"), "999 bytes");
}

TEST(ByteFormatter, eachUnitHasItsDecimalsAndDropsTrailingZeros) {
    const std::vector<std::pair<std::int64_t, std::string>> cases{
        {1'000, "1 KB"},
        {1'499, "1 KB"},
        {1'234'567, "1.2 MB"},
        {1'000'000, "1 MB"},
        {1'049'999, "1 MB"},
        {12'340'000'000, "12.34 GB"},
        {1'500'000'000, "1.5 GB"},
        {1'004'999'999, "1 GB"},
        {20'000'000'000, "20 GB"},
        {1'230'000'000'000, "1.23 TB"},
        {1'230'000'000'000'000, "1.23 PB"},
        {1'230'000'000'000'000'000, "1.23 EB"},
        {INT64_MAX, "9.22 EB"},
    };
    for (const auto& [bytes, text] : cases)
        EXPECT_EQ(file(bytes), text) << bytes;
}

TEST(ByteFormatter, halvesAreRoundedAwayFromZero) {
    const std::vector<std::pair<std::int64_t, std::string>> cases{
        {1'500, "2 KB"},
        {2'500, "3 KB"},
        {2'499, "2 KB"},
        {1'250'000, "1.3 MB"},
        {1'249'999, "1.2 MB"},
        {1'050'000, "1.1 MB"},
        {-1'250'000, "-1.3 MB"},
        {1'005'000'000, "1.01 GB"},
        {1'015'000'000'000'000'000, "1.02 EB"},
    };
    for (const auto& [bytes, text] : cases)
        EXPECT_EQ(file(bytes), text) << bytes;
}

TEST(ByteFormatter, whatRoundsUpToAThousandTakesTheNextUnit) {
    const std::vector<std::pair<std::int64_t, std::string>> cases{
        {999'499, "999 KB"},
        {999'500, "1 MB"},
        {999'949'999, "999.9 MB"},
        {999'950'000, "1 GB"},
        {999'994'999'999, "999.99 GB"},
        {999'995'000'000, "1 TB"},
        {999'994'999'999'999, "999.99 TB"},
        {999'995'000'000'000, "1 PB"},
        {999'994'999'999'999'999, "999.99 PB"},
        {999'995'000'000'000'000, "1 EB"},
    };
    for (const auto& [bytes, text] : cases)
        EXPECT_EQ(file(bytes), text) << bytes;
}

TEST(ByteFormatter, memoryStepsBy1024WithTheSameLetters) {
    const std::vector<std::pair<std::int64_t, std::string>> cases{
        {1'023, "1,023 bytes"},
        {1'024, "1 KB"},
        {1'535, "1 KB"},
        {1'536, "2 KB"},
        {900'000, "879 KB"},
        {1'048'063, "1,023 KB"},
        {1'048'064, "1 MB"},
        {1'048'575, "1 MB"},
        {kMiB, "1 MB"},
        {1'000 * kMiB, "1,000 MB"},
        {1'073'689'395, "1,023.9 MB"},
        {1'073'689'396, "1 GB"},
        {kGiB + kGiB / 2, "1.5 GB"},
        {16 * kGiB, "16 GB"},
        {1'024 * kGiB, "1 TB"},
        {INT64_MAX, "8 EB"},
    };
    for (const auto& [bytes, text] : cases)
        EXPECT_EQ(memory(bytes), text) << bytes;
}

TEST(ByteFormatter, theSignStandsInFront) {
    EXPECT_EQ(file(-1), "-1 byte");
    EXPECT_EQ(file(-999), "-999 bytes");
    EXPECT_EQ(file(-1'500), "-2 KB");
    EXPECT_EQ(file(INT64_MIN), "-9.22 EB");
    EXPECT_EQ(memory(INT64_MIN), "-8 EB");
}

TEST(ByteFormatter, theRegionDecidesHowNumbersAreWritten) {
    EXPECT_EQ(spanish(1'234'567, ByteSteps::decimal, "ES"), "1,2 MB");
    EXPECT_EQ(spanish(1'234'567, ByteSteps::decimal, "MX"), "1.2 MB");
    EXPECT_EQ(spanish(1'234'567, ByteSteps::decimal, "AR"), "1,2 MB");
    EXPECT_EQ(spanish(1'234'567, ByteSteps::decimal, ""), "1,2 MB");
    EXPECT_EQ(spanish(1'023, ByteSteps::binary, "MX"), "1,023 bytes");
    EXPECT_EQ(spanish(1'023, ByteSteps::binary, "ES"), "1.023 bytes");
}

TEST(ByteFormatter, aRegionOfAnotherLanguageKeepsItsSigns) {
    EXPECT_EQ(NumberSigns::of(Language::english, "").decimal, ".");
    EXPECT_EQ(NumberSigns::of(Language::english, "GB").decimal, ".");
    EXPECT_EQ(NumberSigns::of(Language::english, "DE").decimal, ",");
    EXPECT_EQ(NumberSigns::of(Language::english, "ES").decimal, ",");
    EXPECT_EQ(NumberSigns::of(Language::english, "FR").decimal, ",");
    EXPECT_EQ(NumberSigns::of(Language::spanish, "DE").decimal, ",");
    EXPECT_EQ(NumberSigns::of(Language::spanish, "GB").decimal, ".");
    EXPECT_EQ(NumberSigns::of(Language::spanish, "US").decimal, ".");
    EXPECT_EQ(NumberSigns::of(Language::english, "ZZ"), NumberSigns::of(Language::english, ""));
}

TEST(ByteFormatter, writesInTheRunningLanguage) {
    EXPECT_EQ(ByteFormatter::string(0), S::byteCountZero());
    EXPECT_EQ(ByteFormatter::string(2'000), "2 KB");
    EXPECT_EQ(ByteFormatter::memory(2'048), "2 KB");
    EXPECT_EQ(ByteFormatter::memory(900'000), "879 KB");
}

}  // namespace
}  // namespace tavrin
