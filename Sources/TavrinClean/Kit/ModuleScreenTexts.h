// Which words a module's screen has where modules differ.
#pragma once

#include "TavrinCore/Models/ModuleKind.h"

#include <cstdint>
#include <string>

namespace tavrin {

/// The note below the header; empty for modules that have none.
[[nodiscard]] const std::string& moduleNote(ModuleKind kind);

/// The question before a clean: what will move, and what to mind. `paths` are paths, not rows, so that an app with its
/// leftovers counts as what will really move; `runningApps` are the apps among them that run now.
[[nodiscard]] std::string confirmMessage(ModuleKind kind, std::int64_t paths, std::int64_t bytes,
                                         std::int64_t runningApps);

/// What was moved.
[[nodiscard]] std::string doneSummary(ModuleKind kind, std::int64_t removed, std::int64_t reclaimed);

}  // namespace tavrin
