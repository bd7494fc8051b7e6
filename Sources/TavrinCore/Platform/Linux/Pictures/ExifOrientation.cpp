#include "TavrinCore/Platform/Linux/Pictures/ExifOrientation.h"

#include <algorithm>
#include <array>
#include <cstddef>

namespace tavrin {
namespace {

constexpr std::array<std::uint8_t, 6> kPrefix{'E', 'x', 'i', 'f', 0, 0};
constexpr unsigned kOrientationTag = 274;
constexpr unsigned kShort = 3;
constexpr std::size_t kEntryBytes = 12;

/// Numbers of a TIFF structure in their byte order; 0 outside of it.
class TIFFNumbers {
  public:
    explicit TIFFNumbers(std::span<const std::uint8_t> data)
        : data_(data), isLittle_(data.size() > 1 && data[0] == 'I' && data[1] == 'I') {}

    [[nodiscard]] unsigned at16(std::size_t offset) const {
        if (offset + 2 > data_.size()) return 0;
        const unsigned first = data_[offset];
        const unsigned second = data_[offset + 1];
        return isLittle_ ? second << 8U | first : first << 8U | second;
    }
    [[nodiscard]] std::uint32_t at32(std::size_t offset) const {
        const std::uint32_t first = at16(offset);
        const std::uint32_t second = at16(offset + 2);
        return isLittle_ ? second << 16U | first : first << 16U | second;
    }

  private:
    std::span<const std::uint8_t> data_;
    bool isLittle_;
};

}  // namespace

unsigned exifOrientation(std::span<const std::uint8_t> data) {
    if (data.size() >= kPrefix.size() && std::equal(kPrefix.begin(), kPrefix.end(), data.begin()))
        data = data.subspan(kPrefix.size());
    const TIFFNumbers numbers(data);
    if (numbers.at16(2) != 42) return 1;
    const std::size_t directory = numbers.at32(4);
    const unsigned entries = numbers.at16(directory);
    for (unsigned i = 0; i < entries; ++i) {
        const std::size_t entry = directory + 2 + i * kEntryBytes;
        if (entry + kEntryBytes > data.size()) break;
        if (numbers.at16(entry) != kOrientationTag || numbers.at16(entry + 2) != kShort) continue;
        const unsigned orientation = numbers.at16(entry + 8);
        return orientation >= 1 && orientation <= 8 ? orientation : 1;
    }
    return 1;
}

}  // namespace tavrin
