#include "TavrinCore/Platform/FileReader.h"

#include "TavrinCore/Platform/Linux/HarmlessOpen.h"
#include "TavrinCore/Platform/Linux/StatxStatus.h"

#include <fcntl.h>
#include <unistd.h>

#include <cerrno>
#include <utility>

namespace tavrin {
namespace {

class OpenFile final : public FileReader {
  public:
    explicit OpenFile(Descriptor file) : file_(std::move(file)) {}

    std::optional<std::size_t> read(std::span<unsigned char> buffer) override {
        ssize_t count = -1;
        do {
            count = ::read(file_.number(), buffer.data(), buffer.size());
        } while (count < 0 && errno == EINTR);
        if (count < 0) return std::nullopt;
        return static_cast<std::size_t>(count);
    }

    std::optional<std::size_t> readAt(std::uint64_t offset, std::span<unsigned char> buffer) override {
        ssize_t count = -1;
        do {
            count = ::pread(file_.number(), buffer.data(), buffer.size(), static_cast<off_t>(offset));
        } while (count < 0 && errno == EINTR);
        if (count < 0) return std::nullopt;
        return static_cast<std::size_t>(count);
    }

    void prefetch(std::uint64_t offset, std::size_t count) override {
        (void)::posix_fadvise(file_.number(), static_cast<off_t>(offset), static_cast<off_t>(count),
                              POSIX_FADV_WILLNEED);
    }

    Result<FileStatus> status() override {
        if (!status_) status_ = ask();
        return *status_;
    }

  private:
    [[nodiscard]] Result<FileStatus> ask() const {
        constexpr unsigned fields = kStatxSizes | kStatxIdentifier;
        struct statx status {};
        if (::statx(file_.number(), "", kStatxLook | AT_EMPTY_PATH, fields, &status) != 0)
            return SystemError::posix(errno);
        return statusFrom(status, fields);
    }

    Descriptor file_;
    std::optional<Result<FileStatus>> status_;
};

}  // namespace

std::unique_ptr<FileReader> FileReader::open(const URL& file, Expect expect) {
    Result<Descriptor> opened = openHarmless(file);
    if (!opened) return nullptr;
    if (expect == Expect::whole) (void)::posix_fadvise(opened->number(), 0, 0, POSIX_FADV_SEQUENTIAL);
    return std::make_unique<OpenFile>(std::move(*opened));
}

}  // namespace tavrin
