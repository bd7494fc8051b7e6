// The one walker of this program: whoever reads directories, reads them through here.
//
// A walk goes depth first, a folder before what lies in it, in the order in which the file system lists. Links are
// never followed, so no loop can catch it; other file systems mounted below are walked like folders, since what a user
// sees in a folder counts. But one that may keep the walk waiting for a server is visited and not entered: nobody could
// cancel that. The root may be such a one, it was asked for. Only folders are opened. Trees may be of any depth and
// width, and may change meanwhile: what vanished is passed over in silence, and a folder that was swapped for a link or
// moved away never leads out of the tree.
//
// A walk holds at most 64 descriptors and a few megabytes of memory, whatever the tree.
#pragma once

#include "TavrinCore/Models/URL.h"
#include "TavrinCore/Platform/FileStatus.h"
#include "TavrinCore/Platform/SystemError.h"

#include <cstddef>
#include <cstdint>
#include <string_view>

namespace tavrin {

/// One entry, as long as the visitor looks at it.
class WalkEntry {
  public:
    /// The bytes of the name; never empty, never with a slash in it.
    [[nodiscard]] std::string_view name() const { return name_; }
    /// As the listing told it: costs nothing. `unknown` only where even a request for the status was refused.
    [[nodiscard]] FileType type() const { return type_; }
    /// 1 for what lies right in the root.
    [[nodiscard]] std::size_t depth() const { return depth_; }
    [[nodiscard]] bool isHidden() const { return name_.starts_with('.'); }

    /// Made when asked for. Marked as a directory when the entry is one.
    [[nodiscard]] virtual URL url() const = 0;
    /// One request the first time, none after. Its type is the truth when it differs from type(): the entry was
    /// replaced meanwhile. Nil when it vanished, or when the folder lets nobody look.
    [[nodiscard]] virtual const FileStatus* status() = 0;

  protected:
    WalkEntry() = default;
    ~WalkEntry() = default;
    WalkEntry(const WalkEntry&) = default;
    WalkEntry& operator=(const WalkEntry&) = default;

    std::string_view name_;
    FileType type_ = FileType::unknown;
    std::size_t depth_ = 0;
};

enum class WalkStep : std::uint8_t {
    goOn,
    /// Don't enter this folder. The same as goOn for anything else.
    skip,
    /// End the walk.
    stop,
};

enum class LeaveStep : std::uint8_t {
    goOn,
    /// Walk the folder once more from its beginning: it isn't what it should be yet. The visitor sees to it that this
    /// comes to an end.
    again,
    stop,
};

/// What a walk tells, on the thread that walks. An exception passes through and ends the walk.
class WalkVisitor {
  public:
    virtual ~WalkVisitor() = default;

    virtual WalkStep visit(WalkEntry& entry) = 0;
    /// A folder that can't be listed, or not to its end; the root too. The walk goes on.
    virtual void failed(const URL& folder, const SystemError& error) = 0;
    /// All that lies in `folder` is behind. Told when WalkOptions asks for it; not for the root, nor for a folder that
    /// was skipped or couldn't be entered.
    virtual LeaveStep left(WalkEntry& /*folder*/) { return LeaveStep::goOn; }

  protected:
    WalkVisitor() = default;
    WalkVisitor(const WalkVisitor&) = default;
    WalkVisitor& operator=(const WalkVisitor&) = default;
};

struct WalkOptions {
    /// A root that is a link to a folder is walked as that folder. Else it is no folder, and fails.
    LastLink rootLink = LastLink::keep;
    /// The status of an entry has its dates.
    bool wantsDates = false;
    /// The status of an entry has its identifier.
    bool wantsIdentifier = false;
    /// The visitor is told when a folder is left.
    bool wantsLeft = false;
};

/// False when the visitor stopped it.
bool walkDirectory(const URL& root, const WalkOptions& options, WalkVisitor& visitor);

}  // namespace tavrin
