// A tree is removed while it is walked: files when they are met, a folder when it is left.
#include "TavrinCore/Platform/Linux/RemoveTree.h"

#include "TavrinCore/Platform/Linux/DirectoryWalker.h"
#include "TavrinCore/Platform/Linux/LongPath.h"

#include <fcntl.h>
#include <unistd.h>

#include <cerrno>

namespace tavrin {
namespace {

/// Some file systems skip entries of a folder that loses others while it is listed, and others may write into the tree
/// meanwhile. What is left then is walked once more, this many times at most.
constexpr int kMostPasses = 8;

/// Opens folders for a removal: held for their path alone first, so that what is checked is what is listed.
class RemovalCalls final : public WalkCalls {
  public:
    RemovalCalls(SystemCalls& calls, const HeldFile& held) : calls_(calls), held_(held) {}

    /// The first folder is the item that is held, whatever stands at its path by now.
    int open(int folder, const char* name, int flags) override {
        const bool isRoot = !rootIsOpen_;
        const Descriptor path(calls_.open(isRoot ? held_.folder().number() : folder,
                                          isRoot ? held_.name().c_str() : name, O_PATH | O_DIRECTORY | O_NOFOLLOW));
        struct statx status {};
        if (!path.isOpen() || calls_.status(path.number(), "", AT_EMPTY_PATH, status) != 0) return -1;
        const FileIdentity identity = identityIn(status);
        // Below a mount point lies another file system, which nobody asked to empty.
        if (!identity.sharesMountWith(held_.identity())) return refuse(EXDEV);
        if (isRoot && identity != held_.identity()) return refuse(ESTALE);
        allowOwner(path, status);
        const int opened = calls_.open(path.number(), ".", flags & ~O_NOFOLLOW);
        rootIsOpen_ = rootIsOpen_ || opened >= 0;
        return opened;
    }

    [[nodiscard]] bool rootIsOpen() const { return rootIsOpen_; }

  private:
    static int refuse(int error) {
        errno = error;
        return -1;
    }

    /// A folder that its owner may not write to can't be emptied. It is about to go: its mode needn't be kept. Where
    /// even that is refused, what lies in it will be refused too, and told.
    void allowOwner(const Descriptor& path, const struct statx& status) {
        if ((status.stx_mode & S_IRWXU) == S_IRWXU || status.stx_uid != ::geteuid()) return;
        (void)calls_.setMode(path.number(), (status.stx_mode & 07777U) | S_IRWXU);
    }

    SystemCalls& calls_;
    const HeldFile& held_;
    bool rootIsOpen_ = false;
};

class TreeRemoval final : public WalkVisitor {
  public:
    TreeRemoval(SystemCalls& calls, const HeldFile& held) : calls_(calls), held_(held) {}

    Outcome run() {
        for (int passes = 0; passes < kMostPasses; ++passes) {
            firstError_ = 0;
            removed_ = 0;
            pass();
            const bool hasHope = removed_ > 0 || isNotEmpty(firstError_);
            if (!leftSomething_ || !hasHope) break;
        }
        return firstError_ == 0 ? success() : SystemError::posix(firstError_);
    }

  private:
    void pass() {
        leftSomething_ = false;
        RemovalCalls walkCalls(calls_, held_);
        DirectoryWalker(held_.url(), {.wantsLeft = true}, *this, walkCalls).run();
        if (walkCalls.rootIsOpen()) removeEntry(held_.folder().number(), held_.name().c_str(), AT_REMOVEDIR);
    }

    WalkStep visit(WalkEntry& entry) override {
        if (entry.type() != FileType::directory) removeEntry(folderDescriptor(entry), entry.name().data(), 0);
        return WalkStep::goOn;
    }
    LeaveStep left(WalkEntry& folder) override {
        // Somebody moved the tree meanwhile: what is above the folder now is none of ours.
        if (folderDescriptor(folder) < 0) {
            note(ESTALE);
        } else {
            removeEntry(folderDescriptor(folder), folder.name().data(), AT_REMOVEDIR);
        }
        return LeaveStep::goOn;
    }
    void failed(const URL& /*folder*/, const SystemError& error) override { note(error.code); }

    void removeEntry(int folder, const char* name, int flags) {
        if (calls_.unlink(folder, name, flags) == 0) {
            ++removed_;
        } else if (errno != ENOENT) {
            leftSomething_ = leftSomething_ || isNotEmpty(errno);
            note(errno);
        }
    }

    /// What the system says of a folder that holds something still, or of a file that became one.
    static bool isNotEmpty(int error) { return error == ENOTEMPTY || error == EEXIST || error == EISDIR; }

    /// Keeps the first refusal: those that follow from it say less.
    void note(int error) {
        if (firstError_ == 0) firstError_ = error;
    }

    SystemCalls& calls_;
    const HeldFile& held_;
    int firstError_ = 0;
    std::int64_t removed_ = 0;
    bool leftSomething_ = false;
};

}  // namespace

Outcome removeHeld(SystemCalls& calls, const HeldFile& held) {
    if (Outcome unchanged = held.checkUnchanged(calls); !unchanged) return unchanged;
    if (held.identity().isFolder()) return TreeRemoval(calls, held).run();
    if (calls.unlink(held.folder().number(), held.name().c_str(), 0) != 0) return lastError();
    return success();
}

}  // namespace tavrin
