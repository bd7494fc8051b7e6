// Reading one file, piece by piece.
#pragma once

#include "TavrinCore/Models/URL.h"
#include "TavrinCore/Platform/FileStatus.h"

#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <span>

namespace tavrin {

/// Not shared between threads.
class FileReader {
  public:
    enum class Expect : std::uint8_t {
        /// The first bytes only.
        beginning,
        /// All of it, so that the system may read ahead.
        whole,
    };

    /// Follows links. Nil when it can't be opened. A FIFO, a socket or a device never is: that could wait, or act. A
    /// folder opens; only reading it fails.
    [[nodiscard]] static std::unique_ptr<FileReader> open(const URL& file, Expect expect);

    virtual ~FileReader() = default;

    /// Up to `buffer.size()` bytes, the count of them; 0 at the end, nil when they can't be read.
    [[nodiscard]] virtual std::optional<std::size_t> read(std::span<unsigned char> buffer) = 0;
    /// The same at `offset` bytes from the beginning; where `read` goes on stays as it was.
    [[nodiscard]] virtual std::optional<std::size_t> readAt(std::uint64_t offset, std::span<unsigned char> buffer) = 0;
    /// Whether what was read so far had to come from the disk. True also where the system can't tell.
    [[nodiscard]] virtual bool hadToWait() const = 0;
    /// Tells the system that these bytes are wanted soon. Doesn't wait for them.
    virtual void prefetch(std::uint64_t offset, std::size_t count) = 0;
    /// Of the file that is open, as it was when it was opened, whatever stands at its path by now. Without dates.
    [[nodiscard]] virtual const FileStatus& status() const = 0;

  protected:
    FileReader() = default;
    FileReader(const FileReader&) = default;
    FileReader& operator=(const FileReader&) = default;
};

}  // namespace tavrin
