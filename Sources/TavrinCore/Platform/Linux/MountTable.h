// What is mounted where. Internal to this folder and its tests.
//
// The kernel tells it from its own memory (/proc/self/mountinfo), without asking the file systems: so looking here
// never waits for a server that doesn't answer, as a look at the mount point itself does.
#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace tavrin {

struct Mount {
    std::uint64_t id = 0;
    /// Where it is, without links on the way.
    std::string point;
    bool isNoatime = false;
    /// What mayWait() says of its file system.
    bool mayWait = false;

    friend bool operator==(const Mount&, const Mount&) = default;
};

/// proc_pid_mountinfo(5). Lines that say something else are passed over.
[[nodiscard]] std::vector<Mount> parseMounts(std::string_view mountinfo);

/// The mounts as they are now, in the order in which they were mounted. Costs one poll(2) while nothing changed. Empty
/// where there is no /proc. Safe from any thread.
[[nodiscard]] std::shared_ptr<const std::vector<Mount>> currentMounts();

/// Whether a file system of this kind ("ext4", "nfs4", "fuse.sshfs") may keep whoever enters it waiting for somebody: a
/// server, another machine, a daemon that mounts on demand, a program of the user's. Those that stand on a disk of this
/// machine don't.
[[nodiscard]] bool mayWait(std::string_view kind);

/// The points below `folder`, relative to it, of which what was mounted last may wait.
[[nodiscard]] std::vector<std::string> waitingMountsBelow(std::string_view folder, const std::vector<Mount>& mounts);

}  // namespace tavrin
