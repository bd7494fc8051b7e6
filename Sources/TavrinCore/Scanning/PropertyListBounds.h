// The measuring of a property list before anything is made of it. For PropertyList alone.
//
// The library that reads the lists trusts them: it expands every reference, recurses as deep as a list goes, moves a
// text's rest for each entity in it, searches a dictionary for each key that it adds, looks up months unchecked, and
// stops the program at a key that holds a zero. What passes here it reads in bounded time, stack and memory.
#pragma once

#include "TavrinCore/Scanning/PropertyList.h"

#include <string_view>

namespace tavrin {

/// Whether `bytes` are a list of either form, well formed as far as bounds depend on it, and within `limits`.
[[nodiscard]] bool isPropertyListWithin(std::string_view bytes, const PropertyListLimits& limits);

/// The two forms; `bytes` are within the limit of size.
[[nodiscard]] bool isBinaryPropertyListWithin(std::string_view bytes, const PropertyListLimits& limits);
[[nodiscard]] bool isXMLPropertyListWithin(std::string_view bytes, const PropertyListLimits& limits);

inline constexpr std::string_view binaryPropertyListMagic = "bplist00";

}  // namespace tavrin
