#include "TavrinCore/Cleaning/HistoryTokens.h"

#include <algorithm>
#include <cstddef>

namespace tavrin {
namespace {

struct Token {
    std::size_t length = 0;
    /// Worth asking about. Nearly none is: they are plain text with "\\/" in it, or a few digits.
    bool isSuspicious = false;
};

Token stringToken(std::string_view text) {
    Token token{.length = 1};
    for (bool escaped = false; token.length < text.size();) {
        const char c = text[token.length++];
        if (c == '"' && !escaped) return token;
        const auto byte = static_cast<unsigned char>(c);
        if (byte < 0x20 || byte >= 0x7F || (escaped && c != '/')) token.isSuspicious = true;
        escaped = c == '\\' && !escaped;
    }
    return token;  // without an end, so that nothing can be made of the text anyway
}

Token numberToken(std::string_view text) {
    constexpr std::string_view characters = "0123456789+-.eE";
    constexpr std::size_t longestPlain = 300;  // a double goes up to 308 digits
    const std::string_view number = text.substr(0, std::min(text.find_first_not_of(characters), text.size()));
    return {number.size(), number.size() > longestPlain || number.find_first_of("eE") != std::string_view::npos};
}

/// The token that the text begins with; of no length where it begins with none.
Token firstToken(std::string_view text) {
    const char c = text.front();
    if (c == '"') return stringToken(text);
    if (c == '-' || (c >= '0' && c <= '9')) return numberToken(text);
    return {};
}

bool standsBeforeColon(std::string_view text, std::size_t end) {
    const std::size_t next = text.find_first_not_of(" \t\r\n", end);
    return next != std::string_view::npos && text[next] == ':';
}

}  // namespace

std::optional<std::string> withoutUnreadableTokens(std::string_view text, bool (*isReadable)(std::string_view token)) {
    std::optional<std::string> mended;
    for (std::size_t at = 0; at < text.size();) {
        const auto [length, isSuspicious] = firstToken(text.substr(at));
        // What is shorter leaves no room, and neither a string nor a number of one character is ever at fault alone.
        if (length >= 2 && isSuspicious && !isReadable(text.substr(at, length))) {
            if (!mended) mended.emplace(text);
            const char* const filler = standsBeforeColon(text, at + length) ? "\"\"" : "{}";
            mended->replace(at, length, length, ' ').replace(at, 2, filler);
        }
        at += std::max(length, std::size_t{1});
    }
    return mended;
}

}  // namespace tavrin
