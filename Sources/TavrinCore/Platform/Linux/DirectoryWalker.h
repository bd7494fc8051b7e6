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
// - Its descriptors are few, however deep the tree: WalkLevels.h.
// - What is mounted below the root is looked up once, when the first folder is entered, in a table that the kernel has
//   in memory. Mounts that may wait are passed over by their path, before any call names them.
#pragma once

#include "TavrinCore/Platform/DirectoryWalk.h"
#include "TavrinCore/Platform/Linux/ListedEntry.h"
#include "TavrinCore/Platform/Linux/WalkCalls.h"
#include "TavrinCore/Platform/Linux/WalkLevels.h"

#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace tavrin {

/// How much a walk may hold. Tests take less, to be at the bounds soon.
struct WalkLimits {
    /// At least 4: see WalkLevels.
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

    /// Once. False when the visitor stopped it.
    bool run();

  private:
    bool openRoot();
    bool step();
    bool visit(const ListedEntry& listed);
    void enter(const PlacedEntry& entry);
    [[nodiscard]] bool mayWait(std::string_view name);
    bool leave();
    bool tellLeft(bool& again);

    bool refill(WalkLevel& level);
    void skipDots(WalkLevel& level);
    [[nodiscard]] std::string_view listing(const WalkLevel& level) const;
    std::size_t placeForListing();

    void fail(std::size_t pathLength, int error);
    void failEntry(const PlacedEntry& entry, int error);

    URL root_;
    WalkOptions options_;
    WalkVisitor& visitor_;
    WalkCalls& calls_;
    WalkLimits limits_;
    unsigned fields_;

    WalkLevels levels_;
    PlacedEntry entry_;
    std::unique_ptr<char[]> arena_;
    /// Below this index, the listings of levels are let go.
    std::size_t firstHeld_ = 0;
    /// Paths of mounts that aren't entered, from the first folder on that may be one.
    std::optional<std::vector<std::string>> waitingMounts_;
    /// Listings in a row that had nothing to visit.
    int fruitless_ = 0;
};

}  // namespace tavrin
