// Property lists of both forms. Besides not crashing, not hanging and not eating memory, what is read must lie within
// the limits that were set: if it doesn't, the measuring and the reading have seen different lists.
#include "TavrinCore/Scanning/PropertyList.h"

#include <algorithm>
#include <cstdint>
#include <cstdlib>

namespace {

using tavrin::PropertyList;

struct Extent {
    std::size_t depth = 0;
    std::size_t nodes = 0;
};

void measure(const PropertyList& list, std::size_t depth, Extent& extent) {
    ++extent.nodes;
    if (list.array() == nullptr && list.dictionary() == nullptr) return;
    extent.depth = std::max(extent.depth, depth + 1);
    if (const PropertyList::Array* array = list.array()) {
        for (const PropertyList& item : *array)
            measure(item, depth + 1, extent);
        return;
    }
    extent.nodes += list.dictionary()->size();
    for (const auto& [key, item] : *list.dictionary())
        measure(item, depth + 1, extent);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string_view bytes(reinterpret_cast<const char*>(data), size);
    // Low ones, so that the fuzzer gets far in its time.
    const tavrin::PropertyListLimits wide{.maxNodes = 5'000, .maxContentBytes = 1'000'000};
    const tavrin::PropertyListLimits narrow{.maxDepth = 3, .maxNodes = 20};
    for (const tavrin::PropertyListLimits& limits : {wide, narrow}) {
        const std::optional<PropertyList> list = PropertyList::fromBytes(bytes, limits);
        if (!list) continue;
        Extent extent;
        measure(*list, 0, extent);
        if (extent.depth > limits.maxDepth || extent.nodes > limits.maxNodes) std::abort();
    }
    return 0;
}
