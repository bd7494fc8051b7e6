// Writing a file of this program's own so that it is whole at every moment: the old one or the new one, also when the
// power fails in between.
#pragma once

#include "TavrinCore/Models/URL.h"
#include "TavrinCore/Platform/SystemError.h"

#include <string_view>

namespace tavrin {

/// Puts a file with these bytes in the place of what stands at `url`, which may be nothing. A link there is replaced,
/// not followed. `mode` is what the user's mask leaves of it.
///
/// The bytes go to a new file beside it under a name nobody can guess, on to the disk, and only then to the name that
/// was asked for. On failure the old file stands untouched and the new one is gone. There is one exception: when the
/// disk refuses to make the renaming itself lasting, an error is given, though the new file already stands.
///
/// A program that is killed midway leaves its ".tavrin-….tmp" behind. It is in nobody's way, and nothing reads it; it
/// isn't swept either, since another process may be in the middle of writing just such a file.
///
/// Blocks until the disk has it all. Stateless, safe from any thread.
[[nodiscard]] Outcome writeAtomically(const URL& url, std::string_view bytes, unsigned mode);

}  // namespace tavrin
