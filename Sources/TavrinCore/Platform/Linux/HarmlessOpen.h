// Opening what other programs left, without being held up by it: merely opening a FIFO, a device or a tape can wait, or
// act.
#pragma once

#include "TavrinCore/Models/URL.h"
#include "TavrinCore/Platform/FileStatus.h"
#include "TavrinCore/Platform/Linux/Descriptor.h"
#include "TavrinCore/Platform/SystemError.h"

namespace tavrin {

struct HarmlessFile {
    Descriptor descriptor;
    /// Of what is open, whatever stands at the path by now. Type, sizes and identifier.
    FileStatus status;
};

/// A regular file or a folder, at a path of any length, for reading; links are followed. EINVAL for anything else,
/// which is not opened.
///
/// The type is looked at before, and again after: the name may stand for something else by then, and O_NONBLOCK and
/// O_NOCTTY see to it that this one open neither waits nor takes a terminal (open(2)).
[[nodiscard]] Result<HarmlessFile> openHarmless(const URL& file);

}  // namespace tavrin
