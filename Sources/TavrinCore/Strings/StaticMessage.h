#pragma once

#include "TavrinCore/Strings/Language.h"

#include <string_view>

namespace tavrin {

/// A message that is always the same, as its row says it.
struct StaticMessage {
    std::string_view key;
    std::string_view english;
    std::string_view spanish;

    [[nodiscard]] constexpr std::string_view in(Language language) const {
        return language == Language::spanish ? spanish : english;
    }
    friend bool operator==(const StaticMessage&, const StaticMessage&) = default;
};

}  // namespace tavrin
