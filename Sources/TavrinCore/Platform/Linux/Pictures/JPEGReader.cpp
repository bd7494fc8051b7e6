// libjpeg-turbo scales while it decodes: at 1/8 each block of 8 x 8 becomes one pixel, its mean, which is the first of
// its coefficients. Of a progressive file it is enough for the brightness to decode the scan that holds those.
#include "TavrinCore/Platform/Linux/Pictures/ExifOrientation.h"
#include "TavrinCore/Platform/Linux/Pictures/PictureCodecs.h"
#include "TavrinCore/Platform/Linux/Pictures/PictureSink.h"

#include <algorithm>
#include <csetjmp>
#include <cstdio>
#include <cstring>
// After cstdio, whose types it uses without including it.
#include <jerror.h>
#include <jpeglib.h>

namespace tavrin {
namespace {

/// Of each block of Exif data: the orientation stands near its beginning.
constexpr unsigned kExifBytes = 2048;
/// Files of which the first coefficients come later than this are made to hurt.
constexpr int kMostScansToFirst = 12;
/// And so are those of more scans than this: each goes over the whole picture. Programs write about ten.
constexpr int kMostScans = 100;

constexpr int kEndOfImage = 0xD9;

/// The library jumps out of its functions when a file is broken, and such a jump runs no destructor: so all that has
/// one is a member here, and the functions that call the library hold nothing of the kind.
class JPEGReader {
  public:
    JPEGReader(PictureInput& input, PictureSink& sink) : input_(input), sink_(sink), wanted_(sink.wanted()) {
        info_.err = ::jpeg_std_error(&errors_);
        info_.client_data = this;
        errors_.error_exit = [](j_common_ptr info) { std::longjmp(self(info).onError_, 1); };
        errors_.emit_message = [](j_common_ptr info, int level) {
            if (level < 0 && isBroken(info->err->msg_code)) std::longjmp(self(info).onError_, 1);
        };
        source_.init_source = [](j_decompress_ptr) {};
        source_.term_source = [](j_decompress_ptr) {};
        source_.resync_to_restart = ::jpeg_resync_to_restart;
        source_.fill_input_buffer = [](j_decompress_ptr info) -> boolean {
            // The library goes on with grey where a file ends; to us such a file is broken.
            if (!self(info).fill()) std::longjmp(self(info).onError_, 1);
            return TRUE;
        };
        source_.skip_input_data = [](j_decompress_ptr info, long count) {
            if (count > 0) self(info).skip(static_cast<std::uint64_t>(count));
        };
        // Called between two rows of blocks while all scans are decoded, which may be hardly any bytes.
        progress_.progress_monitor = [](j_common_ptr info) {
            const auto* decoder = reinterpret_cast<j_decompress_ptr>(info);
            if (decoder->input_scan_number > kMostScans || self(info).input_.isCancelled())
                std::longjmp(self(info).onError_, 1);
        };
    }
    ~JPEGReader() { ::jpeg_destroy_decompress(&info_); }
    JPEGReader(const JPEGReader&) = delete;
    JPEGReader& operator=(const JPEGReader&) = delete;

    bool read() {
        if (!readHeader()) return false;
        if (!hasPixels(info_.image_width, info_.image_height, mostPixels())) return false;
        setUp();
        if (!begin()) return false;
        const auto divisor = static_cast<double>(info_.scale_denom);
        sink_.begin({.width = info_.output_width,
                     .height = info_.output_height,
                     .orientation = orientation(),
                     .extent = {info_.image_width / divisor, info_.image_height / divisor}});
        row_.resize(std::size_t{info_.output_width} * static_cast<std::size_t>(info_.output_components));
        return readRows() && (!onlyFirstScan_ || isWhole());
    }

  private:
    template <class Info>
    static JPEGReader& self(Info* info) {
        return *static_cast<JPEGReader*>(info->client_data);
    }

