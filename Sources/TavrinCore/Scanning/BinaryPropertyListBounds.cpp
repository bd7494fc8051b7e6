// The binary form, as CoreFoundation's CFBinaryPList.c describes it at its top: a magic, objects, a table of their
// offsets, and a trailer of 32 bytes. An object is a marker byte (type and size in a half each), perhaps a larger size,
// then bytes or references to other objects.
//
// The walk follows references as a reader would, so that an object counts as often as it is met. It stops at the
// limits, and a cycle ends at the limit of depth.
#include "TavrinCore/Scanning/PropertyListBounds.h"

#include <cstdint>
#include <limits>
#include <optional>
#include <vector>

namespace tavrin {
namespace {

constexpr std::size_t kTrailerSize = 32;
constexpr std::size_t kMaxIntegerSize = 8;

/// The value of a big-endian integer of any length; only its last eight bytes count.
std::uint64_t bigEndian(std::string_view bytes) {
    std::uint64_t value = 0;
    for (char c : bytes)
        value = value << 8U | static_cast<unsigned char>(c);
    return value;
}

struct Trailer {
    std::size_t offsetSize = 0;
    std::size_t referenceSize = 0;
    std::uint64_t objectCount = 0;
    std::uint64_t rootObject = 0;
    std::uint64_t offsetTable = 0;
};

Trailer trailerOf(std::string_view bytes) {
    const std::string_view trailer = bytes.substr(bytes.size() - kTrailerSize);
    return {static_cast<unsigned char>(trailer[6]), static_cast<unsigned char>(trailer[7]),
            bigEndian(trailer.substr(8, 8)), bigEndian(trailer.substr(16, 8)), bigEndian(trailer.substr(24, 8))};
}

bool isSound(const Trailer& trailer, std::size_t size) {
    const std::uint64_t end = size - kTrailerSize;
    return trailer.offsetSize >= 1 && trailer.offsetSize <= kMaxIntegerSize &&  //
           trailer.referenceSize >= 1 && trailer.referenceSize <= kMaxIntegerSize &&
           trailer.rootObject < trailer.objectCount && trailer.offsetTable >= binaryPropertyListMagic.size() &&
           trailer.offsetTable < end && trailer.objectCount <= (end - trailer.offsetTable) / trailer.offsetSize;
}

/// An object's type, its size in the type's own unit, and its bytes from there to the end of all objects.
struct Object {
    unsigned type = 0;
    std::uint64_t size = 0;
    std::string_view contents;
};

enum Type : unsigned {
    singleton = 0x0,
    integer = 0x1,
    real = 0x2,
    date = 0x3,
    data = 0x4,
    asciiString = 0x5,
    utf16String = 0x6,
    uid = 0x8,
    array = 0xA,
    set = 0xC,
    dictionary = 0xD,
};

class BinaryWalk {
  public:
    BinaryWalk(std::string_view bytes, const Trailer& trailer, const PropertyListLimits& limits)
        : objects_(bytes.substr(0, static_cast<std::size_t>(trailer.offsetTable))),
          offsets_(bytes.substr(static_cast<std::size_t>(trailer.offsetTable))),
          trailer_(trailer),
          limits_(limits) {}

    [[nodiscard]] bool isWithinLimits() {
        if (!visit(trailer_.rootObject, false)) return false;
        while (!open_.empty()) {
            Container& container = open_.back();
            if (container.references.empty()) {
                open_.pop_back();
                continue;
            }
            const std::uint64_t reference = bigEndian(container.references.substr(0, trailer_.referenceSize));
            container.references.remove_prefix(trailer_.referenceSize);
            const bool isKey = container.keysLeft > 0;
            if (isKey) --container.keysLeft;
            if (!visit(reference, isKey)) return false;
        }
        return true;
    }

  private:
    struct Container {
        /// Those that aren't visited yet. A dictionary's keys come first.
        std::string_view references;
        std::uint64_t keysLeft = 0;
    };

    [[nodiscard]] std::optional<Object> objectAt(std::uint64_t index) const {
        if (index >= trailer_.objectCount) return std::nullopt;
        const std::size_t place = static_cast<std::size_t>(index) * trailer_.offsetSize;
        const std::uint64_t offset = bigEndian(offsets_.substr(place, trailer_.offsetSize));
        if (offset >= objects_.size()) return std::nullopt;
        const std::string_view bytes = objects_.substr(static_cast<std::size_t>(offset));
        const unsigned marker = static_cast<unsigned char>(bytes[0]);
        const Object object{marker >> 4U, marker & 0xFU, bytes.substr(1)};
        const bool hasLongSize = object.size == 0xF && object.type >= Type::data && object.type != Type::uid;
        return hasLongSize ? withLongSize(object) : object;
    }

