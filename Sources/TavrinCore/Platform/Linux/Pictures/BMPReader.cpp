// BMP, read here: the format is small, and the libraries that know it bring every other format along. Shapes after
// Microsoft's BITMAPINFOHEADER and its older and newer forms: 1 to 32 bits a pixel, run lengths, masks.
#include "TavrinCore/Platform/Linux/Pictures/PictureCodecs.h"
#include "TavrinCore/Platform/Linux/Pictures/PictureShrinker.h"

#include <algorithm>
#include <array>
#include <bit>
#include <cstdlib>

namespace tavrin {
namespace {

constexpr std::size_t kFileHeader = 14;
constexpr std::uint32_t kCoreHeader = 12;
constexpr std::uint32_t kInfoHeader = 40;
constexpr std::uint32_t kLargestHeader = 124;

enum class Compression : std::uint8_t {
    none = 0,
    runs8 = 1,
    runs4 = 2,
    masks = 3,
    masksWithAlpha = 6,
};

std::uint32_t little(const std::uint8_t* bytes, unsigned count) {
    std::uint32_t value = 0;
    for (unsigned i = 0; i < count; ++i)
        value |= static_cast<std::uint32_t>(bytes[i]) << (8U * i);
    return value;
}

/// One colour's bits in a pixel.
struct Mask {
    std::uint32_t bits = 0;

    [[nodiscard]] unsigned in(std::uint32_t pixel) const {
        if (bits == 0) return 0;
        const auto shift = static_cast<unsigned>(std::countr_zero(bits));
        return static_cast<unsigned>(std::uint64_t{(pixel & bits) >> shift} * 255 / (bits >> shift));
    }
};

class BMPReader {
  public:
    explicit BMPReader(PictureInput& input) : input_(input) {}

    std::optional<GreyPicture> picture() {
        if (!readHeader() || !hasPixels(width_, height_, kMostPixels)) return std::nullopt;
        if (bits_ <= 8 && !readPalette()) return std::nullopt;
        input_.seek(pixels_);
        shrinker_.emplace(width_, height_);
        const bool isRead = isCompressed() ? readRuns() : readRows();
        if (!isRead) return std::nullopt;
        return shrinker_->thumbnail(1);
    }

  private:
    [[nodiscard]] bool isCompressed() const {
        return compression_ == Compression::runs8 || compression_ == Compression::runs4;
    }

    bool readHeader() {
        std::array<std::uint8_t, kFileHeader + kLargestHeader> bytes{};
        const std::size_t count = input_.read(bytes.data(), bytes.size());
        if (count < kFileHeader + kCoreHeader) return false;
        pixels_ = little(bytes.data() + 10, 4);
        const std::uint8_t* header = bytes.data() + kFileHeader;
        headerSize_ = little(header, 4);
        if (headerSize_ == kCoreHeader) {
            width_ = little(header + 4, 2);
            height_ = little(header + 6, 2);
            bits_ = little(header + 10, 2);
        } else if (headerSize_ >= kInfoHeader && headerSize_ <= kLargestHeader && count >= kFileHeader + kInfoHeader) {
            if (!readInfo(header)) return false;
        } else {
            return false;
        }
        return isKnown();
    }

    bool readInfo(const std::uint8_t* header) {
        const auto height = static_cast<std::int64_t>(static_cast<std::int32_t>(little(header + 8, 4)));
        width_ = little(header + 4, 4);
        height_ = static_cast<std::size_t>(std::llabs(height));
        isTopDown_ = height < 0;
        bits_ = little(header + 14, 2);
        const std::uint32_t compression = little(header + 16, 4);
        colours_ = little(header + 32, 4);
        if (compression > 3 && compression != 6) return false;
        compression_ = static_cast<Compression>(compression);
        if (compression_ == Compression::masks || compression_ == Compression::masksWithAlpha) {
            // Behind the oldest header, and part of the others, at the same place.
            red_.bits = little(header + 40, 4);
            green_.bits = little(header + 44, 4);
            blue_.bits = little(header + 48, 4);
        } else if (bits_ == 16) {
            red_.bits = 0x7C00;
            green_.bits = 0x03E0;
            blue_.bits = 0x001F;
        }
        return true;
    }

    [[nodiscard]] bool isKnown() const {
        switch (compression_) {
            case Compression::runs8:
                return bits_ == 8 && !isTopDown_;
            case Compression::runs4:
                return bits_ == 4 && !isTopDown_;
            case Compression::masks:
            case Compression::masksWithAlpha:
                return bits_ == 16 || bits_ == 32;
            case Compression::none:
                break;
        }
        return bits_ == 1 || bits_ == 4 || bits_ == 8 || bits_ == 16 || bits_ == 24 || bits_ == 32;
    }

