#include "TavrinCore/Platform/FileReader.h"

#include "TavrinCore/Platform/Linux/HarmlessOpen.h"

#include <fcntl.h>
#include <unistd.h>

#include <cerrno>
#include <utility>

namespace tavrin {
namespace {

class OpenFile final : public FileReader {
  public:
    explicit OpenFile(HarmlessFile file) : file_(std::move(file.descriptor)), status_(std::move(file.status)) {}

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

    [[nodiscard]] const FileStatus& status() const override { return status_; }

  private:
    Descriptor file_;
    FileStatus status_;
};

}  // namespace

std::unique_ptr<FileReader> FileReader::open(const URL& file, Expect expect) {
    Result<HarmlessFile> opened = openHarmless(file);
    if (!opened) return nullptr;
    if (expect == Expect::whole) (void)::posix_fadvise(opened->descriptor.number(), 0, 0, POSIX_FADV_SEQUENTIAL);
    return std::make_unique<OpenFile>(std::move(*opened));
}

}  // namespace tavrin
