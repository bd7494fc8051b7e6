#include "TavrinCore/Scanning/ByteFormatter.h"

#include "TavrinCore/Platform/Locale.h"
#include "TavrinCore/Scanning/ByteCountText.h"
#include "TavrinCore/Strings.h"

#include <unicode/dcfmtsym.h>
#include <unicode/locid.h>
#include <unicode/unistr.h>

#include <array>

namespace tavrin {
namespace {

struct Unit {
    std::string_view letters;
    int decimals;
};
constexpr std::array<Unit, 6> kUnits{{{"KB", 0}, {"MB", 1}, {"GB", 2}, {"TB", 2}, {"PB", 2}, {"EB", 2}}};

/// The words are English or Spanish, and both write Latin digits whatever the region.
icu::Locale localeOf(const std::string& language, const std::string& region) {
    icu::Locale locale(language.c_str(), region.c_str());
    UErrorCode status = U_ZERO_ERROR;
    locale.setKeywordValue("numbers", "latn", status);
    return locale;
}

/// Whether ICU knows how numbers are written in just this language and region.
bool isKnown(const icu::Locale& locale) {
    UErrorCode status = U_ZERO_ERROR;
    const icu::DecimalFormatSymbols symbols(locale, status);
    const icu::Locale valid = symbols.getLocale(ULOC_VALID_LOCALE, status);
    return U_SUCCESS(status) != 0 && std::string_view(valid.getCountry()) == locale.getCountry();
}

/// "DE" has "de".
std::string languageOf(const std::string& region) {
    icu::Locale likely("und", region.c_str());
    UErrorCode status = U_ZERO_ERROR;
    likely.addLikelySubtags(status);
    return U_SUCCESS(status) != 0 ? likely.getLanguage() : "";
}

std::string symbol(const icu::DecimalFormatSymbols& symbols, icu::DecimalFormatSymbols::ENumberFormatSymbol which) {
    std::string text;
    symbols.getConstSymbol(which).toUTF8String(text);
    return text;
}

/// `magnitude` in `unit`s with this many decimals, as one whole number: 1.25 with two decimals is 125. Halves go up.
std::uint64_t scaled(std::uint64_t magnitude, std::uint64_t unit, int decimals) {
    std::uint64_t whole = magnitude / unit;
    std::uint64_t rest = magnitude % unit;  // below 2^60, so ten times it is no overflow
    for (int i = 0; i < decimals; ++i) {
        rest *= 10;
        whole = whole * 10 + rest / unit;
        rest %= unit;
    }
    return rest >= unit - rest ? whole + 1 : whole;
}

/// `whole` is below 10,000: the counts of a unit end at 1,023.
std::string grouped(std::uint64_t whole, const NumberSigns& signs) {
    std::string digits = std::to_string(whole);
    if (digits.size() == 4) digits.insert(1, signs.grouping);
    return digits;
}

std::string number(std::uint64_t value, int decimals, const NumberSigns& signs) {
    std::uint64_t power = 1;
    for (int i = 0; i < decimals; ++i)
        power *= 10;
    std::string text = grouped(value / power, signs);
    std::string fraction = std::to_string(power + value % power).substr(1);
    fraction.erase(fraction.find_last_not_of('0') + 1);
    return fraction.empty() ? text : text + signs.decimal + fraction;
}

std::string magnitudeText(std::uint64_t magnitude, std::uint64_t step, const NumberSigns& signs,
                          const ByteWords& words) {
    if (magnitude < step) {
        return grouped(magnitude, signs).append(" ").append(magnitude == 1 ? words.byte : words.bytes);
    }
    std::uint64_t unit = 1;
    for (const auto& [letters, decimals] : kUnits) {
        unit *= step;
        const std::uint64_t value = scaled(magnitude, unit, decimals);
        std::uint64_t limit = step;
        for (int i = 0; i < decimals; ++i)
            limit *= 10;
        if (value < limit) return number(value, decimals, signs).append(" ").append(letters);
    }
    return {};  // 2^63 bytes are 9.22 EB, so the last unit has always answered
}

const NumberSigns& userSigns() {
    static const NumberSigns signs = NumberSigns::of(runningLanguage(), preferredRegion(RegionOf::numbers));
    return signs;
}

std::string inUserWords(std::int64_t bytes, ByteSteps steps) {
    return byteCountText(bytes, steps, userSigns(), {S::byteCountZero(), S::byteCountByte(), S::byteCountBytes()});
}

}  // namespace

NumberSigns NumberSigns::of(Language language, const std::string& region) {
    icu::Locale locale = localeOf(language == Language::spanish ? "es" : "en", region);
    if (!region.empty() && !isKnown(locale)) {
        if (const std::string own = languageOf(region); !own.empty()) locale = localeOf(own, region);
    }
    UErrorCode status = U_ZERO_ERROR;
    const icu::DecimalFormatSymbols symbols(locale, status);
    if (U_FAILURE(status) != 0) return {".", ",", "-"};
    return {symbol(symbols, icu::DecimalFormatSymbols::kDecimalSeparatorSymbol),
            symbol(symbols, icu::DecimalFormatSymbols::kGroupingSeparatorSymbol),
            symbol(symbols, icu::DecimalFormatSymbols::kMinusSignSymbol)};
}

std::string byteCountText(std::int64_t bytes, ByteSteps steps, const NumberSigns& signs, const ByteWords& words) {
    if (bytes == 0) return std::string(words.zero);
    const auto magnitude = bytes < 0 ? ~static_cast<std::uint64_t>(bytes) + 1 : static_cast<std::uint64_t>(bytes);
    std::string text = magnitudeText(magnitude, static_cast<std::uint64_t>(steps), signs, words);
    return bytes < 0 ? signs.minus + text : text;
}

std::string ByteFormatter::string(std::int64_t bytes) {
    return inUserWords(bytes, ByteSteps::decimal);
}

std::string ByteFormatter::memory(std::int64_t bytes) {
    return inUserWords(bytes, ByteSteps::binary);
}

}  // namespace tavrin