    /// The size stands in an integer object of its own, right behind the marker.
    [[nodiscard]] static std::optional<Object> withLongSize(const Object& object) {
        if (object.contents.empty()) return std::nullopt;
        const unsigned marker = static_cast<unsigned char>(object.contents[0]);
        const std::size_t length = std::size_t{1} << (marker & 0xFU);
        if (marker >> 4U != Type::integer || length > kMaxIntegerSize) return std::nullopt;
        if (object.contents.size() < 1 + length) return std::nullopt;
        return Object{object.type, bigEndian(object.contents.substr(1, length)), object.contents.substr(1 + length)};
    }

    /// Counts the object, and opens it if it is a container.
    [[nodiscard]] bool visit(std::uint64_t index, bool isKey) {
        if (++nodes_ > limits_.maxNodes) return false;
        const std::optional<Object> object = objectAt(index);
        if (!object) return false;
        const bool isString = object->type == Type::asciiString || object->type == Type::utf16String;
        if (isKey && !isString) return false;
        switch (object->type) {
            case Type::singleton:
                return object->size == 0x8 || object->size == 0x9;
            case Type::integer:
                return object->size <= 4 && has(*object, std::uint64_t{1} << object->size);
            case Type::real:
                return (object->size == 2 || object->size == 3) && has(*object, std::uint64_t{1} << object->size);
            case Type::date:
                return object->size == 3 && has(*object, 8);
            case Type::uid:
                return object->size < kMaxIntegerSize && has(*object, object->size + 1);
            case Type::data:
                return has(*object, object->size) && takeContent(object->size);
            case Type::asciiString:
            case Type::utf16String:
                return isText(*object);
            case Type::array:
            case Type::set:
                return open(*object, 1);
            case Type::dictionary:
                return open(*object, 2);
            default:
                return false;
        }
    }

    [[nodiscard]] static bool has(const Object& object, std::uint64_t size) { return size <= object.contents.size(); }

    [[nodiscard]] bool takeContent(std::uint64_t size) {
        if (size > limits_.maxContentBytes - content_) return false;
        content_ += static_cast<std::size_t>(size);
        return true;
    }

    /// Text within the bounds that holds no zero character.
    [[nodiscard]] bool isText(const Object& object) {
        const std::size_t unit = object.type == Type::utf16String ? 2 : 1;
        if (object.size > object.contents.size() / unit) return false;
        // A unit of UTF-16 makes at most three bytes of UTF-8.
        if (!takeContent(object.size * (unit == 2 ? 3 : 1))) return false;
        const std::string_view text = object.contents.substr(0, static_cast<std::size_t>(object.size) * unit);
        if (unit == 1) return text.find('\0') == std::string_view::npos;
        for (std::size_t i = 0; i < text.size(); i += 2) {
            if (text[i] == '\0' && text[i + 1] == '\0') return false;
        }
        return true;
    }

    [[nodiscard]] bool open(const Object& object, std::size_t referencesPerEntry) {
        if (open_.size() >= limits_.maxDepth) return false;
        const std::size_t entrySize = trailer_.referenceSize * referencesPerEntry;
        if (object.size > object.contents.size() / entrySize) return false;
        const std::string_view references =
            object.contents.substr(0, static_cast<std::size_t>(object.size) * entrySize);
        open_.push_back({references, referencesPerEntry == 2 ? object.size : 0});
        return true;
    }

    std::string_view objects_;
    std::string_view offsets_;
    Trailer trailer_;
    PropertyListLimits limits_;
    std::vector<Container> open_;
    std::size_t nodes_ = 0;
    std::size_t content_ = 0;
};

}  // namespace

bool isPropertyListWithin(std::string_view bytes, const PropertyListLimits& limits) {
    if (bytes.size() > limits.maxBytes || bytes.size() > std::numeric_limits<std::uint32_t>::max()) return false;
    if (bytes.starts_with(binaryPropertyListMagic)) return isBinaryPropertyListWithin(bytes, limits);
    return isXMLPropertyListWithin(bytes, limits);
}

bool isBinaryPropertyListWithin(std::string_view bytes, const PropertyListLimits& limits) {
    if (bytes.size() < binaryPropertyListMagic.size() + kTrailerSize) return false;
    const Trailer trailer = trailerOf(bytes);
    return isSound(trailer, bytes.size()) && BinaryWalk(bytes, trailer, limits).isWithinLimits();
}

}  // namespace tavrin
