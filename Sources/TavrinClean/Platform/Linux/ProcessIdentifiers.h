// How a process of this system tells which application it belongs to.
#pragma once

#include "TavrinCore/Models/URL.h"

#include <sys/types.h>

#include <optional>
#include <set>
#include <string>
#include <string_view>

namespace tavrin {

/// The application behind a systemd unit as desktops name them (systemd.io/DESKTOP_ENVIRONMENTS):
/// "app[-LAUNCHER]-ID-RANDOM.scope", "app[-LAUNCHER]-ID[@RANDOM].service". Nil for any other unit.
[[nodiscard]] std::optional<std::string> applicationOfUnit(std::string_view unit);

/// The same for the text of /proc/PID/cgroup: the innermost unit that is an application's.
[[nodiscard]] std::optional<std::string> applicationOfCgroup(std::string_view text);

/// The identifiers of all processes of `user` below `proc`, lower-cased: of the bundle that their executable lies in,
/// of their systemd unit, and of their Flatpak.
[[nodiscard]] std::set<std::string> identifiersOfProcesses(const URL& proc, uid_t user);

}  // namespace tavrin
