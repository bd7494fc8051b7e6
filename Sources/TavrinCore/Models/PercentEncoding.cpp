#include "TavrinCore/Models/PercentEncoding.h"

#include <array>

namespace tavrin {
namespace {

constexpr std::string_view kUnescaped =
    "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789-._~!$&'()*+,:=@/";

constexpr std::array<bool, 256> makeUnescapedTable() {
    std::array<bool, 256> table{};
    for (char c : kUnescaped)
        table[static_cast<unsigned char>(c)] = true;
    return table;
}
constexpr std::array<bool, 256> kIsUnescaped = makeUnescapedTable();

}  // namespace

std::string percentEncoded(std::string_view bytes) {
    std::string text;
    text.reserve(bytes.size() + bytes.size() / 8);
    for (char c : bytes) {
        const auto byte = static_cast<unsigned char>(c);
        if (kIsUnescaped[byte]) {
            text.push_back(c);
        } else {
            text.push_back('%');
            text.push_back(upperHexDigits[byte >> 4U]);
            text.push_back(upperHexDigits[byte & 0xFU]);
        }
    }
    return text;
}

std::optional<std::string> percentDecoded(std::string_view text) {
    std::string bytes;
    bytes.reserve(text.size());
    for (std::size_t i = 0; i < text.size(); ++i) {
        char c = text[i];
        if (c == '%') {
            if (i + 2 >= text.size()) return std::nullopt;
            const int high = hexDigitValue(text[i + 1]);
            const int low = hexDigitValue(text[i + 2]);
            if (high < 0 || low < 0) return std::nullopt;
            c = static_cast<char>(high * 16 + low);
            i += 2;
        }
        if (c == '\0') return std::nullopt;
        bytes.push_back(c);
    }
    return bytes;
}

}  // namespace tavrin
