#include "TavrinCore/Platform/Linux/DirectoryWalker.h"

#include "TavrinCore/Platform/Linux/MountOptions.h"
#include "TavrinCore/Platform/Linux/StatxStatus.h"

#include <algorithm>
#include <cerrno>

namespace tavrin {
namespace {

/// A file system that lists nothing but "." and ".." for ever would hold up a walk that nobody can cancel.
constexpr int kMostFruitless = 64;

/// What openat(2) says of an entry that is no folder any more.
bool hasVanished(int error) {
    return error == ENOENT || error == ENOTDIR || error == ELOOP || error == ESTALE;
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
      levels_(root, options.wantsLeft, calls, limits.descriptors),
      entry_(calls, levels_.path()),
      arena_(new char[limits.arenaBytes]) {}

bool DirectoryWalker::run() {
    if (!openRoot()) return true;
    while (!levels_.isEmpty()) {
        if (!step()) return false;
    }
    return true;
}

bool DirectoryWalker::openRoot() {
    forgetTheLastMount();
    const int error = levels_.openRoot(options_.rootLink);
    if (error != 0) visitor_.failed(root_, SystemError::posix(error));
    return error == 0;
}

/// One entry, or one folder left. False when the visitor stops.
bool DirectoryWalker::step() {
    WalkLevel& level = levels_.top();
    if (level.position == level.end && !refill(level)) return leave();
    const std::optional<ListedEntry> listed = readListedEntry(listing(level));
    if (!listed) {
        fail(level.pathLength, EIO);
        level.giveUp();
        return true;
    }
    level.position += listed->length;
    level.consumed = listed->next;
    return listed->isDots() || visit(*listed);
}

bool DirectoryWalker::visit(const ListedEntry& listed) {
    const WalkLevel& level = levels_.top();
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
        waitingMounts_ = calls_.waitingMounts(levels_.rootFolder());
        for (std::string& mount : *waitingMounts_)
            mount.insert(0, levels_.rootPath() + "/");
    }
    const std::string& path = levels_.path();
    return std::ranges::any_of(*waitingMounts_, [&](std::string_view mount) {
        return mount.size() == path.size() + 1 + name.size() && mount.starts_with(path) && mount[path.size()] == '/' &&
               mount.ends_with(name);
    });
}

void DirectoryWalker::enter(const PlacedEntry& entry) {
    if (mayWait(entry.name())) {
        // Who removes has to know what stays; who measures passes it over.
        if (options_.wantsLeft) failEntry(entry, EXDEV);
        return;
    }
    const int folder = levels_.openChild(entry.name().data());
    if (folder < 0) {
        if (!hasVanished(errno)) failEntry(entry, errno);
        return;
    }
    WalkLevel& level = levels_.top();
    skipDots(level);
    WalkLevel child;
    child.folder = folder;
    child.depth = level.depth + 1;
    if (level.isFinished() && !options_.wantsLeft) {
        child.begin = child.position = child.end = level.begin;
        levels_.replaceTop(child, entry.name());
        return;
    }
    child.begin = child.position = child.end = placeForListing();
    levels_.push(child, entry.name());
}

/// The folder on top is done. False when the visitor stops.
bool DirectoryWalker::leave() {
    fruitless_ = 0;
    bool again = false;
    if (options_.wantsLeft && levels_.count() > 1) {
        if (!tellLeft(again)) return false;
        if (again) return true;
    }
    levels_.pop();
    if (!levels_.isEmpty()) firstHeld_ = std::min(firstHeld_, levels_.count() - 1);
    return true;
}

bool DirectoryWalker::tellLeft(bool& again) {
    WalkLevel& done = levels_.top();
    // A folder that is finished is needed once more as well, to act on the one in it.
    levels_.reopenBelowTop();
    const WalkLevel& above = levels_.belowTop();
    const std::string name = levels_.takeName();
    entry_.place(above.folder, name, FileType::directory, above.depth, fields_);
    const LeaveStep next = visitor_.left(entry_);
    levels_.putName(name);
    again = next == LeaveStep::again && done.folder >= 0;
    if (again) {
        done.complete = false;
        done.mustSeek = true;
        done.consumed = 0;
        done.position = done.end = done.begin;
    }
    return next != LeaveStep::stop;
}

void DirectoryWalker::fail(std::size_t pathLength, int error) {
    const std::string_view path = std::string_view(levels_.path()).substr(0, pathLength);
    visitor_.failed(path.empty() ? URL() : URL::fromPath(path, true), SystemError::posix(error));
}

void DirectoryWalker::failEntry(const PlacedEntry& entry, int error) {
    visitor_.failed(entry.url(), SystemError::posix(error));
}

// Listings and the arena

std::string_view DirectoryWalker::listing(const WalkLevel& level) const {
    return {arena_.get() + level.position, level.end - level.position};
}

/// Asks for entries until there are some worth the while. False when there are no more.
bool DirectoryWalker::refill(WalkLevel& level) {
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

void DirectoryWalker::skipDots(WalkLevel& level) {
    while (level.position < level.end) {
        const std::optional<ListedEntry> listed = readListedEntry(listing(level));
        if (!listed || !listed->isDots()) return;
        level.position += listed->length;
        level.consumed = listed->next;
    }
}

/// Where a listing of one more folder goes: behind the others, or at the start, when they have to make room for it.
std::size_t DirectoryWalker::placeForListing() {
    const std::size_t begin = levels_.top().isFinished() ? levels_.top().begin : levels_.top().end;
    if (limits_.arenaBytes - begin >= limits_.listingBytes) return begin;
    for (std::size_t index = firstHeld_; index < levels_.count(); ++index) {
        WalkLevel& level = levels_[index];
        level.complete = level.isFinished();
        level.mustSeek = true;
        level.begin = level.position = level.end = 0;
    }
    firstHeld_ = levels_.count();
    return 0;
}

}  // namespace tavrin
