// The folders from the root of a walk to where it is, and the descriptors that they hold.
//
// When too many descriptors are open, the ones nearest to the root are closed. On the way back ".." leads there. It may
// lead elsewhere, when somebody moved the tree meanwhile: then the folder isn't the one that was noted (device and
// inode), and it is looked for by name from the root, without following links. When that fails too, the folder is gone
// from the tree, and so is what was left of it.
#pragma once

#include "TavrinCore/Models/URL.h"
#include "TavrinCore/Platform/FileStatus.h"
#include "TavrinCore/Platform/Linux/WalkCalls.h"

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace tavrin {

/// A folder whose entries are being visited.
struct WalkLevel {
    /// -1 while it is closed, and when it was given up.
    int folder = -1;
    /// The listing came to its end.
    bool complete = false;
    /// The descriptor doesn't stand behind what is in the arena.
    bool mustSeek = false;
    /// Device and inode, noted when it was closed.
    bool noted = false;
    std::uint64_t device = 0;
    std::uint64_t inode = 0;
    /// Of its entries.
    std::size_t depth = 1;
    std::size_t pathLength = 0;
    /// Its listing in the arena: where it begins, what is left of it.
    std::size_t begin = 0;
    std::size_t position = 0;
    std::size_t end = 0;
    /// d_off of the last entry that was used.
    std::int64_t consumed = 0;

    [[nodiscard]] bool isFinished() const { return complete && position == end; }
    void giveUp() {
        complete = true;
        position = end;
    }
};

/// For one thread, as the walk is.
class WalkLevels {
  public:
    /// With needsFinished, a level with nothing left to visit can be found again as well. `mostOpen` is at least 4: the
    /// root, a folder, the one above it and the one on the way.
    WalkLevels(const URL& root, bool needsFinished, WalkCalls& calls, std::size_t mostOpen);
    ~WalkLevels();
    WalkLevels(const WalkLevels&) = delete;
    WalkLevels& operator=(const WalkLevels&) = delete;

    /// Makes the root the first level. 0, or the errno why it can't be listed.
    [[nodiscard]] int openRoot(LastLink link);
    /// Opens a folder in the one on top, which isn't followed when it is a link; -1 and errno when it can't be.
    [[nodiscard]] int openChild(const char* name);
    /// The level, with a descriptor of openChild, goes on top, or in the place of the one on top.
    void push(WalkLevel level, std::string_view name);
    void replaceTop(WalkLevel level, std::string_view name);
    /// Opens the next one again when there is something left to visit in it.
    void pop();
    /// Opens the level below the one on top again, when it was closed. It may be given up.
    void reopenBelowTop();

    [[nodiscard]] bool isEmpty() const { return levels_.empty(); }
    [[nodiscard]] std::size_t count() const { return levels_.size(); }
    [[nodiscard]] WalkLevel& operator[](std::size_t index) { return levels_[index]; }
    [[nodiscard]] WalkLevel& top() { return levels_.back(); }
    [[nodiscard]] WalkLevel& belowTop() { return levels_[levels_.size() - 2]; }

    /// Without a slash at its end; empty for "/".
    [[nodiscard]] const std::string& rootPath() const { return rootPath_; }
    /// Of the root, open to the end, as the place to look from; -1 when it couldn't be opened.
    [[nodiscard]] int rootFolder() const { return rootFolder_; }
    /// The path of the folder on top, without a slash at its end; empty for "/". Grows and shrinks with the levels.
    [[nodiscard]] const std::string& path() const { return path_; }
    /// Takes the last name off the path for a while, and puts it back.
    [[nodiscard]] std::string takeName();
    void putName(std::string_view name);

  private:
    [[nodiscard]] int open(int folder, const char* name, int flags);
    void close(int folder);
    bool closeShallowest();
    void note(WalkLevel& level);
    [[nodiscard]] bool isNoted(const WalkLevel& level, int folder);
    void reopen(WalkLevel& level, int below, std::size_t up);
    [[nodiscard]] int openAbove(int folder, std::size_t up);
    [[nodiscard]] int openByNames(const WalkLevel& level);

    WalkCalls& calls_;
    std::size_t mostOpen_;
    bool needsFinished_;
    std::string rootPath_;
    std::string path_;
    std::vector<WalkLevel> levels_;
    int rootFolder_ = -1;
    std::size_t open_ = 0;
    /// Below this index, levels are closed (but the root).
    std::size_t firstOpen_ = 0;
};

}  // namespace tavrin
