// Names compared without regard to case: what the rules on names and paths stand on.
//
// Text is bytes. Bytes that are not UTF-8 stay as they are, so that such names compare by their bytes.
#pragma once

#include <string>
#include <string_view>

namespace tavrin {

/// Each character by its full lower-case mapping in the Unicode Character Database, whatever the user's language and
/// whatever stands beside it: a sigma at the end of a word is no exception. So what begins alike begins alike in lower
/// case too.
[[nodiscard]] std::string lowercased(std::string_view text);

/// Lower-cased and composed (Unicode Normalization Form C): two names with the same form look the same to people,
/// however their accents are stored. Dots stay dots.
[[nodiscard]] std::string comparisonForm(std::string_view text);

/// Without the white space around it: every character that the Unicode Character Database calls so.
[[nodiscard]] std::string_view trimmed(std::string_view text);

/// Only the letters and decimal digits of a comparison form, of any script.
[[nodiscard]] std::string lettersAndDigits(std::string_view comparisonForm);

}  // namespace tavrin
