// Reading a file of somebody else's whole, without trusting what stands at its path.
#pragma once

#include "TavrinCore/Models/URL.h"
#include "TavrinCore/Platform/SystemError.h"

#include <cstddef>
#include <string>

namespace tavrin {

/// The bytes of the regular file at `url`; links are followed. Never waits for anybody, and holds at most `maxBytes`
/// and one more in memory.
///
/// Errors beside the system's own: EISDIR for a folder, EINVAL for a FIFO, a socket or a device (they are not opened),
/// EFBIG for a file of more than `maxBytes`. Stateless, safe from any thread.
[[nodiscard]] Result<std::string> readSmallFile(const URL& url, std::size_t maxBytes);

}  // namespace tavrin
