#include "Support/PropertyLists.h"

#include <cstdint>

namespace tavrin::test {
namespace {

std::string bigEndian(std::uint64_t value, std::size_t size) {
    std::string bytes(size, '\0');
    for (std::size_t i = size; i > 0; --i, value >>= 8U)
        bytes[i - 1] = static_cast<char>(value & 0xFFU);
    return bytes;
}

std::string marker(unsigned type, std::size_t size) {
    if (size < 15) return {static_cast<char>(type << 4U | size)};
    return std::string{static_cast<char>(type << 4U | 15U), '\x13'} + bigEndian(size, 8);
}

}  // namespace

std::string xmlPropertyList(std::string_view value) {
    std::string list = R"(<?xml version="1.0" encoding="UTF-8"?>
<!DOCTYPE plist PUBLIC "-//Apple//DTD PLIST 1.0//EN" "http://www.apple.com/DTDs/PropertyList-1.0.dtd">
<plist version="1.0">
)";
    return list.append(value).append("\n</plist>\n");
}

std::size_t BinaryPropertyList::raw(std::string object) {
    objects_.push_back(std::move(object));
    return objects_.size() - 1;
}

std::size_t BinaryPropertyList::string(std::string_view ascii) {
    return raw(marker(0x5, ascii.size()).append(ascii));
}

std::size_t BinaryPropertyList::utf16(std::u16string_view text) {
    std::string object = marker(0x6, text.size());
    for (char16_t unit : text)
        object += bigEndian(unit, 2);
    return raw(object);
}

std::size_t BinaryPropertyList::array(const std::vector<std::size_t>& items) {
    return raw(withReferences(0xA, items.size(), items));
}

std::size_t BinaryPropertyList::dictionary(const std::vector<std::size_t>& keys,
                                           const std::vector<std::size_t>& values) {
    std::vector<std::size_t> references = keys;
    references.insert(references.end(), values.begin(), values.end());
    return raw(withReferences(0xD, keys.size(), references));
}

std::string BinaryPropertyList::withReferences(unsigned char type, std::size_t size,
                                               const std::vector<std::size_t>& references) const {
    std::string object = marker(type, size);
    for (std::size_t reference : references)
        object += bigEndian(reference, referenceSize_);
    return object;
}

std::string BinaryPropertyList::bytes(std::size_t root) const {
    std::size_t total = 8;
    for (const std::string& object : objects_)
        total += object.size();
    const std::size_t offsetSize = total < 0x100 ? 1 : total < 0x10000 ? 2 : 4;
    std::string list = "bplist00";
    std::string offsets;
    for (const std::string& object : objects_) {
        offsets += bigEndian(list.size(), offsetSize);
        list += object;
    }
    const std::size_t table = list.size();
    list += offsets + std::string(6, '\0') + bigEndian(offsetSize, 1) + bigEndian(referenceSize_, 1);
    return list + bigEndian(objects_.size(), 8) + bigEndian(root, 8) + bigEndian(table, 8);
}

std::string propertyListBomb(std::size_t levels) {
    BinaryPropertyList list;
    for (std::size_t i = 0; i < levels; ++i)
        list.array(std::vector<std::size_t>(10, i + 1));
    list.raw("\x09");
    return list.bytes(0);
}

URL makeBundle(const TestFolder& world, std::string_view relative, std::string_view info) {
    world.file(std::string(relative) + "/Contents/Info.plist", info);
    return world.url().appendingPathComponent(relative, true);
}

URL makeBundleWithIdentifier(const TestFolder& world, std::string_view relative, std::string_view identifier) {
    const std::string value = std::string("<string>").append(identifier).append("</string>");
    return makeBundle(world, relative, xmlPropertyList("<dict><key>CFBundleIdentifier</key>" + value + "</dict>"));
}

}  // namespace tavrin::test
