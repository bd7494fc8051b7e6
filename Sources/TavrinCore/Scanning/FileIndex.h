// Very many files in little memory: about 60 bytes a file besides its name, so that millions of them can be held.
//
// A folder's path is held once, relative to a folder above it. Files come in the order of a walk, depth first; in any
// other order the index stays right and only grows larger.
#pragma once

#include "TavrinCore/Models/Date.h"
#include "TavrinCore/Models/URL.h"
#include "TavrinCore/Platform/FileStatus.h"

#include <cstddef>
#include <cstdint>
#include <deque>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace tavrin {

/// Texts that stay where they are. None may hold a zero byte.
class TextArena {
  public:
    using Position = std::uint64_t;

    [[nodiscard]] Position add(std::string_view text);
    [[nodiscard]] std::string_view at(Position position) const;

  private:
    static constexpr unsigned kBlockBits = 20;
    static constexpr std::size_t kBlockBytes = std::size_t{1} << kBlockBits;

    std::vector<std::unique_ptr<char[]>> blocks_;
    std::size_t used_ = kBlockBytes;
};

class FileIndex {
  public:
    /// In the order of adding, from 0.
    using Number = std::uint32_t;

    /// `status` needs its sizes, dates and identifier; whichever is missing, the index does without it.
    void add(const URL& file, const FileStatus& status);

    [[nodiscard]] Number count() const { return static_cast<Number>(files_.size()); }

    [[nodiscard]] URL url(Number file) const;
    [[nodiscard]] std::string_view name(Number file) const { return texts_.at(files_[file].name); }
    /// The measure: what the file occupies on disk.
    [[nodiscard]] std::int64_t size(Number file) const { return files_[file].size; }
    /// Bytes that can be read, nil where the file system doesn't tell.
    [[nodiscard]] std::optional<std::int64_t> length(Number file) const;
    /// Date::distantFuture for a file without a date.
    [[nodiscard]] Date modified(Number file) const { return files_[file].modified; }
    [[nodiscard]] std::optional<FileIdentifier> identifier(Number file) const;

  private:
    static constexpr std::uint32_t kNone = UINT32_MAX;

    struct File {
        std::int64_t size;
        /// -1 for none.
        std::int64_t length;
        Date modified;
        std::uint64_t inode;
        TextArena::Position name;
        std::uint32_t folder;
        /// Into devices_, kNone for a file without identifier.
        std::uint32_t device;
    };
    struct Folder {
        /// Relative to the parent, of one or more components.
        TextArena::Position path;
        std::uint32_t parent;
    };
    /// A folder of which the walk may still be inside.
    struct OpenFolder {
        std::uint32_t number;
        std::size_t pathLength;
    };

    [[nodiscard]] std::uint32_t folderOf(std::string_view path);
    [[nodiscard]] std::uint32_t deviceNumber(std::uint64_t device);

    std::deque<File> files_;
    std::deque<Folder> folders_;
    std::vector<std::uint64_t> devices_;
    TextArena texts_;

    std::vector<OpenFolder> openFolders_;
    /// The path of the last one of them.
    std::string openPath_;
};

}  // namespace tavrin
