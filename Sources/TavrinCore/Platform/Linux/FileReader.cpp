#include "TavrinCore/Platform/FileReader.h"

#include "TavrinCore/Platform/Linux/HarmlessOpen.h"

#include <fcntl.h>
#include <sys/uio.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <utility>

namespace tavrin {
namespace {

class OpenFile final : public FileReader {
  public:
    explicit OpenFile(HarmlessFile file) : file_(std::move(file.descriptor)), status_(file.status) {}

    std::optional<std::size_t> read(std::span<unsigned char> buffer) override {
        const std::optional<std::size_t> count = readAt(position_, buffer);
        position_ += count.value_or(0);
        return count;
    }

    std::optional<std::size_t> readAt(std::uint64_t offset, std::span<unsigned char> buffer) override {
        std::size_t count = 0;
        if (!hadToWait_) {
            // What is in memory. Where that can't be asked for, it is an error as well.
            const ssize_t atHand = readOnce(offset, buffer, RWF_NOWAIT);
            if (atHand > 0) count = static_cast<std::size_t>(atHand);
            if (count == buffer.size() || (atHand >= 0 && isAtEnd(offset + count))) return count;
            hadToWait_ = true;
        }
        const ssize_t rest = readOnce(offset + count, buffer.subspan(count), 0);
        if (rest < 0 && count == 0) return std::nullopt;
        return count + static_cast<std::size_t>(std::max<ssize_t>(rest, 0));
    }

    [[nodiscard]] bool hadToWait() const override { return hadToWait_; }

    void prefetch(std::uint64_t offset, std::size_t count) override {
        (void)::posix_fadvise(file_.number(), static_cast<off_t>(offset), static_cast<off_t>(count),
                              POSIX_FADV_WILLNEED);
    }

    [[nodiscard]] const FileStatus& status() const override { return status_; }

  private:
    [[nodiscard]] ssize_t readOnce(std::uint64_t offset, std::span<unsigned char> buffer, int flags) const {
        const iovec place{.iov_base = buffer.data(), .iov_len = buffer.size()};
        ssize_t count = -1;
        do {
            count = ::preadv2(file_.number(), &place, 1, static_cast<off_t>(offset), flags);
        } while (count < 0 && errno == EINTR);
        return count;
    }

    /// As far as its length is known.
    [[nodiscard]] bool isAtEnd(std::uint64_t offset) const {
        return offset >= static_cast<std::uint64_t>(status_.size.value_or(0));
    }

    Descriptor file_;
    FileStatus status_;
    std::uint64_t position_ = 0;
    bool hadToWait_ = false;
};

}  // namespace

std::unique_ptr<FileReader> FileReader::open(const URL& file, Expect expect) {
    Result<HarmlessFile> opened = openHarmless(file);
    if (!opened) return nullptr;
    if (expect == Expect::whole) (void)::posix_fadvise(opened->descriptor.number(), 0, 0, POSIX_FADV_SEQUENTIAL);
    return std::make_unique<OpenFile>(std::move(*opened));
}

}  // namespace tavrin
