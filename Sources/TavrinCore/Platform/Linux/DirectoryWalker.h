// The walk behind walkDirectory, open to its neighbours in this folder and to their tests.
//
// How it stays small and quick:
// - A folder costs openat, getdents64 until it says the end (twice, for most), and close. An entry costs nothing: the
//   listing tells its type. Its status is one statx, by name relative to its folder, when the visitor asks.
// - The stack of the walk is a vector. All listings lie one behind the other in one arena: what is left of a folder's
//   listing stays there while its subfolders are walked. When the arena is full, the listings above are let go, and
//   each is asked for again from where it stood (lseek to the d_off of the last entry that was used) when the walk is
//   back.
// - A folder with nothing left to visit leaves the stack before its last subfolder is entered. So a chain of folders of
//   any length costs no more than its path.
// - When too many descriptors are open, the ones nearest to the root are closed. On the way back ".." leads there. It
// may
//   lead elsewhere, when somebody moved the tree meanwhile: then the folder isn't the one that was noted (device and
//   inode), and the walk looks for it by name from the root, without following links. When that fails too, the folder
//   is gone from the tree, and so is what was left of it.
// - What is mounted below the root is looked up once, when the first folder is entered, in a table that the kernel has
//   in memory. Mounts that may wait are passed over by their path, before any call names them.
#pragma once

#include "TavrinCore/Platform/DirectoryWalk.h"
#include "TavrinCore/Platform/Linux/ListedEntry.h"
#include "TavrinCore/Platform/Linux/WalkCalls.h"

#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace tavrin {

/// How much a walk may hold. Tests take less, to be at the bounds soon.
struct WalkLimits {
    /// At least 4: the root, a folder, the one above it and the one on the way.
    std::size_t descriptors = 64;
    /// What one getdents64 gets. At least 1 KiB, so that half of it takes the longest name.
    std::size_t listingBytes = std::size_t{64} * 1024;
    /// At least listingBytes. Only what is used of it is touched.
    std::size_t arenaBytes = std::size_t{2} * 1024 * 1024;
};

/// An entry with the descriptor of the folder that it is in.
class PlacedEntry final : public WalkEntry {
  public:
    explicit PlacedEntry(WalkCalls& calls, const std::string& folderPath) : calls_(calls), folderPath_(folderPath) {}

    void place(int folder, std::string_view name, FileType type, std::size_t depth, unsigned fields);
    /// False when it is gone.
    [[nodiscard]] bool resolveUnknownType();

    [[nodiscard]] URL url() const override;
    [[nodiscard]] const FileStatus* status() override;
    /// Open while the visitor looks; -1 in a call of `left` whose parent folder couldn't be found again.
    [[nodiscard]] int folder() const { return folder_; }

  private:
    enum class Asked : std::uint8_t {
        no,
        given,
        refused,
        vanished
    };

    void ask();

    WalkCalls& calls_;
    /// Of the folder that it is in, without a slash at the end; empty for "/".
    const std::string& folderPath_;
    int folder_ = -1;
    unsigned fields_ = 0;
    Asked asked_ = Asked::no;
    FileStatus status_;
};

/// For neighbours who act on an entry while it is visited or left: the descriptor of the folder that holds it. The name
/// is followed by a zero byte.
[[nodiscard]] inline int folderDescriptor(const WalkEntry& entry) {
    return static_cast<const PlacedEntry&>(entry).folder();
}

class DirectoryWalker {
  public:
    DirectoryWalker(const URL& root, const WalkOptions& options, WalkVisitor& visitor, WalkCalls& calls = walkCalls(),
                    const WalkLimits& limits = {});
    ~DirectoryWalker();
    DirectoryWalker(const DirectoryWalker&) = delete;
    DirectoryWalker& operator=(const DirectoryWalker&) = delete;

    /// Once. False when the visitor stopped it.
    bool run();

  private:
    /// A folder whose entries are being visited.
    struct Level {
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
    };

    bool openRoot();
    bool step();
    bool visit(const ListedEntry& listed);
    void enter(const PlacedEntry& entry);
    [[nodiscard]] bool mayWait(std::string_view name);
    bool leave();
    bool tellLeft(bool& again);

    bool refill(Level& level);
    void skipDots(Level& level);
    [[nodiscard]] std::string_view listing(const Level& level) const;
    std::size_t placeForListing();

    [[nodiscard]] int openFolder(int folder, const char* name, int flags);
    [[nodiscard]] int openChild(int folder, const char* name);
    void closeFolder(int folder);
    bool closeShallowest();
    void note(Level& level);
    [[nodiscard]] bool isNoted(const Level& level, int folder);
    void reopen(Level& level, int below, std::size_t up);
    [[nodiscard]] int openAbove(int folder, std::size_t up);
    [[nodiscard]] int openByNames(const Level& level);

    void giveUp(Level& level);
    void fail(std::size_t pathLength, int error);
    void failEntry(const PlacedEntry& entry, int error);

    URL root_;
    WalkOptions options_;
    WalkVisitor& visitor_;
    WalkCalls& calls_;
    WalkLimits limits_;
    unsigned fields_;

    /// The path of the folder on top; empty for "/". Grows and shrinks with the stack.
    std::string path_;
    PlacedEntry entry_;
    std::vector<Level> levels_;
    std::unique_ptr<char[]> arena_;
    /// Stays open to the end, as the place to look from.
    int rootFolder_ = -1;
    std::size_t open_ = 0;
    /// Below this index, levels are closed (but the root), and below the other, their listings are let go.
    std::size_t firstOpen_ = 0;
    std::size_t firstHeld_ = 0;
    /// Paths of mounts that aren't entered, from the first folder on that may be one.
    std::optional<std::vector<std::string>> waitingMounts_;
    /// Listings in a row that had nothing to visit.
    int fruitless_ = 0;
};

}  // namespace tavrin
