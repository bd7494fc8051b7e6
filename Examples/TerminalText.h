// Names on the way to a terminal. A file may be called anything, also what would turn a terminal red or hide its
// suffix.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace tavrin::example {

/// The bytes of a name on one line that can't harm a terminal: what isn't text, control characters, and marks that turn
/// the writing direction are shown as U+FFFD. Text of more than `atMost` bytes ends in an ellipsis there.
[[nodiscard]] std::string terminalText(std::string_view bytes, std::size_t atMost = std::string::npos);

}  // namespace tavrin::example
