// Moving an item that is held into another folder of its mount, whole or not at all, over nothing.
#pragma once

#include "TavrinCore/Platform/Linux/HeldFile.h"

#include <string>

namespace tavrin {

struct MoveEnd {
    enum class Kind : std::uint8_t {
        moved,
        /// Nothing has changed.
        refused,
        /// What arrived was not what was checked, and it couldn't be moved back: it lies at the target.
        stranded,
    };
    Kind kind = Kind::moved;
    /// errno of what went wrong.
    int error = 0;
};

/// Refuses with ESTALE what is no longer the item that was held, with EEXIST a name that is taken, with EXDEV another
/// mount. A folder that its owner may not write to is made writable for the moment of the move: its ".." changes with
/// it, which is writing (rename(2), EACCES). Its mode is put back at once. Were the process killed in between, the
/// owner's right to write would stay; nothing else can.
[[nodiscard]] MoveEnd moveHeld(SystemCalls& calls, const HeldFile& held, int folder, const std::string& name);

}  // namespace tavrin
