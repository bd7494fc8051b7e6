// history.json, sound and damaged. Whatever is read from a text must be written as one that is read back the same and
// in which nothing is amiss: a salvage that isn't would be damage again at the next start.
#include "TavrinCore/Cleaning/HistoryCodec.h"

#include <cstdint>
#include <cstdlib>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    using namespace tavrin;
    const DecodedHistory history = decodeHistory({reinterpret_cast<const char*>(data), size});
    const std::optional<std::string> text = encodeHistory(history.records);
    if (!text) std::abort();
    const DecodedHistory again = decodeHistory(*text);
    if (!again.isIntact || again.records != history.records) std::abort();
    for (const CleanupRecord& record : history.records) {
        if (record.displayName().empty() && !record.module.empty()) std::abort();
    }
    return 0;
}
