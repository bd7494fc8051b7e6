// Paths of any length. The kernel takes one of 4,095 bytes at most; a longer one is gone down in steps.
#pragma once

#include "TavrinCore/Platform/Linux/Descriptor.h"
#include "TavrinCore/Platform/Linux/SystemCalls.h"
#include "TavrinCore/Platform/SystemError.h"

#include <string>
#include <string_view>

namespace tavrin {

/// The folder at an absolute path, links followed, opened for its path alone (O_PATH): needs no permission to read it.
[[nodiscard]] Result<Descriptor> openFolder(SystemCalls& calls, std::string_view path);

/// The same, with the folders that are missing made on the way, readable by the user alone (0700).
[[nodiscard]] Result<Descriptor> openOrMakeFolder(SystemCalls& calls, std::string_view path);

/// Where an open folder lies, all links resolved. `pathUsed` is the path that it was opened by; it helps where the
/// kernel finds the answer too long to tell.
[[nodiscard]] Result<std::string> realPath(SystemCalls& calls, const Descriptor& folder, std::string_view pathUsed);

/// What stands at an absolute path. `flags` as statx(2) has them; links are followed unless they say otherwise.
[[nodiscard]] Result<struct statx> statusOfPath(SystemCalls& calls, std::string_view path, int flags);

/// The failure of the last system call on this thread.
[[nodiscard]] SystemError lastError();

/// "a" of "/x/a" and the "/x" above it.
[[nodiscard]] std::string_view lastComponent(std::string_view path);
[[nodiscard]] std::string_view parentPath(std::string_view path);

}  // namespace tavrin
