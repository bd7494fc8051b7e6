#include "TavrinCore/Platform/Linux/HeldFile.h"

#include "TavrinCore/Platform/Folders.h"
#include "TavrinCore/Platform/Linux/LongPath.h"

#include <fcntl.h>

#include <cerrno>
#include <string_view>
#include <utility>

namespace tavrin {
namespace {

bool liesBelow(std::string_view path, std::string_view folder) {
    return path.starts_with(folder) && (path.size() == folder.size() || path[folder.size()] == '/');
}

/// The rules know the home by HOME's spelling. Where that goes through a link (/home -> /usr/home), the resolved path
/// is told below HOME again: otherwise it would look like a place of the system.
std::string spelledBelowHome(SystemCalls& calls, std::string path) {
    const std::string home = homeFolder().path();
    if (liesBelow(path, home)) return path;
    const Result<Descriptor> folder = openFolder(calls, home);
    if (!folder) return path;
    const Result<std::string> realHome = realPath(calls, *folder, home);
    if (!realHome || *realHome == "/" || !liesBelow(path, *realHome)) return path;
    return home + path.substr(realHome->size());
}

URL below(const std::string& folder, const std::string& name, bool isDirectory) {
    return URL::fromPath(folder, true).appendingPathComponent(name, isDirectory);
}

}  // namespace

Result<FileIdentity> identityOf(SystemCalls& calls, const Descriptor& descriptor) {
    struct statx status {};
    if (calls.status(descriptor.number(), "", AT_EMPTY_PATH, status) != 0) return lastError();
    return identityIn(status);
}

HeldFile::HeldFile(const URL& url, URL realURL, Parts parts)
    : HeldItem(url, std::move(realURL)),
      folder_(std::move(parts.folder)),
      item_(std::move(parts.item)),
      folderIdentity_(parts.folderIdentity),
      identity_(parts.identity),
      name_(url.lastPathComponent()),
      realFolderPath_(std::move(parts.realFolderPath)) {}

Result<std::unique_ptr<HeldFile>> HeldFile::hold(SystemCalls& calls, const URL& url) {
    const std::string name(url.lastPathComponent());
    if (name == "/" || name == "." || name == "..") return SystemError::posix(EINVAL);
    const std::string_view folderPath = parentPath(url.path());
    Result<Descriptor> folder = openFolder(calls, folderPath);
    if (!folder) return folder.error();
    Descriptor item(calls.open(folder->number(), name.c_str(), O_PATH | O_NOFOLLOW));
    if (!item.isOpen()) return lastError();
    const Result<FileIdentity> folderIdentity = identityOf(calls, *folder);
    if (!folderIdentity) return folderIdentity.error();
    const Result<FileIdentity> identity = identityOf(calls, item);
    if (!identity) return identity.error();
    Result<std::string> resolved = realPath(calls, *folder, folderPath);
    if (!resolved) return resolved.error();
    const std::string spelled = spelledBelowHome(calls, *resolved);
    URL realURL = spelled == folderPath ? url : below(spelled, name, url.hasDirectoryPath());
    return std::unique_ptr<HeldFile>(
        new HeldFile(url, std::move(realURL),
                     {std::move(*folder), std::move(item), *folderIdentity, *identity, std::move(*resolved)}));
}

bool HeldFile::isItem(SystemCalls& calls, int folder, const std::string& name) const {
    struct statx status {};
    return calls.status(folder, name.c_str(), AT_SYMLINK_NOFOLLOW, status) == 0 && identityIn(status) == identity_;
}

Outcome HeldFile::checkUnchanged(SystemCalls& calls) const {
    const Result<Descriptor> now = openFolder(calls, parentPath(url().path()));
    if (!now) return now.error();
    const Result<FileIdentity> folderNow = identityOf(calls, *now);
    if (!folderNow) return folderNow.error();
    if (*folderNow != folderIdentity_) return SystemError::posix(ESTALE);
    struct statx status {};
    if (calls.status(folder_.number(), name_.c_str(), AT_SYMLINK_NOFOLLOW, status) != 0) return lastError();
    if (identityIn(status) != identity_) return SystemError::posix(ESTALE);
    return success();
}

}  // namespace tavrin
