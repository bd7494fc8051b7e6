// A file that is read through the core's own interface and does what no file on a disk can be made to do.
#pragma once

#include "TavrinCore/Platform/FileReader.h"

#include <functional>
#include <limits>
#include <memory>
#include <string>

namespace tavrin::test {

struct PretendedFile {
    std::string bytes;
    /// Reading at this offset and behind it fails.
    std::size_t failsFrom = std::numeric_limits<std::size_t>::max();
    /// What the status says it was long when it was opened; its real length without a word.
    std::optional<std::int64_t> length = std::nullopt;
    /// A read gives at most this many bytes.
    std::size_t mostPerRead = std::numeric_limits<std::size_t>::max();

    /// Its readers say that they had to wait.
    bool isOnDisk = false;

    /// Of all that was read so far, by all readers.
    mutable std::size_t bytesRead = 0;
    mutable int readersOpen = 0;
    mutable int mostReadersOpen = 0;

    /// The file must outlive its readers.
    [[nodiscard]] std::unique_ptr<FileReader> open() const;
};

}  // namespace tavrin::test
