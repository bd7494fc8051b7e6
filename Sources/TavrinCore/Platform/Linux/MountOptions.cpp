#include "TavrinCore/Platform/Linux/MountOptions.h"

#include <cstdint>
#include <fstream>
#include <mutex>
#include <sstream>
#include <string>
#include <unordered_map>

namespace tavrin {
namespace {

bool hasOption(const std::string& options, const std::string& option) {
    return ("," + options + ",").find("," + option + ",") != std::string::npos;
}

/// proc_pid_mountinfo(5): id, parent, device, root, mount point, options; some fields, a dash, the type, the source and
/// the options of the file system itself.
bool isNoatimeIn(std::istringstream& fields) {
    std::string field;
    for (int skipped = 0; skipped < 4; ++skipped)
        fields >> field;
    std::string options;
    fields >> options;
    while (fields >> field && field != "-") {
    }
    std::string ofFileSystem;
    fields >> field >> field >> ofFileSystem;
    return hasOption(options, "noatime") || hasOption(ofFileSystem, "noatime");
}

class Mounts {
  public:
    bool isNoatime(std::uint64_t id) {
        const std::lock_guard guard(lock_);
        if (!noatime_.contains(id)) read();
        return noatime_.try_emplace(id, false).first->second;
    }

  private:
    void read() {
        noatime_.clear();
        std::ifstream mounts("/proc/self/mountinfo");
        for (std::string line; std::getline(mounts, line);) {
            std::istringstream fields(line);
            std::uint64_t id = 0;
            if (fields >> id) noatime_[id] = isNoatimeIn(fields);
        }
    }

    std::mutex lock_;
    std::unordered_map<std::uint64_t, bool> noatime_;
};

}  // namespace

bool keepsAccessDates(const struct statx& status) {
    if ((status.stx_mask & STATX_MNT_ID) == 0) return true;
    // Files are asked about mount by mount: nearly always it is the one of the file before.
    thread_local std::uint64_t lastMount = 0;
    thread_local bool lastAnswer = true;
    static Mounts mounts;
    if (status.stx_mnt_id != lastMount) {
        lastAnswer = !mounts.isNoatime(status.stx_mnt_id);
        lastMount = status.stx_mnt_id;
    }
    return lastAnswer;
}

}  // namespace tavrin
