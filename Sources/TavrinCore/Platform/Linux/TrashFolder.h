// The Trash that serves an item, as the freedesktop.org Trash specification 1.0 lays it out: the home's for what lies
// on the home's mount, one at the top of each other mount for the rest. Nothing is ever copied from one mount to
// another.
#pragma once

#include "TavrinCore/Platform/Linux/HeldFile.h"

#include <string>

namespace tavrin {

struct TrashFolder {
    Descriptor files;
    Descriptor info;
    FileIdentity rootIdentity;
    FileIdentity filesIdentity;
    FileIdentity infoIdentity;
    /// Of the folder that holds the two.
    std::string path;
    /// What the notes here write for the item: its whole path, or the part below the mount point.
    std::string itemPath;

    /// Finds it and makes what is missing of it.
    ///
    /// Other mounts: `.Trash/$uid` where an administrator made `.Trash` a real folder with the sticky bit, else
    /// `.Trash-$uid`. Neither is trusted when it is a link or another user's.
    [[nodiscard]] static Result<TrashFolder> openFor(SystemCalls& calls, const HeldFile& held);
};

}  // namespace tavrin