    /// Of the library's warnings those after which the picture isn't what it was.
    static bool isBroken(int message) {
        return message == JWRN_HIT_MARKER || message == JWRN_HUFF_BAD_CODE || message == JWRN_MUST_RESYNC;
    }

    bool fill() {
        const std::span<const unsigned char> bytes = input_.next();
        source_.next_input_byte = bytes.data();
        source_.bytes_in_buffer = bytes.size();
        return !bytes.empty();
    }

    void skip(std::uint64_t count) {
        const std::uint64_t here = std::min<std::uint64_t>(count, source_.bytes_in_buffer);
        source_.next_input_byte += here;
        source_.bytes_in_buffer -= static_cast<std::size_t>(here);
        if (count > here) input_.skip(count - here);
    }

    bool readHeader() {
        if (setjmp(onError_) != 0) return false;
        ::jpeg_create_decompress(&info_);
        info_.src = &source_;
        ::jpeg_save_markers(&info_, JPEG_APP0 + 1, kExifBytes);
        return ::jpeg_read_header(&info_, TRUE) == JPEG_HEADER_OK;
    }

    /// Of a file with more than one scan, the library holds all coefficients.
    std::uint64_t mostPixels() { return ::jpeg_has_multiple_scans(&info_) ? kMostPixelsAtOnce : kMostPixels; }

    /// The most by which it may be scaled. A file in scans must be decoded whole for less than an eighth, which takes
    /// seven times as long as its first scan: for brightness, that one does a little earlier.
    unsigned scaleDivisor() const {
        const auto longest = std::max(info_.image_width, info_.image_height);
        const auto shortest = std::min(info_.image_width, info_.image_height);
        const bool isCheaperByEighths = info_.progressive_mode && !wanted_.isInColours;
        const auto leaves = [&](unsigned divisor) {
            const std::size_t parts = divisor == 8 && isCheaperByEighths ? 3 : 4;
            return 4 * longest / divisor >= parts * wanted_.onLongest &&
                   4 * shortest / divisor >= parts * wanted_.onShortest;
        };
        unsigned divisor = 8;
        while (divisor > 1 && !leaves(divisor))
            divisor /= 2;
        return divisor;
    }

    void setUp() {
        const unsigned divisor = scaleDivisor();
        info_.scale_num = 1;
        info_.scale_denom = divisor;
        info_.do_block_smoothing = FALSE;
        info_.do_fancy_upsampling = wanted_.isInColours ? TRUE : FALSE;
        const bool isFourInks = info_.jpeg_color_space == JCS_CMYK || info_.jpeg_color_space == JCS_YCCK;
        // The file's own brightness isn't that of its colours, which are rounded and which other formats hold; among
        // many blocks it evens out.
        const bool isGrey = (divisor == 8 && !wanted_.isInColours) || info_.jpeg_color_space == JCS_GRAYSCALE;
        info_.out_color_space = isFourInks ? JCS_CMYK : isGrey ? JCS_GRAYSCALE : JCS_RGB;
        // Its last bits come with later scans, and a screen shows them.
        onlyFirstScan_ = info_.progressive_mode && divisor == 8 && !wanted_.isInColours && !isFourInks;
        info_.buffered_image = onlyFirstScan_ ? TRUE : FALSE;
        if (!onlyFirstScan_ && ::jpeg_has_multiple_scans(&info_)) info_.progress = &progress_;
    }

    bool begin() {
        if (setjmp(onError_) != 0) return false;
        if (!::jpeg_start_decompress(&info_)) return false;
        return !onlyFirstScan_ || (consumeFirstCoefficients() && ::jpeg_start_output(&info_, info_.input_scan_number));
    }

    /// To the end of the scan that brings the last of the blocks' means.
    bool consumeFirstCoefficients() {
        while (info_.input_scan_number <= kMostScansToFirst && !input_.isCancelled()) {
            const int status = ::jpeg_consume_input(&info_);
            if (status == JPEG_REACHED_EOI) return false;
            if (status == JPEG_SCAN_COMPLETED && hasFirstCoefficients()) return true;
        }
        return false;
    }

