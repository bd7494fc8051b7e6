// When a file arrived where it is, as far as the file system remembers.
#pragma once

#include "TavrinCore/Models/Date.h"
#include "TavrinCore/Models/URL.h"

#include <optional>

namespace tavrin {

/// The first that the file system keeps of: when it was added to its folder, when its content was last changed, when it
/// was made. Nil when it keeps none of them, or the file is gone. One request; safe from any thread.
[[nodiscard]] std::optional<Date> installDate(const URL& url);

}  // namespace tavrin
