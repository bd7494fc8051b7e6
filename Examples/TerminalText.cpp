#include "TerminalText.h"

#include "TavrinCore/Models/URL.h"

namespace tavrin::example {
namespace {

/// Length of the UTF-8 sequence of a control character or direction mark at the front of `text`; 0 for anything else.
std::size_t harmfulLength(std::string_view text) {
    const auto at = [&](std::size_t i) { return i < text.size() ? static_cast<unsigned char>(text[i]) : 0U; };
    if (at(0) < 0x20 || at(0) == 0x7F) return 1;
    if (at(0) == 0xC2 && at(1) < 0xA0) return 2;                                       // C1 controls
    if (at(0) == 0xE2 && at(1) == 0x80 && (at(2) >= 0xA8 && at(2) <= 0xAE)) return 3;  // U+2028 to U+202E
    if (at(0) == 0xE2 && at(1) == 0x80 && (at(2) == 0x8E || at(2) == 0x8F)) return 3;  // U+200E, U+200F
    if (at(0) == 0xE2 && at(1) == 0x81 && (at(2) >= 0xA6 && at(2) <= 0xA9)) return 3;  // U+2066 to U+2069
    return 0;
}

}  // namespace

std::string terminalText(std::string_view bytes, std::size_t atMost) {
    const std::string text = displayText(bytes);
    std::string safe;
    for (std::size_t i = 0; i < text.size();) {
        const bool beginsCharacter = (static_cast<unsigned char>(text[i]) & 0xC0U) != 0x80U;
        if (beginsCharacter && safe.size() >= atMost) return safe + "\u2026";
        const std::size_t harmful = harmfulLength(std::string_view(text).substr(i));
        safe += harmful > 0 ? "\uFFFD" : text.substr(i, 1);
        i += harmful > 0 ? harmful : 1;
    }
    return safe;
}

}  // namespace tavrin::example
