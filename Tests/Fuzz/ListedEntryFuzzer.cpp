// What a file system hands out as the listing of a folder is read as a walk reads it: record after record, to the end
// or to the first that is none. No record may reach beyond the buffer, stand still, or carry a name that leads
// elsewhere.
#include "TavrinCore/Platform/Linux/ListedEntry.h"

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <memory>
#include <optional>
#include <string_view>

namespace {

void require(bool holds) {
    if (!holds) std::abort();
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    // A buffer of exactly that size, so that the address sanitizer sees the first byte beyond.
    const std::unique_ptr<char[]> buffer(new char[size]);
    std::copy_n(data, size, buffer.get());
    std::string_view left(buffer.get(), size);
    while (const std::optional<tavrin::ListedEntry> entry = tavrin::readListedEntry(left)) {
        require(entry->length > 0 && entry->length <= left.size());
        require(!entry->name.empty() && entry->name.find('/') == std::string_view::npos);
        require(entry->name.data() >= left.data());
        require(entry->name.data() + entry->name.size() < left.data() + entry->length);
        require(*(entry->name.data() + entry->name.size()) == '\0');
        left.remove_prefix(entry->length);
    }
    return 0;
}