    bool hasFirstCoefficients() const {
        for (int component = 0; component < info_.num_components; ++component) {
            if (info_.coef_bits == nullptr || info_.coef_bits[component][0] < 0) return false;
        }
        return true;
    }

    bool readRows() {
        if (setjmp(onError_) != 0) return false;
        while (info_.output_scanline < info_.output_height) {
            if (input_.isCancelled()) return false;
            readRow();
        }
        return true;
    }

    void readRow() {
        JSAMPROW row = row_.data();
        const std::size_t y = info_.output_scanline;
        if (::jpeg_read_scanlines(&info_, &row, 1) != 1) std::longjmp(onError_, 1);
        if (info_.output_components == 4) coloursFromInks();
        const PixelKind kind = info_.output_components == 1 ? PixelKind::grey : PixelKind::rgb;
        sink_.add({.y = y, .samples = {row_.data(), info_.output_width * samplesOf(kind)}, .kind = kind});
    }

    /// Files of four inks hold them inverted, as the program that made the format does, unless no marker says so.
    void coloursFromInks() {
        const unsigned flip = info_.saw_Adobe_marker ? 0 : 255;
        for (std::size_t x = 0; x < info_.output_width; ++x) {
            const std::uint8_t* inks = row_.data() + 4 * x;
            const unsigned light = inks[3] ^ flip;
            for (std::size_t colour = 0; colour < 3; ++colour)
                row_[3 * x + colour] = static_cast<std::uint8_t>(times(inks[colour] ^ flip, light));
        }
    }

    /// The rest of the file is only looked through for its end.
    bool isWhole() {
        int marker = info_.unread_marker;
        for (;;) {
            if (marker == 0) marker = nextMarker();
            if (marker < 0) return false;
            if (marker == kEndOfImage) return true;
            const int high = nextByte();
            const int low = nextByte();
            if (high < 0 || low < 0) return false;
            const int length = high << 8 | low;
            if (length < 2) return false;
            skip(static_cast<std::uint64_t>(length - 2));
            marker = 0;
        }
    }

    int nextByte() {
        if (source_.bytes_in_buffer == 0 && !fill()) return -1;
        --source_.bytes_in_buffer;
        return *source_.next_input_byte++;
    }

    /// Passes over compressed data, in which 0xFF is followed by 0 or by one of the eight restart markers. -1 at the
    /// end.
    int nextMarker() {
        for (;;) {
            if (source_.bytes_in_buffer == 0 && !fill()) return -1;
            const auto* found =
                static_cast<const JOCTET*>(std::memchr(source_.next_input_byte, 0xFF, source_.bytes_in_buffer));
            if (found == nullptr) {
                source_.bytes_in_buffer = 0;
                continue;
            }
            skip(static_cast<std::uint64_t>(found - source_.next_input_byte) + 1);
            int code = nextByte();
            while (code == 0xFF)
                code = nextByte();
            if (code < 0 || (code != 0 && (code < 0xD0 || code > 0xD7))) return code;
        }
    }

    unsigned orientation() const {
        for (const jpeg_marker_struct* marker = info_.marker_list; marker != nullptr; marker = marker->next) {
            const std::span<const std::uint8_t> data(marker->data, marker->data_length);
            if (data.size() > 4 && std::memcmp(data.data(), "Exif", 4) == 0) return exifOrientation(data);
        }
        return 1;
    }

    PictureInput& input_;
    PictureSink& sink_;
    PictureSink::Wanted wanted_;
    jpeg_decompress_struct info_{};
    jpeg_error_mgr errors_{};
    jpeg_source_mgr source_{};
    jpeg_progress_mgr progress_{};
    std::jmp_buf onError_{};
    std::vector<std::uint8_t> row_;
    bool onlyFirstScan_ = false;
};

}  // namespace

bool readJPEG(PictureInput& input, PictureSink& sink) {
    return JPEGReader(input, sink).read();
}

}  // namespace tavrin
