// How ByteFormatter writes a number: the rules without the user's settings, so that every setting can be tested.
#pragma once

#include "TavrinCore/Strings/Language.h"

#include <cstdint>
#include <string>
#include <string_view>

namespace tavrin {

/// What a language and a region put around digits.
struct NumberSigns {
    std::string decimal;
    std::string grouping;
    std::string minus;

    /// The signs of the region where it is known for the language ("es" and "MX"), else those of the region's own
    /// language; without a region those of the language.
    [[nodiscard]] static NumberSigns of(Language language, const std::string& region);

    friend bool operator==(const NumberSigns&, const NumberSigns&) = default;
};

struct ByteWords {
    std::string_view zero;
    std::string_view byte;
    std::string_view bytes;
};

/// How many bytes of a unit make the next one.
enum class ByteSteps : std::uint16_t {
    decimal = 1000,
    binary = 1024
};

/// The text that NSByteCountFormatter gives: KB without decimals, MB with at most one, GB and above with at most two;
/// halves away from zero; what rounds up to a whole next unit is written in that unit.
[[nodiscard]] std::string byteCountText(std::int64_t bytes, ByteSteps steps, const NumberSigns& signs,
                                        const ByteWords& words);

}  // namespace tavrin
