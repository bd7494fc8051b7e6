#include "TavrinCore/Platform/Linux/Move.h"

#include <fcntl.h>
#include <unistd.h>

#include <cerrno>
#include <cstdio>
#include <optional>

namespace tavrin {
namespace {

/// One name in one folder.
struct Place {
    int folder;
    const std::string& name;
};

/// rename(2) where the file system doesn't know RENAME_NOREPLACE (NFS, some in user space). Two names for a moment are
/// the price for a file. A folder has no second name; rename(2) refuses to put it over anything but an empty folder.
int renameWithoutFlag(SystemCalls& calls, Place from, Place to, bool isFolder) {
    if (!isFolder) {
        if (calls.link(from.folder, from.name.c_str(), to.folder, to.name.c_str()) != 0) return -1;
        if (calls.unlink(from.folder, from.name.c_str(), 0) == 0) return 0;
        const int error = errno;
        if (calls.unlink(to.folder, to.name.c_str(), 0) != 0) return 0;
        errno = error;
        return -1;
    }
    struct statx occupant {};
    if (calls.status(to.folder, to.name.c_str(), AT_SYMLINK_NOFOLLOW, occupant) == 0) {
        errno = EEXIST;
        return -1;
    }
    if (errno != ENOENT) return -1;
    return calls.rename(from.folder, from.name.c_str(), to.folder, to.name.c_str(), 0);
}

int renameOverNothing(SystemCalls& calls, Place from, Place to, bool isFolder) {
    const int result = calls.rename(from.folder, from.name.c_str(), to.folder, to.name.c_str(), RENAME_NOREPLACE);
    if (result == 0 || (errno != EINVAL && errno != ENOSYS)) return result;
    return renameWithoutFlag(calls, from, to, isFolder);
}

/// The mode to come back to, when taking away this folder's write protection could help and can be undone exactly: a
/// set-group-id bit is lost in chmod(2) by one who isn't in the group.
std::optional<mode_t> liftableMode(SystemCalls& calls, const HeldFile& held) {
    struct statx status {};
    if (!held.identity().isFolder() || calls.status(held.item().number(), "", AT_EMPTY_PATH, status) != 0)
        return std::nullopt;
    if (status.stx_uid != ::geteuid() || (status.stx_mode & S_IWUSR) != 0) return std::nullopt;
    const bool isInGroup = status.stx_gid == ::getegid() || ::group_member(status.stx_gid) != 0;
    if ((status.stx_mode & S_ISGID) != 0 && !isInGroup) return std::nullopt;
    return status.stx_mode & 07777U;
}

int renameProtected(SystemCalls& calls, const HeldFile& held, Place from, Place to, bool isFolder) {
    const int result = renameOverNothing(calls, from, to, isFolder);
    if (result == 0 || errno != EACCES) return result;
    const std::optional<mode_t> mode = liftableMode(calls, held);
    if (!mode || calls.setMode(held.item().number(), *mode | S_IWUSR) != 0) {
        errno = EACCES;
        return -1;
    }
    const int second = renameOverNothing(calls, from, to, isFolder);
    const int error = errno;
    // The mode is part of what is kept: one failure isn't taken for an answer.
    if (calls.setMode(held.item().number(), *mode) != 0) (void)calls.setMode(held.item().number(), *mode);
    errno = error;
    return second;
}

/// A server may have done what it then reports as failed. Only what the names say counts.
bool movedAllTheSame(SystemCalls& calls, const HeldFile& held, Place to) {
    return held.isItem(calls, to.folder, to.name) && !held.isItem(calls, held.folder().number(), held.name());
}

}  // namespace

MoveEnd moveHeld(SystemCalls& calls, const HeldFile& held, int folder, const std::string& name) {
    using enum MoveEnd::Kind;
    if (const Outcome unchanged = held.checkUnchanged(calls); !unchanged) return {refused, unchanged.error().code};
    const Place from{held.folder().number(), held.name()};
    const Place to{folder, name};
    if (renameProtected(calls, held, from, to, held.identity().isFolder()) != 0) {
        const int error = errno;
        if (error == EEXIST || !movedAllTheSame(calls, held, to)) return {refused, error};
    }
    struct statx arrived {};
    const bool isKnown = calls.status(to.folder, to.name.c_str(), AT_SYMLINK_NOFOLLOW, arrived) == 0;
    const FileIdentity identity = isKnown ? identityIn(arrived) : held.identity();
    if (isKnown && identity == held.identity()) return {};
    // Somebody exchanged it between the check and the move, so it was never judged: back with it.
    if (renameProtected(calls, held, to, from, identity.isFolder()) == 0) return {refused, ESTALE};
    return {stranded, ESTALE};
}

}  // namespace tavrin
