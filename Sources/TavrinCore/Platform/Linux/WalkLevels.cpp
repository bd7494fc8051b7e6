#include "TavrinCore/Platform/Linux/WalkLevels.h"

#include "TavrinCore/Platform/Linux/AnchoredPath.h"
#include "TavrinCore/Platform/Linux/StatxStatus.h"

#include <fcntl.h>

#include <algorithm>
#include <cerrno>

namespace tavrin {
namespace {

constexpr int kFolderFlags = O_RDONLY | O_DIRECTORY | O_NONBLOCK | O_CLOEXEC;

}  // namespace

WalkLevels::WalkLevels(const URL& root, bool needsFinished, WalkCalls& calls, std::size_t mostOpen)
    : calls_(calls),
      mostOpen_(mostOpen),
      needsFinished_(needsFinished),
      rootPath_(root.path() == "/" ? std::string() : root.path()),
      path_(rootPath_) {}

WalkLevels::~WalkLevels() {
    for (const WalkLevel& level : levels_)
        close(level.folder);
    if (rootFolder_ >= 0) calls_.close(rootFolder_);
}

int WalkLevels::openRoot(LastLink link) {
    const std::string slash = "/";
    const AnchoredPath path(rootPath_.empty() ? slash : rootPath_);
    if (path.error() != 0) return path.error();
    rootFolder_ = open(path.folder(), path.name(), link == LastLink::keep ? O_NOFOLLOW : 0);
    if (rootFolder_ < 0) return errno;
    WalkLevel level;
    level.folder = rootFolder_;
    level.pathLength = path_.size();
    levels_.push_back(level);
    return 0;
}

void WalkLevels::push(WalkLevel level, std::string_view name) {
    putName(name);
    level.pathLength = path_.size();
    levels_.push_back(level);
}

void WalkLevels::replaceTop(WalkLevel level, std::string_view name) {
    putName(name);
    level.pathLength = path_.size();
    close(top().folder);
    top() = level;
}

void WalkLevels::pop() {
    const WalkLevel done = top();
    levels_.pop_back();
    if (!isEmpty()) {
        WalkLevel& level = top();
        path_.resize(level.pathLength);
        if (level.folder < 0 && !level.isFinished()) reopen(level, done.folder, done.depth - level.depth);
    }
    close(done.folder);
}

void WalkLevels::reopenBelowTop() {
    if (belowTop().folder < 0) reopen(belowTop(), top().folder, 1);
}

std::string WalkLevels::takeName() {
    const std::size_t above = belowTop().pathLength;
    std::string name = path_.substr(above + 1);
    path_.resize(above);
    return name;
}

void WalkLevels::putName(std::string_view name) {
    path_.append("/").append(name);
}

int WalkLevels::open(int folder, const char* name, int flags) {
    int opened = -1;
    do {
        opened = calls_.open(folder, name, kFolderFlags | flags);
    } while (opened < 0 && errno == EINTR);
    return opened;
}

int WalkLevels::openChild(const char* name) {
    const int folder = top().folder;
    // The root, and the one on the way back, have their own.
    if (open_ + 3 > mostOpen_) closeShallowest();
    int opened = open(folder, name, O_NOFOLLOW);
    while (opened < 0 && (errno == EMFILE || errno == ENFILE) && closeShallowest())
        opened = open(folder, name, O_NOFOLLOW);
    if (opened >= 0) ++open_;
    return opened;
}

void WalkLevels::close(int folder) {
    if (folder < 0 || folder == rootFolder_) return;
    calls_.close(folder);
    --open_;
}

/// Never the one on top, which is in use. False when there is none to close.
bool WalkLevels::closeShallowest() {
    for (; firstOpen_ + 1 < levels_.size(); ++firstOpen_) {
        WalkLevel& level = levels_[firstOpen_];
        if (level.folder < 0 || level.folder == rootFolder_) continue;
        if (!level.isFinished() || needsFinished_) note(level);
        close(level.folder);
        level.folder = -1;
        level.mustSeek = true;
        return true;
    }
    return false;
}

void WalkLevels::note(WalkLevel& level) {
    struct statx status {};
    int result = -1;
    do {
        result = calls_.status(level.folder, "", kStatxLook | AT_EMPTY_PATH, STATX_INO, status);
    } while (result != 0 && errno == EINTR);
    level.noted = result == 0;
    level.device = std::uint64_t{status.stx_dev_major} << 32U | status.stx_dev_minor;
    level.inode = status.stx_ino;
}

bool WalkLevels::isNoted(const WalkLevel& level, int folder) {
    if (folder < 0) return false;
    WalkLevel found;
    found.folder = folder;
    note(found);
    return level.noted && found.noted && found.device == level.device && found.inode == level.inode;
}

/// From a descriptor that is `up` folders below. Given up when it isn't there any more.
void WalkLevels::reopen(WalkLevel& level, int below, std::size_t up) {
    int folder = below >= 0 ? openAbove(below, up) : -1;
    if (!isNoted(level, folder)) {
        if (folder >= 0) calls_.close(folder);
        folder = openByNames(level);
        if (!isNoted(level, folder)) {
            if (folder >= 0) calls_.close(folder);
            level.giveUp();
            return;
        }
    }
    ++open_;
    level.folder = folder;
    firstOpen_ = std::min(firstOpen_, static_cast<std::size_t>(&level - levels_.data()));
}

int WalkLevels::openAbove(int folder, std::size_t up) {
    // What one call takes of "../../..", well below PATH_MAX.
    constexpr std::size_t most = 1'000;
    int current = folder;
    while (current >= 0 && up > 0) {
        const std::size_t count = std::min(up, most);
        std::string steps = "..";
        for (std::size_t i = 1; i < count; ++i)
            steps.append("/..");
        const int next = open(current, steps.c_str(), 0);
        if (current != folder) calls_.close(current);
        current = next;
        up -= count;
    }
    return current;
}

int WalkLevels::openByNames(const WalkLevel& level) {
    int current = rootFolder_;
    std::string_view names = std::string_view(path_).substr(0, level.pathLength);
    names.remove_prefix(rootPath_.size());
    while (current >= 0 && !names.empty()) {
        names.remove_prefix(1);
        const std::string name(names.substr(0, names.find('/')));
        names.remove_prefix(name.size());
        const int next = open(current, name.c_str(), O_NOFOLLOW);
        if (current != rootFolder_) calls_.close(current);
        current = next;
    }
    return current == rootFolder_ ? -1 : current;
}

}  // namespace tavrin
