#include "TavrinCore/Scanning/LanguageNames.h"

#include "TavrinCore/Scanning/TextCase.h"

#include <unicode/locdspnm.h>
#include <unicode/locid.h>
#include <unicode/uchar.h>
#include <unicode/unistr.h>

#include <algorithm>
#include <array>
#include <memory>
#include <utility>

namespace tavrin {
namespace {

/// What bundles called their folders before there were codes.
constexpr std::array<std::pair<std::string_view, std::string_view>, 27> kLegacyNames{{
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

/// Asked for no substitutes, so that what it doesn't know comes out as nothing instead of as the code.
std::unique_ptr<icu::LocaleDisplayNames> makeNames(const char* language) {
    std::array<UDisplayContext, 2> contexts{UDISPCTX_STANDARD_NAMES, UDISPCTX_NO_SUBSTITUTE};
    return std::unique_ptr<icu::LocaleDisplayNames>(icu::LocaleDisplayNames::createInstance(
        icu::Locale(language), contexts.data(), static_cast<std::int32_t>(contexts.size())));
}

/// Null where ICU's data is missing.
const icu::LocaleDisplayNames* namesIn(Language language) {
    static const std::unique_ptr<const icu::LocaleDisplayNames> english = makeNames("en");
    static const std::unique_ptr<const icu::LocaleDisplayNames> spanish = makeNames("es");
    return language == Language::spanish ? spanish.get() : english.get();
}

/// Empty where there is none.
icu::UnicodeString nameOfIdentifier(const icu::LocaleDisplayNames& names, const std::string& identifier) {
    icu::UnicodeString name;
    const icu::Locale locale = icu::Locale::createCanonical(identifier.c_str());
    if (!locale.isBogus() && *locale.getLanguage() != '\0') names.localeDisplayName(locale, name);
    return name.isBogus() ? icu::UnicodeString() : name;
}

icu::UnicodeString nameOfLanguage(const icu::LocaleDisplayNames& names, const std::string& code) {
    icu::UnicodeString name;
    names.languageDisplayName(code.c_str(), name);
    return name.isBogus() ? icu::UnicodeString() : name;
}

std::string withCapital(icu::UnicodeString name) {
    const UChar32 first = name.char32At(0);
    name.replace(0, U16_LENGTH(first), icu::UnicodeString(u_toupper(first)));
    std::string text;
    name.toUTF8String(text);
    return text;
}

}  // namespace

std::string languageCode(std::string_view folderCode) {
    std::string code(folderCode);
    std::ranges::replace(code, '_', '-');
    const std::string lower = lowercased(code);
    const auto* found = std::ranges::find(kLegacyNames, lower, &std::pair<std::string_view, std::string_view>::first);
    return found != kLegacyNames.end() ? std::string(found->second) : code;
}

std::string_view primaryLanguage(std::string_view code) {
    return code.substr(0, code.find('-'));
}

std::string languageName(std::string_view folderCode, Language inLanguage) {
    const icu::LocaleDisplayNames* names = namesIn(inLanguage);
    if (names == nullptr) return std::string(folderCode);
    const std::string code = languageCode(folderCode);
    icu::UnicodeString name = nameOfIdentifier(*names, code);
    if (name.isEmpty()) name = nameOfLanguage(*names, std::string(primaryLanguage(code)));
    return name.isEmpty() ? std::string(folderCode) : withCapital(std::move(name));
}

}  // namespace tavrin
