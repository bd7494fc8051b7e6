// A tree of small files, the same each time it is made.
#pragma once

#include <cstddef>
#include <filesystem>

namespace tavrin::benchmarks {

/// `folders` folders, eight in each above, with ten files of `fileBytes` in each. Kept from one run to the next: made
/// only when it isn't there whole.
void makeSampleTree(const std::filesystem::path& root, int folders, std::size_t fileBytes = 64);

}  // namespace tavrin::benchmarks
