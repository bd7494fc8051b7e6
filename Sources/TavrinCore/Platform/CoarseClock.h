// A clock that costs next to nothing, for what looks at it all the time.
#pragma once

#include <chrono>

namespace tavrin {

/// The time of the steady clock as the system last wrote it down: up to a few milliseconds late.
[[nodiscard]] std::chrono::steady_clock::time_point coarseNow();

}  // namespace tavrin
