#include "TavrinCore/Platform/Linux/Pictures/BMPHeader.h"

#include <algorithm>
#include <array>
#include <cstdlib>

namespace tavrin {
namespace {

using Compression = BMPHeader::Compression;

constexpr std::size_t kFileHeader = 14;
constexpr std::uint32_t kCoreHeader = 12;
constexpr std::uint32_t kInfoHeader = 40;
/// From this size on, alpha has a mask.
constexpr std::uint32_t kAlphaHeader = 56;
constexpr std::uint32_t kLargestHeader = 124;

void readCore(const std::uint8_t* bytes, BMPHeader& header) {
    header.width = littleEndian(bytes + 4, 2);
    header.height = littleEndian(bytes + 6, 2);
    header.bits = littleEndian(bytes + 10, 2);
    header.colourBytes = 3;
}

void readMasks(const std::uint8_t* bytes, std::uint32_t size, BMPHeader& header) {
    // Behind the oldest header, and part of the others, at the same place.
    header.red.bits = littleEndian(bytes + 40, 4);
    header.green.bits = littleEndian(bytes + 44, 4);
    header.blue.bits = littleEndian(bytes + 48, 4);
    if (size >= kAlphaHeader || header.compression == Compression::masksWithAlpha)
        header.alpha.bits = littleEndian(bytes + 52, 4);
}

bool readInfo(const std::uint8_t* bytes, std::uint32_t size, BMPHeader& header) {
    const auto height = static_cast<std::int64_t>(static_cast<std::int32_t>(littleEndian(bytes + 8, 4)));
    header.width = littleEndian(bytes + 4, 4);
    header.height = static_cast<std::size_t>(std::llabs(height));
    header.isTopDown = height < 0;
    header.bits = littleEndian(bytes + 14, 2);
    const std::uint32_t compression = littleEndian(bytes + 16, 4);
    header.colours = littleEndian(bytes + 32, 4);
    if (compression > 3 && compression != 6) return false;
    header.compression = static_cast<Compression>(compression);
    if (header.compression == Compression::masks || header.compression == Compression::masksWithAlpha) {
        readMasks(bytes, size, header);
    } else if (header.bits == 16) {
        header.red.bits = 0x7C00;
        header.green.bits = 0x03E0;
        header.blue.bits = 0x001F;
    }
    return true;
}

bool isKnown(const BMPHeader& header) {
    const std::uint32_t bits = header.bits;
    switch (header.compression) {
        case Compression::runs8:
            return bits == 8 && !header.isTopDown;
        case Compression::runs4:
            return bits == 4 && !header.isTopDown;
        case Compression::masks:
        case Compression::masksWithAlpha:
            return bits == 16 || bits == 32;
        case Compression::none:
            break;
    }
    return bits == 1 || bits == 4 || bits == 8 || bits == 16 || bits == 24 || bits == 32;
}

}  // namespace

std::optional<BMPHeader> readBMPHeader(PictureInput& input) {
    std::array<std::uint8_t, kFileHeader + kLargestHeader> bytes{};
    const std::size_t count = input.read(bytes.data(), bytes.size());
    if (count < kFileHeader + kCoreHeader) return std::nullopt;
    const std::uint8_t* info = bytes.data() + kFileHeader;
    const std::uint32_t size = littleEndian(info, 4);
    BMPHeader header;
    header.pixels = littleEndian(bytes.data() + 10, 4);
    header.palette = static_cast<std::uint32_t>(kFileHeader) + size;
    if (size == kCoreHeader) {
        readCore(info, header);
    } else if (size < kInfoHeader || size > kLargestHeader || count < kFileHeader + kInfoHeader ||
               !readInfo(info, size, header)) {
        return std::nullopt;
    }
    if (!isKnown(header)) return std::nullopt;
    const std::uint32_t most = header.hasPalette() ? 1U << header.bits : 0;
    header.colours = header.colours == 0 ? most : std::min(header.colours, most);
    return header;
}

}  // namespace tavrin
