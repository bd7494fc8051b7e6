// The names of languages, for the codes that bundles call their language folders by.
#pragma once

#include "TavrinCore/Strings/Language.h"

#include <string>
#include <string_view>

namespace tavrin {

/// The code behind what a language folder is called, "_" written as "-": "pt_BR" is "pt-BR". The old full names, in any
/// case, give their codes ("German" is "de"); anything else stays.
[[nodiscard]] std::string languageCode(std::string_view folderCode);

/// What comes before the first "-" of a code; all of it where there is none.
[[nodiscard]] std::string_view primaryLanguage(std::string_view code);

/// The language's name in `inLanguage`, with its first letter in upper case: "German", "Portugués (Brasil)". Where a
/// region or script isn't known, the name of the language alone. `folderCode` as it stands where nobody knows the
/// language. Safe from any thread.
[[nodiscard]] std::string languageName(std::string_view folderCode, Language inLanguage);

}  // namespace tavrin
