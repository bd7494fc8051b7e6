// What the user's system says of language and region.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

namespace tavrin {

/// The user's languages, most wanted first, as tags ("es-ES"). A language may stand there twice. Empty when the user
/// names none, or asks for words without translation. Read each time.
[[nodiscard]] std::vector<std::string> preferredLanguages();

enum class RegionOf : std::uint8_t {
    numbers,
    dates,
};

/// The user's region, an upper-case ISO 3166 code ("ES"); empty when the system tells none. It decides how numbers or
/// dates are written, whatever the language of the words; somebody may want each as it is written elsewhere.
[[nodiscard]] std::string preferredRegion(RegionOf what);

}  // namespace tavrin
