#include "TavrinCore/Platform/Linux/MountTable.h"

#include "TavrinCore/Platform/Linux/Descriptor.h"

#include <fcntl.h>
#include <poll.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <charconv>
#include <mutex>

namespace tavrin {
namespace {

/// Of file systems that are no program's of the user ("fuse.…").
constexpr std::array<std::string_view, 17> kWaiting{
    "9p",   "afs",       "autofs", "beegfs", "ceph", "cifs", "coda", "davfs", "fuse",
    "gfs2", "glusterfs", "lustre", "ncpfs",  "nfs",  "nfs4", "smb3", "smbfs",
};
constexpr std::string_view kFuse = "fuse.";
/// Encrypted folders, which stand on the same disk as the rest of the home.
constexpr std::array<std::string_view, 3> kLocalFuse{"cryfs", "encfs", "gocryptfs"};

/// Takes the first of the fields that spaces part.
std::string_view takeField(std::string_view& line) {
    const std::size_t end = std::min(line.find(' '), line.size());
    const std::string_view field = line.substr(0, end);
    line.remove_prefix(std::min(end + 1, line.size()));
    return field;
}

bool hasOption(std::string_view options, std::string_view wanted) {
    while (!options.empty()) {
        const std::size_t end = std::min(options.find(','), options.size());
        if (options.substr(0, end) == wanted) return true;
        options.remove_prefix(std::min(end + 1, options.size()));
    }
    return false;
}

bool isOctal(char digit) {
    return digit >= '0' && digit <= '7';
}

/// Spaces, tabs, line ends and backslashes stand as a backslash with three octal digits.
std::string unescaped(std::string_view field) {
    std::string text;
    for (std::size_t i = 0; i < field.size(); ++i) {
        if (field[i] == '\\' && i + 3 < field.size() && std::ranges::all_of(field.substr(i + 1, 3), isOctal)) {
            text.push_back(
                static_cast<char>((field[i + 1] - '0') * 64 + (field[i + 2] - '0') * 8 + field[i + 3] - '0'));
            i += 3;
        } else {
            text.push_back(field[i]);
        }
    }
    return text;
}

/// Id, parent, device, root, mount point, options; some fields, a dash, the kind, the source and the options of the
/// file system itself.
bool parse(std::string_view line, Mount& mount) {
    const std::string_view id = takeField(line);
    if (std::from_chars(id.data(), id.data() + id.size(), mount.id).ec != std::errc()) return false;
    for (int skipped = 0; skipped < 3; ++skipped)
        takeField(line);
    mount.point = unescaped(takeField(line));
    const std::string_view options = takeField(line);
    while (!line.empty() && takeField(line) != "-") {
    }
    const std::string_view kind = takeField(line);
    mount.mayWait = mayWait(kind);
    takeField(line);
    mount.isNoatime = hasOption(options, "noatime") || hasOption(takeField(line), "noatime");
    return mount.point.starts_with('/') && !kind.empty();
}

/// The kernel says through the open file when there is something new in it.
class MountTable {
  public:
    std::shared_ptr<const std::vector<Mount>> current() {
        const std::lock_guard guard(lock_);
        // A child process may have mounts of its own.
        const pid_t process = ::getpid();
        if (process != process_) {
            file_ = Descriptor(::open("/proc/self/mountinfo", O_RDONLY | O_CLOEXEC));
            // Else it is tried again the next time.
            if (file_.isOpen()) process_ = process;
            read();
        } else if (hasChanged()) {
            read();
        }
        return mounts_;
    }

  private:
    [[nodiscard]] bool hasChanged() const {
        pollfd question{.fd = file_.number(), .events = POLLPRI, .revents = 0};
        return file_.isOpen() && ::poll(&question, 1, 0) != 0;
    }

    void read() {
        std::string text;
        std::array<char, 16'384> buffer{};
        ssize_t count = -1;
        while ((count = ::pread(file_.number(), buffer.data(), buffer.size(), static_cast<off_t>(text.size()))) > 0 ||
               (count < 0 && errno == EINTR)) {
            if (count > 0) text.append(buffer.data(), static_cast<std::size_t>(count));
        }
        mounts_ = std::make_shared<const std::vector<Mount>>(parseMounts(text));
    }

    std::mutex lock_;
    pid_t process_ = -1;
    Descriptor file_;
    std::shared_ptr<const std::vector<Mount>> mounts_;
};

}  // namespace

std::vector<Mount> parseMounts(std::string_view mountinfo) {
    std::vector<Mount> mounts;
    while (!mountinfo.empty()) {
        const std::size_t end = std::min(mountinfo.find('\n'), mountinfo.size());
        if (Mount mount; parse(mountinfo.substr(0, end), mount)) mounts.push_back(std::move(mount));
        mountinfo.remove_prefix(std::min(end + 1, mountinfo.size()));
    }
    return mounts;
}

std::shared_ptr<const std::vector<Mount>> currentMounts() {
    static MountTable table;
    return table.current();
}

bool mayWait(std::string_view kind) {
    if (kind.starts_with(kFuse)) return std::ranges::find(kLocalFuse, kind.substr(kFuse.size())) == kLocalFuse.end();
    return std::ranges::find(kWaiting, kind) != kWaiting.end();
}

std::vector<std::string> waitingMountsBelow(std::string_view folder, const std::vector<Mount>& mounts) {
    std::string above(folder);
    if (!above.ends_with('/')) above.push_back('/');
    std::vector<std::string> waiting;
    for (const Mount& mount : mounts) {
        if (!mount.point.starts_with(above) || mount.point.size() == above.size()) continue;
        std::string point = mount.point.substr(above.size());
        // What was mounted later hides what was there before and below: a disk on what mounted it on demand.
        std::erase_if(waiting, [&point](const std::string& hidden) {
            return hidden == point || hidden.starts_with(point + "/");
        });
        if (mount.mayWait) waiting.push_back(std::move(point));
    }
    return waiting;
}

}  // namespace tavrin
