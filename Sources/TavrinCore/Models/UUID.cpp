#include "TavrinCore/Models/UUID.h"

#include "TavrinCore/Models/PercentEncoding.h"

#include <openssl/rand.h>

#include <cstring>
#include <stdexcept>

namespace tavrin {
namespace {

/// A hyphen stands after bytes 4, 6, 8 and 10.
constexpr bool hyphenBefore(std::size_t byteIndex) {
    return byteIndex == 4 || byteIndex == 6 || byteIndex == 8 || byteIndex == 10;
}

}  // namespace

UUID UUID::random() {
    std::array<std::uint8_t, 16> bytes{};
    if (RAND_bytes(bytes.data(), static_cast<int>(bytes.size())) != 1) {
        throw std::runtime_error("the system gives no random numbers");
    }
    bytes[6] = static_cast<std::uint8_t>((bytes[6] & 0x0FU) | 0x40U);  // version 4
    bytes[8] = static_cast<std::uint8_t>((bytes[8] & 0x3FU) | 0x80U);  // the RFC's variant
    return UUID(bytes);
}

std::optional<UUID> UUID::fromString(std::string_view text) {
    if (text.size() != 36) return std::nullopt;
    std::array<std::uint8_t, 16> bytes{};
    std::size_t at = 0;
    for (std::size_t i = 0; i < bytes.size(); ++i) {
        if (hyphenBefore(i) && text[at++] != '-') return std::nullopt;
        const int high = hexDigitValue(text[at]);
        const int low = hexDigitValue(text[at + 1]);
        if (high < 0 || low < 0) return std::nullopt;
        bytes[i] = static_cast<std::uint8_t>(high * 16 + low);
        at += 2;
    }
    return UUID(bytes);
}

std::string UUID::uuidString() const {
    std::string text;
    text.reserve(36);
    for (std::size_t i = 0; i < bytes_.size(); ++i) {
        if (hyphenBefore(i)) text.push_back('-');
        text.push_back(upperHexDigits[bytes_[i] >> 4U]);
        text.push_back(upperHexDigits[bytes_[i] & 0xFU]);
    }
    return text;
}

}  // namespace tavrin

std::size_t std::hash<tavrin::UUID>::operator()(const tavrin::UUID& uuid) const noexcept {
    std::size_t value = 0;  // random bytes are as good a hash as any
    std::memcpy(&value, uuid.bytes().data(), sizeof value);
    return value;
}
