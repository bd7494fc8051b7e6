#include "TavrinCore/Platform/Linux/Trash.h"

#include "TavrinCore/Platform/Linux/LongPath.h"
#include "TavrinCore/Platform/Linux/Move.h"
#include "TavrinCore/Platform/Linux/TrashFolder.h"
#include "TavrinCore/Platform/Linux/TrashInfo.h"
#include "TavrinCore/Platform/Linux/TrashName.h"
#include "TavrinCore/Platform/ReadFile.h"

#include <fcntl.h>

#include <cerrno>
#include <ctime>
#include <optional>
#include <string>
#include <string_view>

namespace tavrin {
namespace {

/// Random names that are all taken mean that something else is wrong.
constexpr int kAttempts = 64;

/// A note is a path, thrice as long at most when it is encoded, and a date.
constexpr std::size_t kMostNoteBytes = std::size_t{16} << 20U;

std::string withName(const std::string& folder, std::string_view name) {
    return (folder == "/" ? folder : folder + "/") + std::string(name);
}

/// The note's place as seen from an item that lies directly in a Trash.
std::string infoBesideFiles(const HeldFile& held) {
    return "../info/" + held.name() + std::string(TrashInfo::suffix);
}

/// Whether `path` leads to that name in that folder, whatever links it goes through.
bool leadsInto(SystemCalls& calls, std::string_view path, const Descriptor& folder, std::string_view name) {
    if (lastComponent(path) != name) return false;
    const Result<Descriptor> noted = openFolder(calls, parentPath(path));
    if (!noted) return false;
    const Result<FileIdentity> there = identityOf(calls, *noted);
    const Result<FileIdentity> here = identityOf(calls, folder);
    return there && here && *there == *here;
}

/// False when the item's note tells of another origin: somebody emptied our item, and a namesake took its name. Without
/// a note that can be read, its place is all there is to go by.
bool cameFrom(SystemCalls& calls, const HeldFile& held, const Descriptor& folder, const URL& original) {
    if (lastComponent(held.realFolderPath()) != "files") return true;
    const URL root = URL::fromPath(std::string(parentPath(held.realFolderPath())), true);
    const URL noteURL =
        root.appendingPathComponent("info", true).appendingPathComponent(held.name() + std::string(TrashInfo::suffix));
    const Result<std::string> text = readSmallFile(noteURL, kMostNoteBytes);
    const std::optional<TrashInfo> note = text ? parseTrashInfo(*text) : std::nullopt;
    if (!note) return true;
    if (note->path.starts_with('/'))
        return note->path == original.path() || leadsInto(calls, note->path, folder, original.lastPathComponent());
    // A note in another mount's Trash tells the part of the path below the mount point.
    const auto tells = [&note](const std::string& path) { return path.ends_with("/" + note->path); };
    const Result<std::string> real = realPath(calls, folder, parentPath(original.path()));
    return tells(original.path()) || !real || tells(withName(*real, original.lastPathComponent()));
}

/// Moving what is in a Trash would part it from its note, and with the note goes its origin.
int refusalInsideTrash(SystemCalls& calls, const TrashFolder& trash, const HeldFile& held) {
    const FileIdentity& folder = held.folderIdentity();
    if (folder == trash.filesIdentity) return EALREADY;
    if (folder == trash.infoIdentity || folder == trash.rootIdentity) return EINVAL;
    if (lastComponent(held.realFolderPath()) != "files") return 0;
    struct statx status {};
    const bool noted =
        calls.status(held.folder().number(), infoBesideFiles(held).c_str(), AT_SYMLINK_NOFOLLOW, status) == 0;
    return noted ? EALREADY : 0;
}

struct Attempt {
    MoveEnd end;
    std::string name;
};

Attempt tryName(SystemCalls& calls, const TrashFolder& trash, const HeldFile& held, std::string name) {
    const std::string infoName = name + std::string(TrashInfo::suffix);
    const std::string text = trashInfoText(trash.itemPath, std::time(nullptr));
    if (const Outcome written = writeTrashInfo(calls, trash.info.number(), infoName, text); !written)
        return {{MoveEnd::Kind::refused, written.error().code}, std::move(name)};
    const MoveEnd end = moveHeld(calls, held, trash.files.number(), name);
    if (end.kind == MoveEnd::Kind::refused) (void)calls.unlink(trash.info.number(), infoName.c_str(), 0);
    return {end, std::move(name)};
}

}  // namespace

Result<URL> moveToTrash(SystemCalls& calls, const HeldFile& held) {
    const Result<TrashFolder> trash = TrashFolder::openFor(calls, held);
    if (!trash) return trash.error();
    if (const int refusal = refusalInsideTrash(calls, *trash, held); refusal != 0) return SystemError::posix(refusal);
    std::string name = trashName(held.name());
    bool namesAreShort = false;
    for (int attempt = 0; attempt < kAttempts; ++attempt) {
        const Attempt tried = tryName(calls, *trash, held, std::move(name));
        if (tried.end.kind == MoveEnd::Kind::moved)
            return URL::fromPath(trash->path, true)
                .appendingPathComponent("files")
                .appendingPathComponent(tried.name, held.identity().isFolder());
        const bool tooLong = tried.end.error == ENAMETOOLONG && !namesAreShort;
        if (tried.end.kind == MoveEnd::Kind::stranded || (tried.end.error != EEXIST && !tooLong))
            return SystemError::posix(tried.end.error);
        namesAreShort = namesAreShort || tooLong;
        name = namesAreShort ? shortTrashName() : uncommonTrashName(held.name());
    }
    return SystemError::posix(EEXIST);
}

Outcome moveOutOfTrash(SystemCalls& calls, const URL& trashed, const URL& original) {
    const std::string name(original.lastPathComponent());
    if (name == "/" || name == "." || name == "..") return SystemError::posix(EINVAL);
    const auto held = HeldFile::hold(calls, trashed);
    if (!held) return held.error();
    const Result<Descriptor> folder = openFolder(calls, parentPath(original.path()));
    if (!folder) return folder.error();
    if (!cameFrom(calls, **held, *folder, original)) return SystemError::posix(ENOENT);
    const MoveEnd end = moveHeld(calls, **held, folder->number(), name);
    if (end.kind != MoveEnd::Kind::moved) return SystemError::posix(end.error);
    removeTrashInfo(calls, **held);
    return success();
}

void removeTrashInfo(SystemCalls& calls, const HeldFile& held) {
    if (lastComponent(held.realFolderPath()) != "files") return;
    // A note that stays tells of nothing; the item has left, and that is what was asked.
    (void)calls.unlink(held.folder().number(), infoBesideFiles(held).c_str(), 0);
}

}  // namespace tavrin