    bool readPalette() {
        const std::size_t each = headerSize_ == kCoreHeader ? 3 : 4;
        const std::size_t most = std::size_t{1} << bits_;
        const std::size_t count = colours_ == 0 ? most : std::min<std::size_t>(colours_, most);
        std::array<std::uint8_t, std::size_t{4} * 256> bytes{};
        input_.seek(kFileHeader + headerSize_);
        if (!input_.readAll(bytes.data(), each * count)) return false;
        for (std::size_t i = 0; i < count; ++i)
            palette_[i] = brightness(bytes[each * i + 2], bytes[each * i + 1], bytes[each * i]);
        return true;
    }

    /// Rows are stored from the bottom, unless the height was negative.
    [[nodiscard]] std::size_t placeOf(std::size_t row) const { return isTopDown_ ? row : height_ - 1 - row; }

    bool readRows() {
        const std::size_t stored = (width_ * bits_ + 31) / 32 * 4;
        std::vector<std::uint8_t> bytes(stored);
        std::vector<std::uint8_t> grey(width_);
        for (std::size_t row = 0; row < height_; ++row) {
            if (!input_.readAll(bytes.data(), stored)) return false;
            for (std::size_t x = 0; x < width_; ++x)
                grey[x] = pixelIn(bytes.data(), x);
            shrinker_->addRow(0, placeOf(row), grey, PixelKind::grey);
        }
        return true;
    }

    [[nodiscard]] std::uint8_t pixelIn(const std::uint8_t* row, std::size_t x) const {
        if (bits_ <= 8) {
            const std::size_t bit = x * bits_;
            const unsigned shift = 8U - bits_ - static_cast<unsigned>(bit % 8);
            return palette_[(row[bit / 8] >> shift) & ((1U << bits_) - 1U)];
        }
        const std::uint8_t* pixel = row + x * (bits_ / 8);
        // Without masks, three bytes are the colours. Masks of nothing in two bytes are black.
        if (bits_ >= 24 && red_.bits == 0 && green_.bits == 0 && blue_.bits == 0)
            return brightness(pixel[2], pixel[1], pixel[0]);
        const std::uint32_t value = little(pixel, bits_ / 8);
        return brightness(red_.in(value), green_.in(value), blue_.in(value));
    }

    bool readRuns() {
        while (true) {
            std::array<std::uint8_t, 2> pair{};
            if (!input_.readAll(pair.data(), 2)) return false;
            if (pair[0] > 0) {
                for (unsigned i = 0; i < pair[0]; ++i)
                    put(bits_ == 8 ? pair[1] : nibble(pair[1], i));
            } else if (pair[1] == 0) {
                x_ = 0;
                ++y_;
            } else if (pair[1] == 1) {
                return true;
            } else if (pair[1] == 2) {
                if (!input_.readAll(pair.data(), 2)) return false;
                x_ += pair[0];
                y_ += pair[1];
            } else if (!readLiteral(pair[1])) {
                return false;
            }
            // Some files end without the sign of the end.
            if (y_ >= height_) return true;
        }
    }

    /// Pixels as they are, padded to an even count of bytes.
    bool readLiteral(unsigned count) {
        std::array<std::uint8_t, 256> bytes{};
        const std::size_t stored = bits_ == 8 ? count : (count + 1) / 2;
        if (!input_.readAll(bytes.data(), (stored + 1) / 2 * 2)) return false;
        for (unsigned i = 0; i < count; ++i)
            put(bits_ == 8 ? bytes[i] : nibble(bytes[i / 2], i));
        return true;
    }

    static unsigned nibble(unsigned byte, unsigned index) { return index % 2 == 0 ? byte >> 4U : byte & 0xFU; }

    /// No pixel comes twice: x_ and y_ only grow.
    void put(unsigned colour) {
        if (x_ < width_ && y_ < height_) shrinker_->add(x_, placeOf(y_), palette_[colour]);
        ++x_;
    }

    PictureInput& input_;
    std::size_t width_ = 0;
    std::size_t height_ = 0;
    std::uint32_t bits_ = 0;
    std::uint32_t headerSize_ = 0;
    std::uint32_t colours_ = 0;
    /// Where they begin in the file.
    std::uint32_t pixels_ = 0;
    bool isTopDown_ = false;
    Compression compression_ = Compression::none;
    Mask red_;
    Mask green_;
    Mask blue_;
    std::array<std::uint8_t, 256> palette_{};
    std::optional<PictureShrinker> shrinker_;
    /// Of the pixel that comes next, among runs.
    std::size_t x_ = 0;
    std::size_t y_ = 0;
};

}  // namespace

std::optional<GreyPicture> readBMP(PictureInput& input) {
    return BMPReader(input).picture();
}

}  // namespace tavrin
