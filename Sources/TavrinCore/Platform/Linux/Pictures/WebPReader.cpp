// libwebp, which scales while it decodes: the first frame, on the canvas that it belongs to. It wants the file in
// memory, but is given it piece by piece, so that a cancel is noticed between two pieces.
#include "TavrinCore/Platform/Linux/Pictures/ExifOrientation.h"
#include "TavrinCore/Platform/Linux/Pictures/PictureCodecs.h"
#include "TavrinCore/Platform/Linux/Pictures/PictureSink.h"

#include <webp/decode.h>
#include <webp/demux.h>

#include <algorithm>
#include <memory>

namespace tavrin {
namespace {

/// The format's own limit is 4 GiB; no picture within the limit of pixels comes near this.
constexpr std::uint64_t kMostBytes = std::uint64_t{96} << 20U;
/// The longest side to which the library scales where brightness is enough.
constexpr std::uint64_t kScaledSide = 512;
constexpr int kLossless = 2;
/// Some 20 ms of work. The library goes back a little at the end of each piece, so that smaller ones cost.
constexpr std::size_t kPiece = std::size_t{256} * 1024;

std::vector<std::uint8_t> wholeFile(PictureInput& input) {
    if (input.size() > kMostBytes) return {};
    std::vector<std::uint8_t> bytes(static_cast<std::size_t>(input.size()));
    bytes.resize(input.read(bytes.data(), bytes.size()));
    return bytes;
}

struct DeleteDemuxer {
    void operator()(WebPDemuxer* demuxer) const { ::WebPDemuxDelete(demuxer); }
};

/// The frame that is shown first.
class FirstFrame {
  public:
    explicit FirstFrame(const WebPDemuxer* demuxer) : isThere_(::WebPDemuxGetFrame(demuxer, 1, &frame_) != 0) {}
    ~FirstFrame() { ::WebPDemuxReleaseIterator(&frame_); }
    FirstFrame(const FirstFrame&) = delete;
    FirstFrame& operator=(const FirstFrame&) = delete;

    [[nodiscard]] bool isThere() const { return isThere_ && frame_.width > 0 && frame_.height > 0; }
    [[nodiscard]] const WebPIterator& operator*() const { return frame_; }

  private:
    WebPIterator frame_{};
    bool isThere_;
};

/// A length or offset on the canvas, where the canvas is scaled.
struct Scale {
    std::uint64_t to;
    std::uint64_t from;

    [[nodiscard]] std::size_t operator()(std::uint64_t length) const {
        return static_cast<std::size_t>((length * to + from / 2) / from);
    }
    [[nodiscard]] std::size_t atLeastOne(std::uint64_t length) const {
        return std::max<std::size_t>(1, (*this)(length));
    }
};

struct DeleteDecoder {
    void operator()(WebPIDecoder* decoder) const { ::WebPIDelete(decoder); }
};

bool decodeByPieces(const WebPData& data, WebPDecoderConfig& config, const PictureInput& input) {
    const std::unique_ptr<WebPIDecoder, DeleteDecoder> decoder(::WebPIDecode(nullptr, 0, &config));
    if (decoder == nullptr) return false;
    for (std::size_t given = 0; given < data.size && !input.isCancelled();) {
        given += std::min(kPiece, data.size - given);
        const VP8StatusCode status = ::WebPIUpdate(decoder.get(), data.bytes, given);
        if (status != VP8_STATUS_SUSPENDED) return status == VP8_STATUS_OK;
    }
    return false;
}

/// What must be left of the canvas. In colours it is what is asked for, to the pixel.
Scale scaleOf(std::uint64_t width, std::uint64_t height, const PictureSink::Wanted& wanted) {
    const std::uint64_t longest = std::max(width, height);
    const std::uint64_t shortest = std::min(width, height);
    if (!wanted.isInColours) return {.to = std::min(longest, kScaledSide), .from = longest};
    if (wanted.onLongest > 0) return {.to = std::min<std::uint64_t>(longest, wanted.onLongest), .from = longest};
    return {.to = std::min<std::uint64_t>(shortest, wanted.onShortest), .from = shortest};
}

bool decode(const WebPIterator& frame, const PictureInput& input, const Scale& scale, PictureSink& sink) {
    WebPDecoderConfig config;
    if (::WebPInitDecoderConfig(&config) == 0) return false;
    if (::WebPGetFeatures(frame.fragment.bytes, frame.fragment.size, &config.input) != VP8_STATUS_OK) return false;
    // What is coded without loss is held whole while it is decoded.
    const std::uint64_t most = config.input.format == kLossless ? kMostPixelsAtOnce : kMostPixels;
    if (!hasPixels(static_cast<std::uint64_t>(config.input.width), static_cast<std::uint64_t>(config.input.height),
                   most))
        return false;
    const std::size_t width = scale.atLeastOne(static_cast<std::uint64_t>(frame.width));
    const std::size_t height = scale.atLeastOne(static_cast<std::uint64_t>(frame.height));
    config.options.use_scaling = 1;
    config.options.scaled_width = static_cast<int>(width);
    config.options.scaled_height = static_cast<int>(height);
    config.output.colorspace = MODE_rgbA;
    const bool isDecoded = decodeByPieces(frame.fragment, config, input);
    for (std::size_t y = 0; isDecoded && y < height; ++y) {
        const std::uint8_t* row = config.output.u.RGBA.rgba + y * static_cast<std::size_t>(config.output.u.RGBA.stride);
        sink.add({.x = scale(static_cast<std::uint64_t>(frame.x_offset)),
                  .y = scale(static_cast<std::uint64_t>(frame.y_offset)) + y,
                  .samples = {row, 4 * width},
                  .kind = PixelKind::premultipliedRGBA});
    }
    ::WebPFreeDecBuffer(&config.output);
    return isDecoded;
}

unsigned orientationIn(const WebPDemuxer* demuxer) {
    WebPChunkIterator chunk{};
    unsigned orientation = 1;
    if (::WebPDemuxGetChunk(demuxer, "EXIF", 1, &chunk) != 0)
        orientation = exifOrientation({chunk.chunk.bytes, chunk.chunk.size});
    ::WebPDemuxReleaseChunkIterator(&chunk);
    return orientation;
}

}  // namespace

bool readWebP(PictureInput& input, PictureSink& sink) {
    const std::vector<std::uint8_t> bytes = wholeFile(input);
    const WebPData data{bytes.data(), bytes.size()};
    const std::unique_ptr<WebPDemuxer, DeleteDemuxer> demuxer(::WebPDemux(&data));
    if (demuxer == nullptr) return false;
    const std::uint64_t width = ::WebPDemuxGetI(demuxer.get(), WEBP_FF_CANVAS_WIDTH);
    const std::uint64_t height = ::WebPDemuxGetI(demuxer.get(), WEBP_FF_CANVAS_HEIGHT);
    if (!hasPixels(width, height, kMostPixels)) return false;
    const FirstFrame frame(demuxer.get());
    if (!frame.isThere()) return false;
    const Scale scale = scaleOf(width, height, sink.wanted());
    sink.begin({.width = scale.atLeastOne(width),
                .height = scale.atLeastOne(height),
                .orientation = orientationIn(demuxer.get())});
    return decode(*frame, input, scale, sink);
}

}  // namespace tavrin
