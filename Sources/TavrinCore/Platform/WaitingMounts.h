// Mounts that may keep whoever looks at them waiting for somebody: a server that is down, a program that hangs. Nobody
// can cancel that, so they are known by their place alone.
#pragma once

#include "TavrinCore/Models/URL.h"

#include <string>
#include <vector>

namespace tavrin {

/// The names of those that are mounted right in `folder`; of those deeper inside, the paths below it. Asks none of
/// them. Links that lead to the folder are followed. Safe from any thread.
[[nodiscard]] std::vector<std::string> waitingMountsIn(const URL& folder);

/// Whether `url` is such a mount.
[[nodiscard]] bool isWaitingMount(const URL& url);

}  // namespace tavrin
