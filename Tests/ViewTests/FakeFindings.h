// Findings of every module for pictures and tests of the screens. The files that they name exist, so that folders can
// be opened and pictures be seen; the sizes are made up.
#pragma once

#include "TavrinCore/Models/Models.h"

#include <filesystem>
#include <vector>

namespace tavrin::test {

/// Makes the files below `folder`, all of one age, in March 2026.
void makeFiles(const std::filesystem::path& folder);

/// What the module's scanner finds there; the same each time but for the ids.
[[nodiscard]] std::vector<CleanableItem> findingsFor(ModuleKind kind, const std::filesystem::path& folder);

/// `count` findings of system junk that don't exist.
[[nodiscard]] std::vector<CleanableItem> manyFindings(std::size_t count);

}  // namespace tavrin::test
