// Notes in the Trash, as any program or accident may have written them. A path that is read must come back from the
// note that we would write for it.
#include "TavrinCore/Platform/Linux/TrashInfo.h"

#include <cstdint>
#include <cstdlib>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const auto info = tavrin::parseTrashInfo({reinterpret_cast<const char*>(data), size});
    if (!info) return 0;
    const auto again = tavrin::parseTrashInfo(tavrin::trashInfoText(info->path, 1'790'000'000));
    if (!again || again->path != info->path) std::abort();
    return 0;
}
