// A look at a JSON text from outside its structure: at its strings and numbers one by one, wherever they stand.
#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace tavrin {

/// The text in which every string and number that `isReadable` refuses has become {}, and every such key "". A record
/// has no use for either, so what can't be read costs no more than the record that holds it: a number beyond a double,
/// bytes that aren't UTF-8, half a surrogate pair.
///
/// `isReadable` is asked of the few tokens that may be anything of the kind. Nil when it refuses none.
[[nodiscard]] std::optional<std::string> withoutUnreadableTokens(std::string_view text,
                                                                 bool (*isReadable)(std::string_view token));

}  // namespace tavrin
