// What the file system says of one file, beside its name.
#pragma once

#include "TavrinCore/Models/Date.h"
#include "TavrinCore/Models/URL.h"
#include "TavrinCore/Platform/SystemError.h"

#include <compare>
#include <cstdint>
#include <optional>

namespace tavrin {

enum class FileType : std::uint8_t {
    /// The file system doesn't say.
    unknown,
    regular,
    directory,
    symbolicLink,
    fifo,
    socket,
    characterDevice,
    blockDevice,
};

/// What makes a file that file, whatever its names: hard links have it in common. Holds for as long as the file exists.
struct FileIdentifier {
    std::uint64_t device = 0;
    std::uint64_t inode = 0;

    friend bool operator==(const FileIdentifier&, const FileIdentifier&) = default;
    friend auto operator<=>(const FileIdentifier&, const FileIdentifier&) = default;  // NOLINT(modernize-use-nullptr)
};

/// Nil where the file system keeps no such value.
struct FileStatus {
    FileType type = FileType::unknown;
    /// Bytes that can be read.
    std::optional<std::int64_t> size = std::nullopt;
    /// Bytes that the file occupies on disk.
    std::optional<std::int64_t> allocatedSize = std::nullopt;
    std::optional<Date> modified = std::nullopt;
    /// Nil also where the file system was told not to keep it up to date.
    std::optional<Date> accessed = std::nullopt;
    /// Given by fileStatus only; a walk doesn't ask for it.
    std::optional<Date> created = std::nullopt;
    std::optional<FileIdentifier> identifier = std::nullopt;

    /// What this program means by the size of a file, everywhere.
    [[nodiscard]] std::int64_t measure() const { return allocatedSize.value_or(size.value_or(0)); }

    friend bool operator==(const FileStatus&, const FileStatus&) = default;
};

/// Whether a link as the last name of a path stands for itself or for what it leads to.
enum class LastLink : std::uint8_t {
    keep,
    follow,
};

/// One request; nothing is opened and nothing is mounted for it. Safe from any thread.
[[nodiscard]] Result<FileStatus> fileStatus(const URL& url, LastLink lastLink = LastLink::keep);

}  // namespace tavrin
