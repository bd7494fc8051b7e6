#include "TavrinCore/Platform/Linux/DirectoryWalker.h"

#include "TavrinCore/Platform/Linux/AnchoredPath.h"
#include "TavrinCore/Platform/Linux/MountOptions.h"
#include "TavrinCore/Platform/Linux/StatxStatus.h"

#include <fcntl.h>

#include <algorithm>
#include <cerrno>

namespace tavrin {
namespace {

constexpr int kFolderFlags = O_RDONLY | O_DIRECTORY | O_NONBLOCK | O_CLOEXEC;
/// A file system that lists nothing but "." and ".." for ever would hold up a walk that nobody can cancel.
constexpr int kMostFruitless = 64;

/// What openat(2) says of an entry that is no folder any more.
bool hasVanished(int error) {
    return error == ENOENT || error == ENOTDIR || error == ELOOP || error == ESTALE;
}

std::string pathBeforeNames(const URL& root) {
    return root.path() == "/" ? std::string() : root.path();
}

}  // namespace

bool walkDirectory(const URL& root, const WalkOptions& options, WalkVisitor& visitor) {
    return DirectoryWalker(root, options, visitor).run();
}

DirectoryWalker::DirectoryWalker(const URL& root, const WalkOptions& options, WalkVisitor& visitor, WalkCalls& calls,
                                 const WalkLimits& limits)
    : root_(root),
      options_(options),
      visitor_(visitor),
      calls_(calls),
      limits_(limits),
      fields_(kStatxSizes | (options.wantsDates ? kStatxDates : 0U) |
              (options.wantsIdentifier ? kStatxIdentifier : 0U)),
      path_(pathBeforeNames(root)),
      entry_(calls, path_),
      arena_(new char[limits.arenaBytes]) {}

DirectoryWalker::~DirectoryWalker() {
    for (const Level& level : levels_)
        closeFolder(level.folder);
    if (rootFolder_ >= 0) calls_.close(rootFolder_);
}

bool DirectoryWalker::run() {
    if (!openRoot()) return true;
    while (!levels_.empty()) {
        if (!step()) return false;
    }
    return true;
}

bool DirectoryWalker::openRoot() {
    forgetTheLastMount();
    const AnchoredPath path(root_.path());
    const int flags = options_.rootLink == LastLink::keep ? O_NOFOLLOW : 0;
    if (path.error() == 0) rootFolder_ = openFolder(path.folder(), path.name(), flags);
    if (rootFolder_ < 0) {
        visitor_.failed(root_, SystemError::posix(path.error() != 0 ? path.error() : errno));
        return false;
    }
    Level level;
    level.folder = rootFolder_;
    level.pathLength = path_.size();
    levels_.push_back(level);
    return true;
}

/// One entry, or one folder left. False when the visitor stops.
bool DirectoryWalker::step() {
    Level& level = levels_.back();
    if (level.position == level.end && !refill(level)) return leave();
    const std::optional<ListedEntry> listed = readListedEntry(listing(level));
    if (!listed) {
        fail(level.pathLength, EIO);
        giveUp(level);
        return true;
    }
    level.position += listed->length;
    level.consumed = listed->next;
    return listed->isDots() || visit(*listed);
}

bool DirectoryWalker::visit(const ListedEntry& listed) {
    const Level& level = levels_.back();
    fruitless_ = 0;
    entry_.place(level.folder, listed.name, listed.type, level.depth, fields_);
    if (listed.type == FileType::unknown && !entry_.resolveUnknownType()) return true;
    const WalkStep next = visitor_.visit(entry_);
    if (next == WalkStep::goOn && entry_.type() == FileType::directory) enter(entry_);
    return next != WalkStep::stop;
}

/// Whether a folder of this name, in the folder on top, is a mount that may keep the walk waiting.
bool DirectoryWalker::mayWait(std::string_view name) {
    if (!waitingMounts_) {
        waitingMounts_ = calls_.waitingMounts(rootFolder_);
        for (std::string& mount : *waitingMounts_)
            mount.insert(0, pathBeforeNames(root_) + "/");
    }
    return std::ranges::any_of(*waitingMounts_, [&](std::string_view mount) {
        return mount.size() == path_.size() + 1 + name.size() && mount.starts_with(path_) &&
               mount[path_.size()] == '/' && mount.ends_with(name);
    });
}

void DirectoryWalker::enter(const PlacedEntry& entry) {
    if (mayWait(entry.name())) {
        // Who removes has to know what stays; who measures passes it over.
        if (options_.wantsLeft) failEntry(entry, EXDEV);
        return;
    }
    Level& level = levels_.back();
    const int folder = openChild(level.folder, entry.name().data());
    if (folder < 0) {
        if (!hasVanished(errno)) failEntry(entry, errno);
        return;
    }
    ++open_;
    path_.append("/").append(entry.name());
    Level child;
    child.folder = folder;
    child.depth = level.depth + 1;
    child.pathLength = path_.size();
    skipDots(level);
    if (level.isFinished() && !options_.wantsLeft) {
        closeFolder(level.folder);
        child.begin = child.position = child.end = level.begin;
        level = child;
        return;
    }
    child.begin = child.position = child.end = placeForListing();
    levels_.push_back(child);
}

/// The folder on top is done. False when the visitor stops.
bool DirectoryWalker::leave() {
    fruitless_ = 0;
    bool again = false;
    if (options_.wantsLeft && levels_.size() > 1) {
        if (!tellLeft(again)) return false;
        if (again) return true;
    }
    const Level done = levels_.back();
    levels_.pop_back();
    if (!levels_.empty()) {
        Level& top = levels_.back();
        path_.resize(top.pathLength);
        firstHeld_ = std::min(firstHeld_, levels_.size() - 1);
        if (top.folder < 0 && !top.isFinished()) reopen(top, done.folder, done.depth - top.depth);
    }
    closeFolder(done.folder);
    return true;
}

bool DirectoryWalker::tellLeft(bool& again) {
    Level& done = levels_.back();
    Level& above = levels_[levels_.size() - 2];
    // What was noted of a folder that is finished holds as well: it is needed once more, to act on the one below.
    if (above.folder < 0) reopen(above, done.folder, 1);
    const std::string name = path_.substr(above.pathLength + 1);
    path_.resize(above.pathLength);
    entry_.place(above.folder, name, FileType::directory, above.depth, fields_);
    const LeaveStep next = visitor_.left(entry_);
    path_.append("/").append(name);
    again = next == LeaveStep::again && done.folder >= 0;
    if (again) {
        done.complete = false;
        done.mustSeek = true;
        done.consumed = 0;
        done.position = done.end = done.begin;
    }
    return next != LeaveStep::stop;
}

void DirectoryWalker::giveUp(Level& level) {
    level.complete = true;
    level.position = level.end;
}

void DirectoryWalker::fail(std::size_t pathLength, int error) {
    const std::string_view path = std::string_view(path_).substr(0, pathLength);
    visitor_.failed(path.empty() ? URL() : URL::fromPath(path, true), SystemError::posix(error));
}

void DirectoryWalker::failEntry(const PlacedEntry& entry, int error) {
    visitor_.failed(entry.url(), SystemError::posix(error));
}

// Listings and the arena

std::string_view DirectoryWalker::listing(const Level& level) const {
    return {arena_.get() + level.position, level.end - level.position};
}

/// Asks for entries until there are some worth the while. False when there are no more.
bool DirectoryWalker::refill(Level& level) {
    if (level.complete || level.folder < 0) return false;
    level.position = level.end = level.begin;
    if (level.mustSeek && calls_.seek(level.folder, level.consumed) < 0) {
        fail(level.pathLength, errno);
        return false;
    }
    level.mustSeek = false;
    const std::size_t room = std::min(limits_.listingBytes, limits_.arenaBytes - level.begin);
    if (++fruitless_ > kMostFruitless) {
        fail(level.pathLength, EIO);
        return false;
    }
    // Half a buffer that is filled means that the folder is large: no need to know of its end yet. Less means that this
    // may be all, and knowing it lets the folder go before its last subfolder is entered.
    while (level.end - level.begin < room / 2 && !level.complete) {
        const std::size_t used = level.end - level.begin;
        const ssize_t count = calls_.list(level.folder, arena_.get() + level.end, room - used);
        if (count < 0 && errno == EINTR) continue;
        if (count < 0 && errno != ENOENT) fail(level.pathLength, errno);
        level.complete = count <= 0;
        if (count > 0) level.end += static_cast<std::size_t>(count);
    }
    return level.end > level.begin;
}

void DirectoryWalker::skipDots(Level& level) {
    while (level.position < level.end) {
        const std::optional<ListedEntry> listed = readListedEntry(listing(level));
        if (!listed || !listed->isDots()) return;
        level.position += listed->length;
        level.consumed = listed->next;
    }
}

/// Where a listing of one more folder goes: behind the others, or at the start, when they have to make room for it.
std::size_t DirectoryWalker::placeForListing() {
    const std::size_t begin = levels_.back().isFinished() ? levels_.back().begin : levels_.back().end;
    if (limits_.arenaBytes - begin >= limits_.listingBytes) return begin;
    for (std::size_t index = firstHeld_; index < levels_.size(); ++index) {
        Level& level = levels_[index];
        level.complete = level.isFinished();
        level.mustSeek = true;
        level.begin = level.position = level.end = 0;
    }
    firstHeld_ = levels_.size();
    return 0;
}

// Descriptors

int DirectoryWalker::openFolder(int folder, const char* name, int flags) {
    int opened = -1;
    do {
        opened = calls_.open(folder, name, kFolderFlags | flags);
    } while (opened < 0 && errno == EINTR);
    return opened;
}

int DirectoryWalker::openChild(int folder, const char* name) {
    // The root, and the one on the way back, have their own.
    if (open_ + 3 > limits_.descriptors) closeShallowest();
    int opened = openFolder(folder, name, O_NOFOLLOW);
    while (opened < 0 && (errno == EMFILE || errno == ENFILE) && closeShallowest())
        opened = openFolder(folder, name, O_NOFOLLOW);
    return opened;
}

void DirectoryWalker::closeFolder(int folder) {
    if (folder < 0 || folder == rootFolder_) return;
    calls_.close(folder);
    --open_;
}

/// Never the one on top, which is in use. False when there is none to close.
bool DirectoryWalker::closeShallowest() {
    for (; firstOpen_ + 1 < levels_.size(); ++firstOpen_) {
        Level& level = levels_[firstOpen_];
        if (level.folder < 0 || level.folder == rootFolder_) continue;
        if (!level.isFinished() || options_.wantsLeft) note(level);
        closeFolder(level.folder);
        level.folder = -1;
        level.mustSeek = true;
        return true;
    }
    return false;
}

void DirectoryWalker::note(Level& level) {
    struct statx status {};
    int result = -1;
    do {
        result = calls_.status(level.folder, "", kStatxLook | AT_EMPTY_PATH, STATX_INO, status);
    } while (result != 0 && errno == EINTR);
    level.noted = result == 0;
    level.device = std::uint64_t{status.stx_dev_major} << 32U | status.stx_dev_minor;
    level.inode = status.stx_ino;
}

bool DirectoryWalker::isNoted(const Level& level, int folder) {
    if (folder < 0) return false;
    Level found;
    found.folder = folder;
    note(found);
    return level.noted && found.noted && found.device == level.device && found.inode == level.inode;
}

/// From a descriptor that is `up` folders below. Given up when it isn't there any more.
void DirectoryWalker::reopen(Level& level, int below, std::size_t up) {
    int folder = below >= 0 ? openAbove(below, up) : -1;
    if (!isNoted(level, folder)) {
        if (folder >= 0) calls_.close(folder);
        folder = openByNames(level);
        if (!isNoted(level, folder)) {
            if (folder >= 0) calls_.close(folder);
            giveUp(level);
            return;
        }
    }
    ++open_;
    level.folder = folder;
    firstOpen_ = std::min(firstOpen_, static_cast<std::size_t>(&level - levels_.data()));
}

int DirectoryWalker::openAbove(int folder, std::size_t up) {
    // What one call takes of "../../..", well below PATH_MAX.
    constexpr std::size_t most = 1'000;
    int current = folder;
    while (current >= 0 && up > 0) {
        const std::size_t count = std::min(up, most);
        std::string steps = "..";
        for (std::size_t i = 1; i < count; ++i)
            steps.append("/..");
        const int next = openFolder(current, steps.c_str(), 0);
        if (current != folder) calls_.close(current);
        current = next;
        up -= count;
    }
    return current;
}

int DirectoryWalker::openByNames(const Level& level) {
    int current = rootFolder_;
    std::string_view names = std::string_view(path_).substr(0, level.pathLength);
    names.remove_prefix(pathBeforeNames(root_).size());
    while (current >= 0 && !names.empty()) {
        names.remove_prefix(1);
        const std::string name(names.substr(0, names.find('/')));
        names.remove_prefix(name.size());
        const int next = openFolder(current, name.c_str(), O_NOFOLLOW);
        if (current != rootFolder_) calls_.close(current);
        current = next;
    }
    return current == rootFolder_ ? -1 : current;
}

}  // namespace tavrin
