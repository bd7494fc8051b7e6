// What the user's system says of language and region.
#pragma once

#include <string>
#include <vector>

namespace tavrin {

/// The user's languages, most wanted first, as tags ("es-ES"). A language may stand there twice. Empty when the user
/// names none, or asks for words without translation. Read each time.
[[nodiscard]] std::vector<std::string> preferredLanguages();

/// The user's region, an upper-case ISO 3166 code ("ES"); empty when the system tells none. It decides how numbers and
/// dates are written, whatever the language of the words.
[[nodiscard]] std::string preferredRegion();

}  // namespace tavrin
