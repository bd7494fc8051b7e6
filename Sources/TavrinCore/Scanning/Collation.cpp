#include "TavrinCore/Scanning/Collation.h"

#include "TavrinCore/Scanning/TextCase.h"

#include <unicode/coll.h>
#include <unicode/locid.h>
#include <unicode/stringpiece.h>
#include <unicode/unistr.h>

#include <algorithm>
#include <array>
#include <cstdint>
#include <memory>

namespace tavrin {
namespace {

std::unique_ptr<icu::Collator> makeCollator(const icu::Locale& locale) {
    UErrorCode status = U_ZERO_ERROR;
    std::unique_ptr<icu::Collator> collator(icu::Collator::createInstance(locale, status));
    if (U_FAILURE(status) || collator == nullptr) return nullptr;
    collator->setStrength(icu::Collator::SECONDARY);
    return collator;
}

/// Null where ICU's data is missing.
const icu::Collator* collatorFor(Language language) {
    static const std::unique_ptr<const icu::Collator> english = makeCollator(icu::Locale("en"));
    static const std::unique_ptr<const icu::Collator> spanish = makeCollator(icu::Locale("es"));
    return language == Language::spanish ? spanish.get() : english.get();
}

icu::StringPiece piece(std::string_view text) {
    return {text.data(), static_cast<std::int32_t>(text.size())};
}

}  // namespace

std::weak_ordering compareNames(std::string_view a, std::string_view b, Language language) {
    const icu::Collator* collator = collatorFor(language);
    if (collator == nullptr) return comparisonForm(a) <=> comparisonForm(b);
    UErrorCode status = U_ZERO_ERROR;
    const UCollationResult result = collator->compareUTF8(piece(a), piece(b), status);
    if (U_FAILURE(status)) return comparisonForm(a) <=> comparisonForm(b);
    return static_cast<int>(result) <=> 0;
}

std::weak_ordering compareNames(std::string_view a, std::string_view b) {
    return compareNames(a, b, runningLanguage());
}

std::string nameSortKey(std::string_view name, Language language) {
    const icu::Collator* collator = collatorFor(language);
    if (collator == nullptr) return comparisonForm(name);
    const icu::UnicodeString text = icu::UnicodeString::fromUTF8(piece(name));
    std::array<std::uint8_t, 256> bytes;
    const std::int32_t length = collator->getSortKey(text, bytes.data(), static_cast<std::int32_t>(bytes.size()));
    // The length counts a zero byte at the end, which would tell nothing apart.
    if (length <= 1) return {};
    std::string key(static_cast<std::size_t>(length), '\0');
    if (key.size() <= bytes.size()) {
        std::copy_n(bytes.begin(), key.size(), key.begin());
    } else {
        collator->getSortKey(text, reinterpret_cast<std::uint8_t*>(key.data()), length);
    }
    key.pop_back();
    return key;
}

std::string nameSortKey(std::string_view name) {
    return nameSortKey(name, runningLanguage());
}

}  // namespace tavrin
