// The least that hashing pictures can cost: the codecs' own libraries, called straight, without a check that matters
// for safety alone. JPEG at 1/8 and PNG row by row.
#pragma once

#include <cstdint>
#include <string>

namespace tavrin::benchmarks {

/// The sum of all brightness in the file, at the scale at which it is decoded; 0 for any other format.
[[nodiscard]] std::uint64_t pictureFloor(const std::string& path);

}  // namespace tavrin::benchmarks
