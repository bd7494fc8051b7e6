// Pictures, as cameras, programs and enemies may have written them. Whatever comes out is a thumbnail within its
// bounds.
#include "TavrinCore/Platform/PictureDecoder.h"

#include <algorithm>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <span>

namespace {

using namespace tavrin;

class MemoryFile final : public FileReader {
  public:
    explicit MemoryFile(std::span<const std::uint8_t> bytes)
        : bytes_(bytes), status_{.type = FileType::regular, .size = static_cast<std::int64_t>(bytes.size())} {}

    std::optional<std::size_t> read(std::span<unsigned char> /*buffer*/) override { return std::nullopt; }
    std::optional<std::size_t> readAt(std::uint64_t offset, std::span<unsigned char> buffer) override {
        if (offset >= bytes_.size()) return 0;
        const std::size_t count = std::min(buffer.size(), bytes_.size() - static_cast<std::size_t>(offset));
        std::memcpy(buffer.data(), bytes_.data() + offset, count);
        return count;
    }
    [[nodiscard]] bool hadToWait() const override { return false; }
    void prefetch(std::uint64_t /*offset*/, std::size_t /*count*/) override {}
    [[nodiscard]] const FileStatus& status() const override { return status_; }

  private:
    std::span<const std::uint8_t> bytes_;
    FileStatus status_;
};

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    MemoryFile file({data, size});
    const auto thumbnail = decodeThumbnail(file);
    if (!thumbnail) return 0;
    const std::size_t longest = std::max(thumbnail->width, thumbnail->height);
    if (thumbnail->width == 0 || thumbnail->height == 0 || longest > kThumbnailSide) std::abort();
    if (thumbnail->pixels.size() != thumbnail->width * thumbnail->height) std::abort();
    return 0;
}
