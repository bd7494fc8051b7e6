// Byte counts as text for people, in the running language and the user's region.
#pragma once

#include <cstdint>
#include <string>

namespace tavrin {

class ByteFormatter {
  public:
    ByteFormatter() = delete;

    /// Sizes on disk: steps of 1000. 0 is "Zero KB", 1 "1 byte", 1'500 "2 KB", 1'234'567 "1.2 MB".
    [[nodiscard]] static std::string string(std::int64_t bytes);
    /// Memory: steps of 1024 with the same letters. 900'000 is "879 KB".
    [[nodiscard]] static std::string memory(std::int64_t bytes);
};

}  // namespace tavrin
