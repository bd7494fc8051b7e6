// BMP, read here: the format is small, and the libraries that know it bring every other format along. 1 to 32 bits a
// pixel, run lengths, masks.
#include "TavrinCore/Platform/Linux/Pictures/BMPHeader.h"
#include "TavrinCore/Platform/Linux/Pictures/PictureCodecs.h"
#include "TavrinCore/Platform/Linux/Pictures/PixelTable.h"

#include <algorithm>
#include <array>
#include <vector>

namespace tavrin {
namespace {

/// So many pixels are in hand at a time: a row may claim to be as long as the whole picture. Whole bytes, whatever the
/// bits of each.
constexpr std::size_t kPiece = 4'096;

class BMPReader {
  public:
    BMPReader(const BMPHeader& header, PictureInput& input, PictureSink& sink)
        : header_(header), input_(input), sink_(sink), table_(sink) {}

    bool read() {
        if (header_.hasPalette() && !readPalette()) return false;
        sink_.begin({.width = header_.width, .height = header_.height});
        input_.seek(header_.pixels);
        if (!header_.hasRuns()) return readRows();
        const bool isRead = readRuns();
        flush();
        return isRead;
    }

  private:
    bool readPalette() {
        std::array<std::uint8_t, std::size_t{4} * 256> bytes{};
        input_.seek(header_.palette);
        if (!input_.readAll(bytes.data(), std::size_t{header_.colourBytes} * header_.colours)) return false;
        for (std::size_t i = 0; i < header_.colours; ++i) {
            const std::uint8_t* colour = bytes.data() + header_.colourBytes * i;
            table_.set(i, {colour[2], colour[1], colour[0], 255});
        }
        return true;
    }

    bool readRows() {
        const std::size_t padding = (32 - header_.width * header_.bits % 32) % 32 / 8;
        for (std::size_t row = 0; row < header_.height; ++row) {
            for (std::size_t x = 0; x < header_.width; x += kPiece) {
                if (!readPiece(x, header_.placeOf(row), std::min(kPiece, header_.width - x))) return false;
            }
            std::array<std::uint8_t, 4> nothing{};
            if (!input_.readAll(nothing.data(), padding)) return false;
        }
        return true;
    }

    bool readPiece(std::size_t x, std::size_t y, std::size_t count) {
        bytes_.resize((count * header_.bits + 7) / 8);
        if (!input_.readAll(bytes_.data(), bytes_.size())) return false;
        if (header_.hasPalette()) {
            samples_.resize(count);
            numbersIn(bytes_, samples_);
            sink_.add(table_.row(x, y, samples_));
        } else {
            samples_.resize(4 * count);
            coloursIn(bytes_, samples_);
            sink_.add({.x = x, .y = y, .samples = samples_, .kind = PixelKind::rgba});
        }
        return true;
    }

    void numbersIn(const std::vector<std::uint8_t>& row, std::vector<std::uint8_t>& numbers) const {
        const unsigned mask = (1U << header_.bits) - 1U;
        for (std::size_t x = 0; x < numbers.size(); ++x) {
            const std::size_t bit = x * header_.bits;
            const unsigned shift = 8U - header_.bits - static_cast<unsigned>(bit % 8);
            numbers[x] = static_cast<std::uint8_t>((row[bit / 8] >> shift) & mask);
        }
    }

    void coloursIn(const std::vector<std::uint8_t>& row, std::vector<std::uint8_t>& samples) const {
        const std::uint32_t each = header_.bits / 8;
        // Without masks, three bytes are the colours. Masks of nothing in two bytes are black.
        const bool hasBytes = each >= 3 && !header_.hasMasks();
        const std::uint8_t* pixel = row.data();
        for (auto to = samples.begin(); to != samples.end(); to += 4, pixel += each) {
            const std::uint32_t value = hasBytes ? 0 : littleEndian(pixel, each);
            to[0] = hasBytes ? pixel[2] : header_.red.in(value);
            to[1] = hasBytes ? pixel[1] : header_.green.in(value);
            to[2] = hasBytes ? pixel[0] : header_.blue.in(value);
            to[3] = header_.alpha.bits == 0 ? 255 : header_.alpha.in(value);
        }
    }

    bool readRuns() {
        const bool isByte = header_.bits == 8;
        while (true) {
            std::array<std::uint8_t, 2> pair{};
            if (!input_.readAll(pair.data(), 2)) return false;
            if (pair[0] > 0) {
                for (unsigned i = 0; i < pair[0]; ++i)
                    put(isByte ? pair[1] : nibble(pair[1], i));
            } else if (pair[1] == 0) {
                moveTo(0, y_ + 1);
            } else if (pair[1] == 1) {
                return true;
            } else if (pair[1] == 2) {
                if (!input_.readAll(pair.data(), 2)) return false;
                moveTo(x_ + pair[0], y_ + pair[1]);
            } else if (!readLiteral(pair[1])) {
                return false;
            }
            // Some files end without the sign of the end.
            if (y_ >= header_.height) return true;
        }
    }

    /// Pixels as they are, padded to an even count of bytes.
    bool readLiteral(unsigned count) {
        const bool isByte = header_.bits == 8;
        std::array<std::uint8_t, 256> bytes{};
        const std::size_t stored = isByte ? count : (count + 1) / 2;
        if (!input_.readAll(bytes.data(), (stored + 1) / 2 * 2)) return false;
        for (unsigned i = 0; i < count; ++i)
            put(isByte ? bytes[i] : nibble(bytes[i / 2], i));
        return true;
    }

    static std::uint8_t nibble(unsigned byte, unsigned index) {
        return static_cast<std::uint8_t>(index % 2 == 0 ? byte >> 4U : byte & 0xFU);
    }

    /// No pixel comes twice: x_ and y_ only grow.
    void put(std::uint8_t number) {
        if (x_ < header_.width) samples_.push_back(number);
        ++x_;
        if (samples_.size() == kPiece) flush();
    }

    void moveTo(std::size_t x, std::size_t y) {
        flush();
        x_ = x;
        y_ = y;
    }

    /// What came since the last move, and ends where the next pixel is, or with the row.
    void flush() {
        const std::size_t end = std::min(x_, header_.width);
        if (!samples_.empty() && y_ < header_.height)
            sink_.add(table_.row(end - samples_.size(), header_.placeOf(y_), samples_));
        samples_.clear();
    }

    const BMPHeader& header_;
    PictureInput& input_;
    PictureSink& sink_;
    PixelTable table_;
    /// Of the piece that is under way, as they are stored and as the sink takes them, or the table.
    std::vector<std::uint8_t> bytes_;
    std::vector<std::uint8_t> samples_;
    /// Of the pixel that comes next, among runs.
    std::size_t x_ = 0;
    std::size_t y_ = 0;
};

}  // namespace

bool readBMP(PictureInput& input, PictureSink& sink) {
    const std::optional<BMPHeader> header = readBMPHeader(input);
    if (!header || !hasPixels(header->width, header->height, kMostPixels)) return false;
    return BMPReader(*header, input, sink).read();
}

}  // namespace tavrin
