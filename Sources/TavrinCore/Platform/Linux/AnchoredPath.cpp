#include "TavrinCore/Platform/Linux/AnchoredPath.h"

#include "TavrinCore/Platform/Linux/LongPath.h"

#include <climits>
#include <utility>

namespace tavrin {

AnchoredPath::AnchoredPath(const std::string& path) : name_(path.c_str()) {
    if (path.size() < PATH_MAX) return;  // the zero byte at the end counts
    Result<Descriptor> parent = openFolder(systemCalls(), parentPath(path));
    if (!parent) {
        error_ = parent.error().code;
        return;
    }
    folder_ = std::move(*parent);
    name_ = lastComponent(path).data();
}

Descriptor AnchoredPath::open(int flags) const {
    return Descriptor(systemCalls().open(folder(), name_, flags));
}

}  // namespace tavrin
