#include "TavrinCore/Platform/Linux/Pictures/HEIFPixels.h"

#include "TavrinCore/Platform/Linux/Pictures/LibHEIF.h"

#include <vector>

namespace tavrin {
namespace {

/// One plane of an image, brought to 8 bits.
class Plane {
  public:
    Plane(const heif_image* image, heif_channel channel)
        : width_(heif().image_get_width(image, channel)),
          height_(heif().image_get_height(image, channel)),
          bits_(heif().image_get_bits_per_pixel_range(image, channel)),
          bytes_(heif().image_get_plane_readonly(image, channel, &stride_)) {}

    [[nodiscard]] bool isThere() const { return bytes_ != nullptr && width_ > 0 && height_ > 0 && bits_ >= 8; }
    [[nodiscard]] std::size_t width() const { return static_cast<std::size_t>(width_); }
    [[nodiscard]] std::size_t height() const { return static_cast<std::size_t>(height_); }
    [[nodiscard]] bool hasSizeOf(const Plane& other) const {
        return width_ == other.width_ && height_ == other.height_;
    }
    /// More than 8 bits stand in two bytes, in the order of this machine.
    [[nodiscard]] std::uint8_t at(std::size_t x, std::size_t y) const {
        const std::uint8_t* row = bytes_ + y * static_cast<std::size_t>(stride_);
        if (bits_ == 8) return row[x];
        const unsigned value = row[2 * x] | static_cast<unsigned>(row[2 * x + 1]) << 8U;
        return static_cast<std::uint8_t>(value >> static_cast<unsigned>(bits_ - 8));
    }

  private:
    int stride_ = 0;
    int width_;
    int height_;
    int bits_;
    const std::uint8_t* bytes_;
};

/// The planes of a picture: three of colours, or brightness alone. What else there may be of colours isn't looked at.
struct Planes {
    explicit Planes(const heif_image* image)
        : isRGB(heif().image_get_colorspace(image) == heif_colorspace_RGB),
          red(image, isRGB ? heif_channel_R : heif_channel_Y),
          green(image, isRGB ? heif_channel_G : heif_channel_Y),
          blue(image, isRGB ? heif_channel_B : heif_channel_Y),
          alpha(image, heif_channel_Alpha),
          hasAlpha(alpha.isThere() && alpha.hasSizeOf(red)) {}

    [[nodiscard]] bool fit() const {
        return red.isThere() && green.isThere() && blue.isThere() && green.hasSizeOf(red) && blue.hasSizeOf(red) &&
               hasPixels(red.width(), red.height(), kMostPixelsOfHEIF);
    }

    bool isRGB;
    Plane red;
    Plane green;
    Plane blue;
    Plane alpha;
    bool hasAlpha;
};

void readRow(const Planes& planes, std::size_t y, std::uint8_t* to) {
    for (std::size_t x = 0; x < planes.red.width(); ++x) {
        *to++ = planes.red.at(x, y);
        if (planes.isRGB) {
            *to++ = planes.green.at(x, y);
            *to++ = planes.blue.at(x, y);
        }
        if (planes.hasAlpha) *to++ = planes.alpha.at(x, y);
    }
}

}  // namespace

bool addPixels(const heif_image* image, const PictureInput& input, PictureSink& sink) {
    const Planes planes(image);
    if (!planes.fit()) return false;
    sink.begin({.width = planes.red.width(), .height = planes.red.height()});
    const PixelKind colours = planes.hasAlpha ? PixelKind::rgba : PixelKind::rgb;
    const PixelKind greys = planes.hasAlpha ? PixelKind::greyAlpha : PixelKind::grey;
    const PixelKind kind = planes.isRGB ? colours : greys;
    std::vector<std::uint8_t> row(samplesOf(kind) * planes.red.width());
    for (std::size_t y = 0; y < planes.red.height(); ++y) {
        if (input.isCancelled()) return false;
        readRow(planes, y, row.data());
        sink.add({.y = y, .samples = row, .kind = kind});
    }
    return true;
}

}  // namespace tavrin
