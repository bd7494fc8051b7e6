#include "Support/PretendedFile.h"

#include <algorithm>
#include <cerrno>
#include <cstring>

namespace tavrin::test {
namespace {

class Reader final : public FileReader {
  public:
    explicit Reader(const PretendedFile& file)
        : file_(file),
          status_{.type = FileType::regular,
                  .size = file.length.value_or(static_cast<std::int64_t>(file.bytes.size()))} {
        file_.mostReadersOpen = std::max(file_.mostReadersOpen, ++file_.readersOpen);
    }
    ~Reader() override { --file_.readersOpen; }
    Reader(const Reader&) = delete;
    Reader& operator=(const Reader&) = delete;

    std::optional<std::size_t> read(std::span<unsigned char> buffer) override {
        const std::optional<std::size_t> count = readAt(position_, buffer);
        position_ += count.value_or(0);
        return count;
    }

    std::optional<std::size_t> readAt(std::uint64_t offset, std::span<unsigned char> buffer) override {
        if (offset >= file_.failsFrom) return std::nullopt;
        if (offset >= file_.bytes.size()) return 0;
        const std::size_t most =
            std::min({buffer.size(), file_.bytes.size() - offset, file_.failsFrom - offset, file_.mostPerRead});
        std::memcpy(buffer.data(), file_.bytes.data() + offset, most);
        file_.bytesRead += most;
        return most;
    }

    [[nodiscard]] bool hadToWait() const override { return file_.isOnDisk; }

    void prefetch(std::uint64_t /*offset*/, std::size_t /*count*/) override {}

    [[nodiscard]] const FileStatus& status() const override { return status_; }

  private:
    const PretendedFile& file_;
    FileStatus status_;
    std::size_t position_ = 0;
};

}  // namespace

std::unique_ptr<FileReader> PretendedFile::open() const {
    return std::make_unique<Reader>(*this);
}

}  // namespace tavrin::test
