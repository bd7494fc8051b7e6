#include "PictureReader.h"

#include <QFile>
#include <QImageReader>
#include <QPainter>
#include <QtEndian>
#include <cstdio>
#include <filesystem>
#include <memory>
#include <string_view>
#include <system_error>

namespace tavrin {
namespace {

struct CloseFile {
    void operator()(std::FILE* file) const { std::fclose(file); }
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
    // Opening a pipe would wait for somebody to write into it.
    std::error_code error;
    if (!std::filesystem::is_regular_file(url.path(), error)) return {};
    // By its bytes: a name that is no text can't be opened by a name that is.
    const std::unique_ptr<std::FILE, CloseFile> handle(std::fopen(url.path().c_str(), "rb"));
    QFile file;
    if (!handle || !file.open(handle.get(), QIODevice::ReadOnly)) return {};

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
