// The hash of a picture by the book: an opinion of its own, written without anything of the program.
#pragma once

#include "Support/Pictures.h"

#include <cstdint>

namespace tavrin::test {

/// The mean of the brightness of all pixels in each of 9 by 8 equal pieces of the picture, and of two neighbours which
/// is brighter.
[[nodiscard]] std::uint64_t referenceHash(const ColourPicture& picture);

}  // namespace tavrin::test
