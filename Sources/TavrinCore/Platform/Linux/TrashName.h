// Under what names an item may lie in the Trash.
#pragma once

#include <string>
#include <string_view>

namespace tavrin {

/// The item's own name, cut where the note beside it (".trashinfo" added) would not fit into a file name: at a
/// character's edge, before the extension.
[[nodiscard]] std::string trashName(std::string_view name);

/// A name that nobody else has: with random digits before the extension. Counting up instead would try each number that
/// is taken, so the thousandth namesake would cost a thousand looks.
[[nodiscard]] std::string uncommonTrashName(std::string_view name);

/// For file systems that take short names only: digits alone.
[[nodiscard]] std::string shortTrashName();

}  // namespace tavrin
