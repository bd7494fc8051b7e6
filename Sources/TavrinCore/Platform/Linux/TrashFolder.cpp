#include "TavrinCore/Platform/Linux/TrashFolder.h"

#include "TavrinCore/Platform/Folders.h"
#include "TavrinCore/Platform/Linux/LongPath.h"

#include <fcntl.h>
#include <unistd.h>

#include <cerrno>
#include <optional>
#include <string_view>

namespace tavrin {
namespace {

constexpr int kRealFolder = O_PATH | O_DIRECTORY | O_NOFOLLOW;

/// A real folder, no link, below an open one; made when it is missing.
Result<Descriptor> openOrMake(SystemCalls& calls, const Descriptor& folder, const char* name) {
    Descriptor found(calls.open(folder.number(), name, kRealFolder));
    if (found.isOpen()) return found;
    if (errno != ENOENT) return lastError();
    if (calls.makeFolder(folder.number(), name, S_IRWXU) != 0 && errno != EEXIST) return lastError();
    Descriptor made(calls.open(folder.number(), name, kRealFolder));
    if (!made.isOpen()) return lastError();
    return made;
}

/// The same, and this user's.
Result<Descriptor> openOrMakeOwn(SystemCalls& calls, const Descriptor& folder, const std::string& name) {
    Result<Descriptor> own = openOrMake(calls, folder, name.c_str());
    if (!own) return own;
    struct statx status {};
    if (calls.status(own->number(), "", AT_EMPTY_PATH, status) != 0) return lastError();
    if (status.stx_uid != ::geteuid()) return SystemError::posix(EPERM);
    return own;
}

Result<TrashFolder> openInside(SystemCalls& calls, const Descriptor& root, const HeldFile& held, std::string path) {
    Result<Descriptor> info = openOrMake(calls, root, "info");
    if (!info) return info.error();
    Result<Descriptor> files = openOrMake(calls, root, "files");
    if (!files) return files.error();
    const Result<FileIdentity> rootIdentity = identityOf(calls, root);
    if (!rootIdentity) return rootIdentity.error();
    const Result<FileIdentity> infoIdentity = identityOf(calls, *info);
    if (!infoIdentity) return infoIdentity.error();
    const Result<FileIdentity> filesIdentity = identityOf(calls, *files);
    if (!filesIdentity) return filesIdentity.error();
    if (!filesIdentity->sharesMountWith(held.folderIdentity())) return SystemError::posix(EXDEV);
    return TrashFolder{std::move(*files), std::move(*info), *rootIdentity, *filesIdentity,
                       *infoIdentity,     std::move(path),  std::string()};
}

/// Where the path lies, or would lie if it were made.
Result<FileIdentity> placeOf(SystemCalls& calls, std::string_view path) {
    Result<Descriptor> folder = openFolder(calls, path);
    while (!folder && folder.error().isPosix(ENOENT) && path != "/") {
        path = parentPath(path);
        folder = openFolder(calls, path);
    }
    if (!folder) return folder.error();
    return identityOf(calls, *folder);
}

/// Nil where the home's Trash lies on another mount.
std::optional<Result<TrashFolder>> openHomeTrash(SystemCalls& calls, const HeldFile& held) {
    const std::string path = applicationSupportFolder().appendingPathComponent("Trash").path();
    const Result<FileIdentity> place = placeOf(calls, path);
    // What can't be looked at now must not send the home's things to the top of the disk.
    if (!place) return place.error();
    if (!place->sharesMountWith(held.folderIdentity())) return std::nullopt;
    const Result<Descriptor> root = openOrMakeFolder(calls, path);
    if (!root) return root.error();
    Result<TrashFolder> trash = openInside(calls, *root, held, path);
    if (trash) trash->itemPath = held.realURL().path();
    return trash;
}

struct MountTop {
    Descriptor folder;
    std::string path;
};

/// Goes up by descriptor, so that no name is trusted on the way, and takes the names off the resolved path with it.
Result<MountTop> topOfMount(SystemCalls& calls, const HeldFile& held) {
    Descriptor folder(calls.open(held.folder().number(), ".", O_PATH | O_DIRECTORY));
    if (!folder.isOpen()) return lastError();
    FileIdentity here = held.folderIdentity();
    std::string_view path = held.realFolderPath();
    while (true) {
        Descriptor above(calls.open(folder.number(), "..", O_PATH | O_DIRECTORY));
        if (!above.isOpen()) return lastError();
        const Result<FileIdentity> identity = identityOf(calls, above);
        if (!identity) return identity.error();
        // The root's ".." is itself.
        if (!identity->sharesMountWith(here) || *identity == here)
            return MountTop{std::move(folder), std::string(path)};
        // A path that doesn't fit what is really above has changed since it was read.
        if (path == "/") return SystemError::posix(ESTALE);
        path = parentPath(path);
        folder = std::move(above);
        here = *identity;
    }
}

std::string pathBelow(const std::string& folder, std::string_view name) {
    return (folder == "/" ? std::string() : folder) + "/" + std::string(name);
}

/// An administrator's `.Trash`. Nil unless it is as the standard wants it, and ours inside it too.
std::optional<TrashFolder> openSharedTrash(SystemCalls& calls, const MountTop& top, const HeldFile& held) {
    const Descriptor shared(calls.open(top.folder.number(), ".Trash", kRealFolder));
    struct statx status {};
    if (!shared.isOpen() || calls.status(shared.number(), "", AT_EMPTY_PATH, status) != 0) return std::nullopt;
    if ((status.stx_mode & S_ISVTX) == 0) return std::nullopt;
    const std::string user = std::to_string(::geteuid());
    const Result<Descriptor> own = openOrMakeOwn(calls, shared, user);
    if (!own) return std::nullopt;
    Result<TrashFolder> trash = openInside(calls, *own, held, pathBelow(top.path, ".Trash/" + user));
    if (!trash) return std::nullopt;
    return std::move(*trash);
}

Result<TrashFolder> openOwnTrash(SystemCalls& calls, const MountTop& top, const HeldFile& held) {
    const std::string name = ".Trash-" + std::to_string(::geteuid());
    const Result<Descriptor> own = openOrMakeOwn(calls, top.folder, name);
    if (!own) return own.error();
    return openInside(calls, *own, held, pathBelow(top.path, name));
}

Result<TrashFolder> openMountTrash(SystemCalls& calls, const HeldFile& held) {
    const Result<MountTop> top = topOfMount(calls, held);
    if (!top) return top.error();
    std::optional<TrashFolder> shared = openSharedTrash(calls, *top, held);
    Result<TrashFolder> trash = shared ? Result<TrashFolder>(std::move(*shared)) : openOwnTrash(calls, *top, held);
    if (!trash) return trash;
    const std::string whole = pathBelow(held.realFolderPath(), held.name());
    trash->itemPath = whole.substr(top->path == "/" ? 1 : top->path.size() + 1);
    return trash;
}

}  // namespace

Result<TrashFolder> TrashFolder::openFor(SystemCalls& calls, const HeldFile& held) {
    std::optional<Result<TrashFolder>> home = openHomeTrash(calls, held);
    return home ? std::move(*home) : openMountTrash(calls, held);
}

}  // namespace tavrin
