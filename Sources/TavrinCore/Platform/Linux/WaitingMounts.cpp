#include "TavrinCore/Platform/WaitingMounts.h"

#include "TavrinCore/Platform/Linux/LongPath.h"
#include "TavrinCore/Platform/Linux/MountTable.h"
#include "TavrinCore/Platform/Linux/WalkCalls.h"

#include <algorithm>

namespace tavrin {

std::vector<std::string> waitingMountsIn(const URL& folder) {
    const Result<Descriptor> opened = openFolder(systemCalls(), folder.path());
    return opened ? walkCalls().waitingMounts(opened->number()) : std::vector<std::string>();
}

bool isWaitingMount(const URL& url) {
    const std::string_view name = url.lastPathComponent();
    const auto bearsTheName = [name](const Mount& mount) {
        return mount.mayWait && lastComponent(mount.point) == name;
    };
    // Hardly anything does, and for what doesn't no folder is opened.
    if (std::ranges::none_of(*currentMounts(), bearsTheName)) return false;
    const std::vector<std::string> beside = waitingMountsIn(url.deletingLastPathComponent());
    return std::ranges::find(beside, name) != beside.end();
}

}  // namespace tavrin
