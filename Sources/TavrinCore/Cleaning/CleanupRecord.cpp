#include "TavrinCore/Cleaning/CleanupRecord.h"

#include "TavrinCore/Models/ModuleKind.h"
#include "TavrinCore/Strings.h"

namespace tavrin {

const std::string& CleanupRecord::displayName() const {
    if (!moduleKey) return module;
    if (*moduleKey == smartScanKey) return S::smartTitle();
    if (*moduleKey == emptyTrashKey) return S::trashHistoryLabel();
    const std::optional<ModuleKind> kind = moduleKindFromRawValue(*moduleKey);
    return kind ? title(*kind) : module;
}

}  // namespace tavrin
