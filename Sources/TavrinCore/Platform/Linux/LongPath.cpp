#include "TavrinCore/Platform/Linux/LongPath.h"

#include <fcntl.h>

#include <array>
#include <cerrno>
#include <climits>
#include <optional>

namespace tavrin {
namespace {

constexpr int kFolder = O_PATH | O_DIRECTORY;
/// What one call is given at most; the zero byte at the end counts.
constexpr std::size_t kStep = PATH_MAX - 1;

/// Takes as many whole components off the front of `rest` as one call takes.
std::string takeStep(std::string_view& rest) {
    std::size_t length = rest.size();
    if (length > kStep) {
        length = rest.rfind('/', kStep);
        if (length == std::string_view::npos || length == 0) length = rest.size();
    }
    std::string step(rest.substr(0, length));
    rest.remove_prefix(length);
    while (rest.starts_with('/'))
        rest.remove_prefix(1);
    return step;
}

std::string takeComponent(std::string_view& rest) {
    while (rest.starts_with('/'))
        rest.remove_prefix(1);
    const std::size_t length = std::min(rest.find('/'), rest.size());
    std::string component(rest.substr(0, length));
    rest.remove_prefix(length);
    while (rest.starts_with('/'))
        rest.remove_prefix(1);
    return component;
}

Result<Descriptor> openStep(SystemCalls& calls, int folder, const std::string& step, int flags = kFolder) {
    Descriptor next(calls.open(folder, step.c_str(), flags));
    if (!next.isOpen()) return lastError();
    return next;
}

/// What the kernel says; it answers ENAMETOOLONG beyond a page.
Result<std::string> pathOfDescriptor(SystemCalls& calls, const Descriptor& folder) {
    std::array<char, PATH_MAX> buffer{};
    const std::string link = "/proc/self/fd/" + std::to_string(folder.number());
    const ssize_t length = calls.readLink(link.c_str(), buffer.data(), buffer.size());
    if (length < 0) return lastError();
    const std::string_view path(buffer.data(), static_cast<std::size_t>(length));
    // What lies outside this process' root is told with a note in front, "(unreachable)".
    if (!path.starts_with('/')) return SystemError::posix(ENOENT);
    return std::string(path);
}

/// Name by name from the root. A link deep down is resolved by the kernel as long as its place can be told.
Result<std::string> pathByNames(SystemCalls& calls, std::string_view rest) {
    Result<Descriptor> folder = openStep(calls, AT_FDCWD, "/");
    std::string path;
    while (folder && !rest.empty()) {
        const std::string name = takeComponent(rest);
        if (name.empty() || name == ".") continue;
        std::optional<Result<Descriptor>> next;
        if (name != "..") next = openStep(calls, folder->number(), name, kFolder | O_NOFOLLOW);
        if (next && *next) {
            path.append("/").append(name);
            folder = std::move(*next);
            continue;
        }
        folder = openStep(calls, folder->number(), name);
        if (!folder) break;
        Result<std::string> resolved = pathOfDescriptor(calls, *folder);
        if (!resolved) return resolved;
        path = *resolved == "/" ? std::string() : *resolved;
    }
    if (!folder) return folder.error();
    return path.empty() ? std::string("/") : path;
}

}  // namespace

SystemError lastError() {
    return SystemError::posix(errno);
}

std::string_view lastComponent(std::string_view path) {
    return path.substr(path.rfind('/') + 1);
}

std::string_view parentPath(std::string_view path) {
    const std::size_t slash = path.rfind('/');
    return slash == 0 ? path.substr(0, 1) : path.substr(0, slash);
}

Result<Descriptor> openFolder(SystemCalls& calls, std::string_view path) {
    Result<Descriptor> folder = openStep(calls, AT_FDCWD, takeStep(path));
    while (folder && !path.empty())
        folder = openStep(calls, folder->number(), takeStep(path));
    return folder;
}

Result<Descriptor> openOrMakeFolder(SystemCalls& calls, std::string_view path) {
    Result<Descriptor> whole = openFolder(calls, path);
    if (whole || !whole.error().isPosix(ENOENT)) return whole;
    Result<Descriptor> folder = openStep(calls, AT_FDCWD, "/");
    while (folder && !path.empty()) {
        const std::string name = takeComponent(path);
        if (name.empty()) continue;
        Result<Descriptor> next = openStep(calls, folder->number(), name);
        if (!next && next.error().isPosix(ENOENT)) {
            // Somebody else may have made it just now: what counts is whether it opens.
            if (calls.makeFolder(folder->number(), name.c_str(), S_IRWXU) != 0 && errno != EEXIST) return lastError();
            next = openStep(calls, folder->number(), name);
        }
        folder = std::move(next);
    }
    return folder;
}

Result<std::string> realPath(SystemCalls& calls, const Descriptor& folder, std::string_view pathUsed) {
    Result<std::string> path = pathOfDescriptor(calls, folder);
    if (path || !path.error().isPosix(ENAMETOOLONG)) return path;
    return pathByNames(calls, pathUsed);
}

Result<struct statx> statusOfPath(SystemCalls& calls, std::string_view path, int flags) {
    struct statx status {};
    if (path.size() <= kStep) {
        if (calls.status(AT_FDCWD, std::string(path).c_str(), flags, status) != 0) return lastError();
        return status;
    }
    const Result<Descriptor> folder = openFolder(calls, parentPath(path));
    if (!folder) return folder.error();
    if (calls.status(folder->number(), std::string(lastComponent(path)).c_str(), flags, status) != 0)
        return lastError();
    return status;
}

}  // namespace tavrin
