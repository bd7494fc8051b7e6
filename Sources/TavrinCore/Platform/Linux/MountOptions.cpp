#include "TavrinCore/Platform/Linux/MountOptions.h"

#include "TavrinCore/Platform/Linux/MountTable.h"

#include <algorithm>
#include <cstdint>

namespace tavrin {
namespace {

/// Files are asked about mount by mount: nearly always it is the one of the file before.
struct LastMount {
    std::uint64_t id = 0;
    bool keepsAccessDates = true;
};

LastMount& lastMount() {
    thread_local LastMount last;
    return last;
}

}  // namespace

bool keepsAccessDates(const struct statx& status) {
    if ((status.stx_mask & STATX_MNT_ID) == 0) return true;
    LastMount& last = lastMount();
    if (status.stx_mnt_id != last.id) {
        const auto mounts = currentMounts();
        const auto found = std::ranges::find(*mounts, status.stx_mnt_id, &Mount::id);
        last = {.id = status.stx_mnt_id, .keepsAccessDates = found == mounts->end() || !found->isNoatime};
    }
    return last.keepsAccessDates;
}

void forgetTheLastMount() {
    lastMount() = {};
}

}  // namespace tavrin
