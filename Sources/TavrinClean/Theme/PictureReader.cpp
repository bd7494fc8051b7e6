#include "PictureReader.h"

#include "TavrinCore/Platform/FileReader.h"

#include <QIODevice>
#include <QImageReader>
#include <QPainter>
#include <algorithm>
#include <memory>
#include <optional>
#include <span>
#include <utility>

namespace tavrin {
namespace {

/// A file as the core reads files, for the toolkit. The reader must outlive it.
class PictureFile final : public QIODevice {
  public:
    explicit PictureFile(FileReader& file) : file_(file) { open(QIODevice::ReadOnly); }

    [[nodiscard]] qint64 size() const override { return file_.status().size.value_or(0); }
    bool seek(qint64 position) override {
        position_ = position;
        return QIODevice::seek(position);
    }

  protected:
    qint64 readData(char* data, qint64 most) override {
        const std::span buffer(reinterpret_cast<unsigned char*>(data), static_cast<std::size_t>(most));
        const auto count = file_.readAt(static_cast<std::uint64_t>(position_), buffer);
        if (!count) return -1;
        position_ += static_cast<qint64>(*count);
        return static_cast<qint64>(*count);
    }
    qint64 writeData(const char* /*data*/, qint64 /*size*/) override { return -1; }

  private:
    FileReader& file_;
    /// Where the next piece is read. It runs ahead of pos(), which is where the reader is in what was read.
    qint64 position_ = 0;
};

/// Without a copy: the image keeps the pixels.
QImage imageOf(RGBAPicture picture) {
    auto* kept = new RGBAPicture(std::move(picture));
    return {kept->pixels.data(),
            static_cast<int>(kept->width),
            static_cast<int>(kept->height),
            static_cast<qsizetype>(kept->stride()),
            QImage::Format_RGBA8888_Premultiplied,
            [](void* pixels) { delete static_cast<RGBAPicture*>(pixels); },
            kept};
}

QImage readByToolkit(FileReader& file, const PictureForm& form) {
    PictureFile device(file);
    QImageReader reader(&device);
    reader.setDecideFormatFromContent(true);
    const QSize size = reader.size();
    if (!reader.canRead() || size.isEmpty()) return {};
    const bool isSquare = form.shape == PictureForm::Shape::square;
    const int side = static_cast<int>(form.side);
    const QSize scaled = size.scaled({side, side}, isSquare ? Qt::KeepAspectRatioByExpanding : Qt::KeepAspectRatio);
    if (scaled.width() < size.width()) reader.setScaledSize(scaled.expandedTo({1, 1}));
    return reader.read();
}

}  // namespace

QImage readPicture(const URL& url, const PictureForm& form, const CancellationCallback& isCancelled) {
    const std::unique_ptr<FileReader> file = FileReader::open(url, FileReader::Expect::beginning);
    if (file == nullptr) return {};
    if (!isPictureOfKnownFormat(*file)) return readByToolkit(*file, form);
    std::optional<RGBAPicture> picture = decodePicture(*file, form, isCancelled);
    return picture ? imageOf(std::move(*picture)) : QImage();
}

QImage roundedSquare(const QImage& picture, int side, double cornerShare) {
    QImage square(side, side, QImage::Format_ARGB32_Premultiplied);
    square.fill(Qt::transparent);
    QPainter painter(&square);
    painter.setRenderHint(QPainter::Antialiasing);
    const int middle = std::min(picture.width(), picture.height());
    const QImage cut = picture.copy((picture.width() - middle) / 2, (picture.height() - middle) / 2, middle, middle);
    // As the brush of the shape, and not cut by a clip path, so that the corners are smooth. It is scaled before: a
    // brush goes round, and its edges would be mixed with those on the other side.
    painter.setBrush(QBrush(cut.scaled(side, side, Qt::IgnoreAspectRatio, Qt::SmoothTransformation)));
    painter.setPen(Qt::NoPen);
    painter.drawRoundedRect(QRectF(0, 0, side, side), side * cornerShare, side * cornerShare);
    return square;
}

}  // namespace tavrin
