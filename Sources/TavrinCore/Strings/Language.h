// The language of the words, and how it is chosen.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

namespace tavrin {

enum class Language : std::uint8_t {
    english,
    spanish
};

/// The language of the words for a user with these preferred languages, most wanted first: Spanish when the first one
/// begins with "es" in either case, English for everything else and for none.
[[nodiscard]] Language languageFor(const std::vector<std::string>& preferredLanguages);

/// The language of this run, settled the first time that anybody asks. Safe from any thread.
[[nodiscard]] Language runningLanguage();

}  // namespace tavrin
