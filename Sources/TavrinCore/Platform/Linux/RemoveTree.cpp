// Down by name and up by "..", with one folder open at a time: a chain of any depth needs no more, and the stack holds
// no more than the names of the folders that still wait.
#include "TavrinCore/Platform/Linux/RemoveTree.h"

#include "TavrinCore/Platform/Linux/LongPath.h"

#include <dirent.h>
#include <fcntl.h>
#include <unistd.h>

#include <cerrno>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace tavrin {
namespace {

class TreeRemoval {
  public:
    TreeRemoval(SystemCalls& calls, const HeldFile& held) : calls_(calls), held_(held) {}

    Outcome run() {
        if (!enter(held_.folder().number(), held_.name())) return result();
        while (!stack_.empty() && step()) {
        }
        return result();
    }

  private:
    /// A folder that is being emptied.
    struct Level {
        std::string name;
        FileIdentity identity;
        /// Folders in it that are not gone yet.
        std::vector<std::string> waiting;
    };

    /// Keeps the first refusal: those that follow from it say less.
    void note(int error) {
        if (firstError_ == 0 && error != 0) firstError_ = error;
    }
    Outcome result() const { return firstError_ == 0 ? success() : SystemError::posix(firstError_); }

    /// One folder down, or one up. False when the way is lost.
    bool step() {
        Level& level = stack_.back();
        if (level.waiting.empty()) return leave();
        const std::string next = std::move(level.waiting.back());
        level.waiting.pop_back();
        enter(current_.number(), next);
        return true;
    }

    bool enter(int folder, const std::string& name) {
        const Descriptor path(calls_.open(folder, name.c_str(), O_PATH | O_DIRECTORY | O_NOFOLLOW));
        struct statx status {};
        if (!path.isOpen() || calls_.status(path.number(), "", AT_EMPTY_PATH, status) != 0) return refuse(errno);
        const FileIdentity identity = identityIn(status);
        // Below a mount point lies another file system, which nobody asked to empty.
        if (!identity.sharesMountWith(held_.identity())) return refuse(EXDEV);
        if (stack_.empty() && identity != held_.identity()) return refuse(ESTALE);
        allowOwner(path, status);
        Descriptor opened(calls_.open(path.number(), ".", O_RDONLY | O_DIRECTORY));
        if (!opened.isOpen()) return refuse(errno);
        current_ = std::move(opened);
        stack_.push_back({name, identity, {}});
        removeFiles();
        return true;
    }

    bool refuse(int error) {
        note(error);
        return false;
    }

    /// A folder that its owner may not write to can't be emptied. It is about to go: its mode needn't be kept.
    void allowOwner(const Descriptor& path, const struct statx& status) {
        if ((status.stx_mode & S_IRWXU) == S_IRWXU || status.stx_uid != ::geteuid()) return;
        if (calls_.setMode(path.number(), (status.stx_mode & 07777U) | S_IRWXU) != 0) note(errno);
    }

    /// Everything in the current folder but the folders, which are written down.
    void removeFiles() {
        const std::unique_ptr<DIR, int (*)(DIR*)> listing(openListing(), ::closedir);
        if (listing == nullptr) return note(errno);
        while (const dirent* entry = ::readdir(listing.get())) {
            const std::string_view name = entry->d_name;
            if (name == "." || name == "..") continue;
            if (entry->d_type != DT_DIR && calls_.unlink(current_.number(), entry->d_name, 0) == 0) continue;
            if (entry->d_type == DT_DIR || errno == EISDIR) {
                stack_.back().waiting.emplace_back(name);
            } else if (errno != ENOENT) {
                note(errno);
            }
        }
    }

    DIR* openListing() {
        Descriptor copy(calls_.open(current_.number(), ".", O_RDONLY | O_DIRECTORY));
        if (!copy.isOpen()) return nullptr;
        DIR* listing = ::fdopendir(copy.number());
        if (listing != nullptr) (void)copy.release();
        return listing;
    }

    bool leave() {
        const std::string name = std::move(stack_.back().name);
        stack_.pop_back();
        if (stack_.empty()) return removeFolder(held_.folder().number(), name);
        Descriptor above(calls_.open(current_.number(), "..", O_RDONLY | O_DIRECTORY));
        if (!above.isOpen()) return refuse(errno);
        const Result<FileIdentity> identity = identityOf(calls_, above);
        if (!identity) return refuse(identity.error().code);
        // Somebody moved the folder out of the tree meanwhile. What is above it now is none of ours.
        if (*identity != stack_.back().identity) return refuse(ESTALE);
        current_ = std::move(above);
        return removeFolder(current_.number(), name);
    }

    bool removeFolder(int folder, const std::string& name) {
        if (calls_.unlink(folder, name.c_str(), AT_REMOVEDIR) != 0 && errno != ENOENT) note(errno);
        return true;
    }

    SystemCalls& calls_;
    const HeldFile& held_;
    Descriptor current_;
    std::vector<Level> stack_;
    int firstError_ = 0;
};

}  // namespace

Outcome removeHeld(SystemCalls& calls, const HeldFile& held) {
    if (Outcome unchanged = held.checkUnchanged(calls); !unchanged) return unchanged;
    if (held.identity().isFolder()) return TreeRemoval(calls, held).run();
    if (calls.unlink(held.folder().number(), held.name().c_str(), 0) != 0) return lastError();
    return success();
}

}  // namespace tavrin
