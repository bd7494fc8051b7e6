// Pictures, as cameras, programs and enemies may have written them. Whatever comes out, grey or in colours, keeps
// within its bounds.
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

/// Of `samples` bytes each.
template <class Picture>
void checkBounds(const std::optional<Picture>& picture, std::size_t side, std::size_t samples) {
    if (!picture) return;
    const std::size_t longest = std::max(picture->width, picture->height);
    if (picture->width == 0 || picture->height == 0 || longest > side) std::abort();
    if (picture->pixels.size() != samples * picture->width * picture->height) std::abort();
}

/// A colour is never more than there is of its pixel.
void checkColours(const std::optional<RGBAPicture>& picture) {
    for (std::size_t i = 0; picture && i < picture->pixels.size(); ++i) {
        if (picture->pixels[i] > picture->pixels[i | 3U]) std::abort();
    }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    MemoryFile file({data, size});
    checkBounds(decodeThumbnail(file), kThumbnailSide, 1);
    for (const PictureForm& form : {PictureForm{.side = 300}, {.side = 50, .shape = PictureForm::Shape::square}}) {
        const std::optional<RGBAPicture> picture = decodePicture(file, form);
        checkBounds(picture, form.side, 4);
        checkColours(picture);
    }
    return 0;
}
