#include "TavrinCore/Scanning/DateText.h"

#include "TavrinCore/Platform/Locale.h"

#include <unicode/datefmt.h>
#include <unicode/dtptngen.h>
#include <unicode/locid.h>
#include <unicode/timezone.h>
#include <unicode/unistr.h>

#include <memory>

namespace tavrin {
namespace {

using Format = std::unique_ptr<const icu::DateFormat>;

std::unique_ptr<icu::DateFormat> instance(const icu::Locale& locale, icu::DateFormat::EStyle time) {
    return std::unique_ptr<icu::DateFormat>(
        icu::DateFormat::createDateTimeInstance(icu::DateFormat::kMedium, time, locale));
}

/// Whether the library knows how dates are written in just this region, in the language that was asked for.
bool knows(const std::string& region, const icu::DateFormat& format) {
    UErrorCode status = U_ZERO_ERROR;
    const icu::Locale valid = format.getLocale(ULOC_VALID_LOCALE, status);
    return U_SUCCESS(status) != 0 && valid.getCountry() == region;
}

bool countsToTwelve(const std::string& region) {
    UErrorCode status = U_ZERO_ERROR;
    const std::unique_ptr<icu::DateTimePatternGenerator> patterns(
        icu::DateTimePatternGenerator::createInstance(icu::Locale("en", region.c_str()), status));
    if (patterns == nullptr) return false;
    const UDateFormatHourCycle cycle = patterns->getDefaultHourCycle(status);
    return U_SUCCESS(status) != 0 && (cycle == UDAT_HOUR_CYCLE_11 || cycle == UDAT_HOUR_CYCLE_12);
}

std::unique_ptr<icu::DateFormat> instanceFor(const DateSettings& settings, icu::DateFormat::EStyle time) {
    if (settings.language == Language::spanish) return instance(icu::Locale("es", settings.region.c_str()), time);
    std::unique_ptr<icu::DateFormat> format = instance(icu::Locale("en", settings.region.c_str()), time);
    if (settings.region.empty() || format == nullptr || knows(settings.region, *format)) return format;
    // English falls back to that of the United States. Elsewhere the day comes first: as in the world's English, which
    // counts twice twelve hours, or as in Europe's, which counts twenty-four.
    return instance(icu::Locale("en", countsToTwelve(settings.region) ? "001" : "150"), time);
}

Format makeFormat(const DateSettings& settings, icu::DateFormat::EStyle time) {
    std::unique_ptr<icu::DateFormat> format = instanceFor(settings, time);
    if (format == nullptr) return nullptr;
    // The host's own is asked for outright: the library's default is whatever somebody set before.
    format->adoptTimeZone(settings.timeZone.empty()
                              ? icu::TimeZone::detectHostTimeZone()
                              : icu::TimeZone::createTimeZone(icu::UnicodeString::fromUTF8(settings.timeZone)));
    return format;
}

Format makeUsersFormat(icu::DateFormat::EStyle time) {
    return makeFormat({.language = runningLanguage(), .region = preferredRegion(RegionOf::dates), .timeZone = {}},
                      time);
}

/// Formatting changes nothing about a format, so threads may share one.
std::string formatted(Date date, const Format& format) {
    if (format == nullptr) return {};  // only where the library's own data are missing
    icu::UnicodeString text;
    format->format(date.secondsSinceUnix() * U_MILLIS_PER_SECOND, text);
    std::string bytes;
    return text.toUTF8String(bytes);
}

}  // namespace

std::string dateText(Date date) {
    static const Format format = makeUsersFormat(icu::DateFormat::kNone);
    return formatted(date, format);
}

std::string dateAndTimeText(Date date) {
    static const Format format = makeUsersFormat(icu::DateFormat::kShort);
    return formatted(date, format);
}

std::string dateText(Date date, const DateSettings& settings) {
    return formatted(date, makeFormat(settings, icu::DateFormat::kNone));
}

std::string dateAndTimeText(Date date, const DateSettings& settings) {
    return formatted(date, makeFormat(settings, icu::DateFormat::kShort));
}

}  // namespace tavrin
