// A file that grows while it is read is held to the bound, not to the size it had.
#include "TavrinCore/Platform/ReadFile.h"

#include "TavrinCore/Platform/Linux/HarmlessOpen.h"

#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstdint>
#include <optional>

namespace tavrin {
namespace {

/// Nil for a file that is within the bound.
std::optional<SystemError> refusal(const struct stat& status, std::size_t maxBytes) {
    if (S_ISDIR(status.st_mode)) return SystemError::posix(EISDIR);
    if (static_cast<std::uint64_t>(status.st_size) > maxBytes) return SystemError::posix(EFBIG);
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
    const Result<Descriptor> file = openHarmless(url);
    if (!file) return file.error();
    struct stat status {};
    if (::fstat(file->number(), &status) != 0) return SystemError::posix(errno);
    if (auto refused = refusal(status, maxBytes)) return *refused;
    return readToEnd(file->number(), static_cast<std::size_t>(status.st_size), maxBytes);
}

}  // namespace tavrin
