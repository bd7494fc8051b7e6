// A 128-bit identifier: random (version 4 of RFC 4122), written in its canonical upper-case form.
#pragma once

#include <array>
#include <compare>
#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <string_view>

namespace tavrin {

class UUID {
  public:
    /// A fresh random one. Safe from any thread.
    [[nodiscard]] static UUID random();
    /// From the 36-character form, in either case; nil for anything else.
    [[nodiscard]] static std::optional<UUID> fromString(std::string_view text);
    /// From 16 bytes as they stand, for tests and for stored identifiers.
    explicit constexpr UUID(const std::array<std::uint8_t, 16>& bytes) : bytes_(bytes) {}

    /// 36 characters, upper case: "E621E1F8-C36C-495A-93FC-0C247A3E6E5F".
    [[nodiscard]] std::string uuidString() const;
    [[nodiscard]] const std::array<std::uint8_t, 16>& bytes() const { return bytes_; }

    friend bool operator==(const UUID&, const UUID&) = default;
    friend auto operator<=>(const UUID&, const UUID&) = default;

  private:
    std::array<std::uint8_t, 16> bytes_;
};

}  // namespace tavrin

template <>
struct std::hash<tavrin::UUID> {
    std::size_t operator()(const tavrin::UUID& uuid) const noexcept;
};
