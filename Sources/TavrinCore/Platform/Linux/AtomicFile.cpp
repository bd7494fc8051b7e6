// rename(2) replaces a name in one step, but says nothing of the disk: without fsync(2) of the file before it, a power
// cut can leave the new name with no bytes behind it; without one of the folder after it, it can bring the old file
// back.
#include "TavrinCore/Platform/AtomicFile.h"

#include "TavrinCore/Models/UUID.h"
#include "TavrinCore/Platform/Linux/AtomicFileCalls.h"

#include <fcntl.h>
#include <unistd.h>

#include <cerrno>
#include <cstddef>
#include <string>

namespace tavrin {
namespace {

/// Calls again for as long as a signal comes in between.
template <class Call>
auto uninterrupted(Call call) {
    auto result = call();
    while (result < 0 && errno == EINTR)
        result = call();
    return result;
}

/// One writing, from the folder's opening to its end. What isn't in its place by then is removed.
class Writing {
  public:
    explicit Writing(AtomicFileCalls& calls) : calls_(calls) {}
    ~Writing() {
        if (file_ >= 0) calls_.close(file_);
        if (!temporaryName_.empty()) calls_.remove(folder_, temporaryName_.c_str());
        if (folder_ >= 0) calls_.close(folder_);
    }
    Writing(const Writing&) = delete;
    Writing& operator=(const Writing&) = delete;

    // Each is a step, in this order. False leaves the reason in errno.

    bool openFolder(const URL& folder) {
        folder_ = uninterrupted([&] { return calls_.openFolder(folder.path().c_str()); });
        return folder_ >= 0;
    }

    bool create(unsigned mode) {
        const std::string name = ".tavrin-" + UUID::random().uuidString() + ".tmp";
        file_ = uninterrupted([&] { return calls_.createFile(folder_, name.c_str(), mode); });
        // Only what was made here is removed: a name that was taken is somebody else's.
        if (file_ >= 0) temporaryName_ = name;
        return file_ >= 0;
    }

    bool write(std::string_view bytes) {
        while (!bytes.empty()) {
            const ssize_t count = uninterrupted([&] { return calls_.write(file_, bytes.data(), bytes.size()); });
            if (count == 0) errno = EIO;  // a disk that takes nothing and says nothing would be asked for ever
            if (count <= 0) return false;
            bytes.remove_prefix(static_cast<std::size_t>(count));
        }
        return true;
    }

    bool syncFile() { return sync(file_); }

    bool closeFile() {
        const int file = file_;
        file_ = -1;
        // On Linux the descriptor is gone, whatever close(2) gives, and EINTR tells nothing of the bytes.
        return calls_.close(file) == 0 || errno == EINTR;
    }

    bool moveIntoPlace(const std::string& name) {
        if (calls_.rename(folder_, temporaryName_.c_str(), name.c_str()) != 0) return false;
        temporaryName_.clear();
        return true;
    }

    bool syncFolder() { return sync(folder_); }

  private:
    bool sync(int descriptor) {
        return uninterrupted([&] { return calls_.sync(descriptor); }) == 0;
    }

    AtomicFileCalls& calls_;
    int folder_ = -1;
    int file_ = -1;
    std::string temporaryName_;
};

}  // namespace

int AtomicFileCalls::openFolder(const char* path) {
    return ::open(path, O_RDONLY | O_DIRECTORY | O_CLOEXEC);
}
int AtomicFileCalls::createFile(int folder, const char* name, mode_t mode) {
    return ::openat(folder, name, O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, mode);
}
ssize_t AtomicFileCalls::write(int file, const char* bytes, std::size_t count) {
    return ::write(file, bytes, count);
}
int AtomicFileCalls::sync(int descriptor) {
    return ::fsync(descriptor);
}
int AtomicFileCalls::close(int descriptor) {
    return ::close(descriptor);
}
int AtomicFileCalls::rename(int folder, const char* from, const char* to) {
    return ::renameat(folder, from, folder, to);
}
int AtomicFileCalls::remove(int folder, const char* name) {
    return ::unlinkat(folder, name, 0);
}

Outcome writeAtomically(const URL& url, std::string_view bytes, unsigned mode, AtomicFileCalls& calls) {
    Writing writing(calls);
    const bool done = writing.openFolder(url.deletingLastPathComponent()) && writing.create(mode) &&
                      writing.write(bytes) && writing.syncFile() && writing.closeFile() &&
                      writing.moveIntoPlace(std::string(url.lastPathComponent())) && writing.syncFolder();
    // Taken before the tidying up, which has calls of its own.
    return done ? success() : Outcome(SystemError::posix(errno));
}

Outcome writeAtomically(const URL& url, std::string_view bytes, unsigned mode) {
    AtomicFileCalls calls;
    return writeAtomically(url, bytes, mode, calls);
}

}  // namespace tavrin
