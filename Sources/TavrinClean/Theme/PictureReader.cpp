#include "PictureReader.h"

#include "TavrinCore/Platform/FileReader.h"

#include <QIODevice>
#include <QImageReader>
#include <QPainter>
#include <QtEndian>
#include <memory>
#include <span>
#include <string_view>

namespace tavrin {
namespace {

/// A file as the core reads files: found by its bytes, never a pipe that would be waited for, and a look at a picture
/// doesn't count as its use.
class PictureFile final : public QIODevice {
  public:
    explicit PictureFile(const URL& url) : file_(FileReader::open(url, FileReader::Expect::beginning)) {
        if (file_ == nullptr) return;
        size_ = file_->status().size.value_or(0);
        open(QIODevice::ReadOnly);
    }

    [[nodiscard]] qint64 size() const override { return size_; }
    bool seek(qint64 position) override {
        position_ = position;
        return QIODevice::seek(position);
    }

  protected:
    qint64 readData(char* data, qint64 most) override {
        const std::span buffer(reinterpret_cast<unsigned char*>(data), static_cast<std::size_t>(most));
        const auto count = file_->readAt(static_cast<std::uint64_t>(position_), buffer);
        if (!count) return -1;
        position_ += static_cast<qint64>(*count);
        return static_cast<qint64>(*count);
    }
    qint64 writeData(const char* /*data*/, qint64 /*size*/) override { return -1; }

  private:
    std::unique_ptr<FileReader> file_;
    qint64 size_ = 0;
    /// Where the next piece is read. It runs ahead of pos(), which is where the reader is in what was read.
    qint64 position_ = 0;
};

// A PNG says in its first chunk whether it comes in passes.
bool isInterlacedPng(QIODevice& device) {
    const QByteArray head = device.peek(29);
    return head.size() == 29 && head.startsWith("\x89PNG\r\n\x1a\n") && head[28] != 0;
}

// A JPEG says it in the marker of its first frame: SOF2, SOF6, SOF10 and SOF14 are the progressive ones. The segments
// before it are skipped by their lengths.
bool isProgressiveJpeg(QIODevice& device) {
    constexpr qint64 headBytes = 1 << 20;
    const QByteArray head = device.peek(headBytes);
    if (!head.startsWith("\xff\xd8")) return false;
    const auto byte = [&head](qsizetype at) { return static_cast<unsigned char>(head[at]); };
    for (qsizetype at = 2; at + 4 <= head.size() && byte(at) == 0xFF;) {
        const unsigned marker = byte(at + 1);
        const bool frame = marker >= 0xC0 && marker <= 0xCF && marker != 0xC4 && marker != 0xC8 && marker != 0xCC;
        if (frame) return (marker & 3U) == 2;
        at += marker == 0xFF ? 1 : 2 + (byte(at + 2) << 8 | byte(at + 3));
    }
    return true;  // The frame lies beyond what was looked at: the lower cap holds.
}

}  // namespace

bool isWithinCaps(QSize size, bool comesInPasses) {
    const std::int64_t pixels = std::int64_t{size.width()} * size.height();
    return !size.isEmpty() && pixels <= (comesInPasses ? interlacedPixelCap : pixelCap);
}

bool comesInPasses(QIODevice& device) {
    return isInterlacedPng(device) || isProgressiveJpeg(device);
}

QImage readPicture(const URL& url, QSize bounds, Qt::AspectRatioMode mode) {
    PictureFile file(url);
    if (!file.isOpen()) return {};

    const bool inPasses = comesInPasses(file);
    QImageReader reader(&file);
    reader.setAutoTransform(true);
    reader.setDecideFormatFromContent(true);
    const QSize size = reader.size();
    if (!reader.canRead() || !isWithinCaps(size, inPasses)) return {};

    // Turned by its orientation, a picture is measured after the turn.
    const bool turned = reader.transformation() & QImageIOHandler::TransformationRotate90;
    const QSize wanted = turned ? bounds.transposed() : bounds;
    const QSize scaled = size.scaled(wanted, mode).expandedTo({1, 1});
    if (scaled.width() < size.width()) reader.setScaledSize(scaled);
    return reader.read();
}

QImage roundedSquare(const QImage& picture, int side, double cornerShare) {
    QImage square(side, side, QImage::Format_ARGB32_Premultiplied);
    square.fill(Qt::transparent);
    QPainter painter(&square);
    painter.setRenderHints(QPainter::Antialiasing | QPainter::SmoothPixmapTransform);
    const QSizeF shown = QSizeF(picture.size()).scaled(side, side, Qt::KeepAspectRatioByExpanding);
    const QPointF corner((side - shown.width()) / 2, (side - shown.height()) / 2);
    // As the brush of the shape, and not cut by a clip path, so that the corners are smooth.
    QBrush brush(picture);
    brush.setTransform(QTransform::fromTranslate(corner.x(), corner.y())
                           .scale(shown.width() / picture.width(), shown.height() / picture.height()));
    painter.setBrush(brush);
    painter.setPen(Qt::NoPen);
    painter.drawRoundedRect(QRectF(0, 0, side, side), side * cornerShare, side * cornerShare);
    return square;
}

}  // namespace tavrin
