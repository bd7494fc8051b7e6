#include "TavrinCore/Scanning/TextCase.h"

#include <unicode/bytestream.h>
#include <unicode/normalizer2.h>
#include <unicode/uchar.h>
#include <unicode/utf8.h>

#include <algorithm>
#include <cstdint>
#include <iterator>
#include <limits>

namespace tavrin {
namespace {

/// The one character whose lower case is two: a dotted capital I becomes an i and its dot.
constexpr UChar32 kCapitalIWithDot = 0x130;
constexpr std::string_view kSmallIAndDot = "i\u0307";

bool isASCII(std::string_view text) {
    return std::ranges::all_of(text, [](char c) { return static_cast<unsigned char>(c) < 0x80; });
}

char lowercasedASCII(char c) {
    return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
}

void append(std::string& text, UChar32 character) {
    std::uint8_t bytes[U8_MAX_LENGTH];
    std::size_t length = 0;
    U8_APPEND_UNSAFE(bytes, length, character);
    text.append(reinterpret_cast<const char*>(bytes), length);
}

/// Calls `visit` with each character and its bytes; the character is negative for bytes that are not UTF-8.
template <class Visit>
void forEachCharacter(std::string_view text, const Visit& visit) {
    const auto* bytes = reinterpret_cast<const std::uint8_t*>(text.data());
    for (std::size_t next = 0; next < text.size();) {
        const std::size_t begin = next;
        UChar32 character = 0;
        U8_NEXT(bytes, next, text.size(), character);
        visit(character, text.substr(begin, next - begin));
    }
}

bool isUTF8(std::string_view text) {
    bool valid = true;
    forEachCharacter(text, [&](UChar32 character, std::string_view) { valid = valid && character >= 0; });
    return valid;
}

}  // namespace

std::string lowercased(std::string_view text) {
    std::string result;
    result.reserve(text.size());
    if (isASCII(text)) {
        std::ranges::transform(text, std::back_inserter(result), lowercasedASCII);
        return result;
    }
    forEachCharacter(text, [&](UChar32 character, std::string_view bytes) {
        if (character < 0) {
            result.append(bytes);
        } else if (character == kCapitalIWithDot) {
            result.append(kSmallIAndDot);
        } else {
            append(result, u_tolower(character));
        }
    });
    return result;
}

std::string comparisonForm(std::string_view text) {
    std::string lower = lowercased(text);
    if (isASCII(lower) || lower.size() > std::numeric_limits<std::int32_t>::max() || !isUTF8(lower)) return lower;
    UErrorCode error = U_ZERO_ERROR;
    const icu::Normalizer2* composer = icu::Normalizer2::getNFCInstance(error);
    if (U_FAILURE(error)) return lower;
    std::string composed;
    icu::StringByteSink<std::string> sink(&composed);
    composer->normalizeUTF8(0, {lower.data(), static_cast<std::int32_t>(lower.size())}, sink, nullptr, error);
    return U_SUCCESS(error) ? composed : lower;
}

std::string_view trimmed(std::string_view text) {
    const char* begin = nullptr;
    const char* end = nullptr;
    forEachCharacter(text, [&](UChar32 character, std::string_view bytes) {
        if (character >= 0 && u_isUWhiteSpace(character)) return;
        if (begin == nullptr) begin = bytes.data();
        end = bytes.data() + bytes.size();
    });
    return begin != nullptr ? std::string_view(begin, end) : std::string_view();
}

std::string lettersAndDigits(std::string_view comparisonForm) {
    std::string kept;
    forEachCharacter(comparisonForm, [&](UChar32 character, std::string_view bytes) {
        if (character >= 0 && (u_isalpha(character) || u_isdigit(character))) kept.append(bytes);
    });
    return kept;
}

}  // namespace tavrin
