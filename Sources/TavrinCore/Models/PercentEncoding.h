// Percent-encoding of a path's bytes (RFC 3986, section 2.1), the one form in which a path is written into a file:
// as a file URL in the history, as the Path of a .trashinfo in the Trash.
#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace tavrin {

/// Everything but the unreserved characters, the slash and what RFC 3986 allows inside a path is escaped, byte by byte,
/// in upper-case hexadecimal. ';' is escaped too, as Foundation does.
[[nodiscard]] std::string percentEncoded(std::string_view bytes);

/// The bytes behind `text`. Nil for a broken escape and for a zero byte, which no path holds.
[[nodiscard]] std::optional<std::string> percentDecoded(std::string_view text);

/// The value of one hexadecimal digit in either case; -1 for any other character.
[[nodiscard]] constexpr int hexDigitValue(char c) {
    if (c >= '0' && c <= '9') return c - '0';
    if (c >= 'A' && c <= 'F') return c - 'A' + 10;
    if (c >= 'a' && c <= 'f') return c - 'a' + 10;
    return -1;
}

inline constexpr std::string_view upperHexDigits = "0123456789ABCDEF";

}  // namespace tavrin
