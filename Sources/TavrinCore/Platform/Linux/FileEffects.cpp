#include "TavrinCore/Platform/FileEffects.h"

#include "TavrinCore/Platform/Linux/HeldFile.h"
#include "TavrinCore/Platform/Linux/LongPath.h"
#include "TavrinCore/Platform/Linux/RemoveTree.h"
#include "TavrinCore/Platform/Linux/SystemFileEffects.h"
#include "TavrinCore/Platform/Linux/Trash.h"

#include <fcntl.h>

#include <utility>

namespace tavrin {

FileEffects& systemFileEffects() {
    static SystemFileEffects effects(systemCalls());
    return effects;
}

bool SystemFileEffects::exists(const URL& url) {
    return statusOfPath(calls_, url.path(), 0).ok();
}

bool SystemFileEffects::itemExists(const URL& url) {
    return statusOfPath(calls_, url.path(), AT_SYMLINK_NOFOLLOW).ok();
}

Result<std::unique_ptr<HeldItem>> SystemFileEffects::hold(const URL& url) {
    Result<std::unique_ptr<HeldFile>> held = HeldFile::hold(calls_, url);
    if (!held) return held.error();
    return std::unique_ptr<HeldItem>(std::move(*held));
}

Result<std::optional<URL>> SystemFileEffects::trashItem(HeldItem& item) {
    Result<URL> trashed = moveToTrash(calls_, dynamic_cast<HeldFile&>(item));
    if (!trashed) return trashed.error();
    return std::optional<URL>(std::move(*trashed));
}

Outcome SystemFileEffects::removeItem(HeldItem& item) {
    const auto& held = dynamic_cast<HeldFile&>(item);
    Outcome removed = removeHeld(calls_, held);
    if (removed) removeTrashInfo(calls_, held);
    return removed;
}

Outcome SystemFileEffects::createDirectory(const URL& url) {
    const Result<Descriptor> folder = openOrMakeFolder(calls_, url.path());
    if (!folder) return folder.error();
    return success();
}

Outcome SystemFileEffects::putBack(const URL& trashed, const URL& original) {
    return moveOutOfTrash(calls_, trashed, original);
}

}  // namespace tavrin
