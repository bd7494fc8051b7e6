#include "TavrinCore/Scanning/PropertyList.h"

#include "TavrinCore/Platform/ReadFile.h"
#include "TavrinCore/Scanning/PropertyListBounds.h"

#include <plist/plist.h>

#include <cstdlib>
#include <limits>
#include <memory>

namespace tavrin {
namespace {

struct FreeList {
    void operator()(plist_t list) const { plist_free(list); }
};
using OwnedList = std::unique_ptr<void, FreeList>;

struct FreeMemory {
    void operator()(void* memory) const { std::free(memory); }  // NOLINT(cppcoreguidelines-no-malloc): from a C library
};
template <class T>
using Allocated = std::unique_ptr<T, FreeMemory>;

/// The byte-order mark that some editors put before UTF-8.
std::string_view withoutMark(std::string_view bytes) {
    constexpr std::string_view mark = "\xEF\xBB\xBF";
    return bytes.starts_with(mark) ? bytes.substr(mark.size()) : bytes;
}

/// A pointer of the library's and its length; a null pointer stands for nothing.
std::string bytesAt(const char* begin, std::uint64_t length) {
    return begin != nullptr ? std::string(begin, static_cast<std::size_t>(length)) : std::string();
}

PropertyList dateOf(plist_t node) {
    std::int32_t seconds = 0;
    std::int32_t microseconds = 0;
    plist_get_date_val(node, &seconds, &microseconds);
    // What doesn't fit becomes the one or the other, depending on the processor.
    using Limits = std::numeric_limits<std::int32_t>;
    if (seconds == Limits::min() || seconds == Limits::max()) return {};
    // The fraction comes without its sign.
    const double fraction = microseconds / 1e6;
    return PropertyList(Date::fromReference(seconds < 0 ? seconds - fraction : seconds + fraction));
}

// Recursion is bounded by the depth that was measured before.
PropertyList converted(plist_t node);

PropertyList arrayOf(plist_t node) {
    PropertyList::Array array;
    array.reserve(plist_array_get_size(node));
    plist_array_iter start = nullptr;
    plist_array_new_iter(node, &start);
    const Allocated<void> iterator(start);
    for (plist_t item = nullptr;;) {
        plist_array_next_item(node, iterator.get(), &item);
        if (item == nullptr) break;
        array.push_back(converted(item));
    }
    return PropertyList(std::move(array));
}

PropertyList dictionaryOf(plist_t node) {
    PropertyList::Dictionary dictionary;
    plist_dict_iter start = nullptr;
    plist_dict_new_iter(node, &start);
    const Allocated<void> iterator(start);
    for (;;) {
        char* name = nullptr;
        plist_t item = nullptr;
        plist_dict_next_item(node, iterator.get(), &name, &item);
        const Allocated<char> key(name);
        if (key == nullptr || item == nullptr) break;
        dictionary.try_emplace(key.get(), converted(item));
    }
    return PropertyList(std::move(dictionary));
}

PropertyList integerOf(plist_t node) {
    std::uint64_t value = 0;
    if (plist_get_node_type(node) == PLIST_UID) {
        plist_get_uid_val(node, &value);
    } else {
        plist_get_uint_val(node, &value);
    }
    return PropertyList(static_cast<std::int64_t>(value));
}

PropertyList scalarOf(plist_t node) {
    std::uint64_t length = 0;
    std::uint8_t boolean = 0;
    double real = 0;
    switch (plist_get_node_type(node)) {
        case PLIST_BOOLEAN:
            plist_get_bool_val(node, &boolean);
            return PropertyList(boolean != 0);
        case PLIST_UINT:
        case PLIST_UID:
            return integerOf(node);
        case PLIST_REAL:
            plist_get_real_val(node, &real);
            return PropertyList(real);
        case PLIST_DATE:
            return dateOf(node);
        case PLIST_STRING: {
            const char* begin = plist_get_string_ptr(node, &length);
            return PropertyList(bytesAt(begin, length));
        }
        case PLIST_DATA: {
            const char* begin = plist_get_data_ptr(node, &length);
            return PropertyList(PropertyList::Data{bytesAt(begin, length)});
        }
        default:
            return {};
    }
}

PropertyList converted(plist_t node) {
    switch (plist_get_node_type(node)) {
        case PLIST_ARRAY:
            return arrayOf(node);
        case PLIST_DICT:
            return dictionaryOf(node);
        default:
            return scalarOf(node);
    }
}

}  // namespace

std::optional<PropertyList> PropertyList::fromBytes(std::string_view bytes, const PropertyListLimits& limits) {
    bytes = withoutMark(bytes);
    if (!isPropertyListWithin(bytes, limits)) return std::nullopt;
    // The library looks a byte ahead here and there; a string's own end is one it may see.
    const std::string terminated(bytes);
    plist_t list = nullptr;
    plist_from_memory(terminated.data(), static_cast<std::uint32_t>(terminated.size()), &list);
    const OwnedList owned(list);
    if (owned == nullptr) return std::nullopt;
    return converted(owned.get());
}

std::optional<PropertyList> PropertyList::fromFile(const URL& url, const PropertyListLimits& limits) {
    const Result<std::string> bytes = readSmallFile(url, limits.maxBytes);
    return bytes.ok() ? fromBytes(*bytes, limits) : std::nullopt;
}

const PropertyList* PropertyList::value(std::string_view key) const {
    const Dictionary* values = dictionary();
    if (values == nullptr) return nullptr;
    const auto found = values->find(key);
    return found != values->end() ? &found->second : nullptr;
}

std::optional<bool> PropertyList::boolean(std::string_view key) const {
    const PropertyList* found = value(key);
    return found != nullptr ? found->boolean() : std::nullopt;
}

std::optional<std::int64_t> PropertyList::integer(std::string_view key) const {
    const PropertyList* found = value(key);
    return found != nullptr ? found->integer() : std::nullopt;
}

std::optional<double> PropertyList::real(std::string_view key) const {
    const PropertyList* found = value(key);
    return found != nullptr ? found->real() : std::nullopt;
}

std::optional<Date> PropertyList::date(std::string_view key) const {
    const PropertyList* found = value(key);
    return found != nullptr ? found->date() : std::nullopt;
}

const std::string* PropertyList::string(std::string_view key) const {
    const PropertyList* found = value(key);
    return found != nullptr ? found->string() : nullptr;
}

const PropertyList::Data* PropertyList::data(std::string_view key) const {
    const PropertyList* found = value(key);
    return found != nullptr ? found->data() : nullptr;
}

const PropertyList::Array* PropertyList::array(std::string_view key) const {
    const PropertyList* found = value(key);
    return found != nullptr ? found->array() : nullptr;
}

const PropertyList::Dictionary* PropertyList::dictionary(std::string_view key) const {
    const PropertyList* found = value(key);
    return found != nullptr ? found->dictionary() : nullptr;
}

}  // namespace tavrin
