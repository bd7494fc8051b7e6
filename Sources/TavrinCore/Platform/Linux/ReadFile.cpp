// A file that grows while it is read is held to the bound, not to the size it had.
#include "TavrinCore/Platform/ReadFile.h"

#include "TavrinCore/Platform/Linux/HarmlessOpen.h"

#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstdint>
#include <optional>

namespace tavrin {
namespace {

/// Nil for a file that is within the bound.
std::optional<SystemError> refusal(const FileStatus& status, std::size_t maxBytes) {
    if (status.type == FileType::directory) return SystemError::posix(EISDIR);
    if (static_cast<std::uint64_t>(status.size.value_or(0)) > maxBytes) return SystemError::posix(EFBIG);
    return std::nullopt;
}

/// Reads to the end, whatever size was told: the files of /proc say 0.
Result<std::string> readToEnd(int number, std::size_t expected, std::size_t maxBytes) {
    constexpr std::size_t step = std::size_t{64} * 1024;
    std::string bytes;
    std::size_t filled = 0;
    for (std::size_t room = expected + 1;; room = step) {
        // One byte more than allowed is enough to know that there is too much.
        bytes.resize(filled + std::min(room - 1, maxBytes - filled) + 1);
        const ssize_t count = ::read(number, bytes.data() + filled, bytes.size() - filled);
        if (count < 0 && errno != EINTR) return SystemError::posix(errno);
        if (count > 0) filled += static_cast<std::size_t>(count);
        if (filled > maxBytes) return SystemError::posix(EFBIG);
        if (count == 0) break;
    }
    bytes.resize(filled);
    return bytes;
}

}  // namespace

Result<std::string> readSmallFile(const URL& url, std::size_t maxBytes) {
    const Result<HarmlessFile> file = openHarmless(url);
    if (!file) return file.error();
    if (auto refused = refusal(file->status, maxBytes)) return *refused;
    return readToEnd(file->descriptor.number(), static_cast<std::size_t>(file->status.size.value_or(0)), maxBytes);
}

}  // namespace tavrin
