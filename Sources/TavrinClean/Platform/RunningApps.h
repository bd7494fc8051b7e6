// Which applications run now.
#pragma once

#include <set>
#include <string>

namespace tavrin {

class RunningApps {
  public:
    RunningApps() = delete;

    /// The identifiers of this user's running applications, lower-cased. Asks the system each time, which takes some
    /// milliseconds; safe from any thread. What can't be asked is left out.
    [[nodiscard]] static std::set<std::string> bundleIDs();
};

}  // namespace tavrin
