// Names in the order in which people look them up.
#pragma once

#include "TavrinCore/Strings/Language.h"

#include <compare>
#include <string>
#include <string_view>

namespace tavrin {

/// Compares as the language sorts, capitals and small letters alike: "apple" before "Banana", ñ after n in Spanish.
/// Accents tell apart what is otherwise equal; digits are letters among others ("10" before "9"). Bytes that are no
/// text count as U+FFFD. A stable sort keeps equivalent names in the order they had. Safe from any thread.
[[nodiscard]] std::weak_ordering compareNames(std::string_view a, std::string_view b, Language language);
/// The same in the running language.
[[nodiscard]] std::weak_ordering compareNames(std::string_view a, std::string_view b);

/// Bytes that compare, as bytes, like the name does above: for lists so long that each name should be looked at once.
[[nodiscard]] std::string nameSortKey(std::string_view name, Language language);
/// The same in the running language.
[[nodiscard]] std::string nameSortKey(std::string_view name);

}  // namespace tavrin
