#include "FileImages.h"

#include "FileKind.h"
#include "FileThreads.h"
#include "PictureReader.h"
#include "SymbolTable.h"
#include "TavrinCore/Models/URL.h"

#include <QIcon>
#include <QRunnable>
#include <algorithm>
#include <atomic>
#include <optional>
#include <utility>

namespace tavrin {
namespace {

constexpr int defaultSide = 256;
constexpr auto idEncoding = QByteArray::Base64UrlEncoding | QByteArray::OmitTrailingEquals;

// One picture on its way. The engine deletes it on the main thread once `finished` was heard.
class ThumbnailResponse : public QQuickImageResponse, public QRunnable {
  public:
    /// A whole picture of at most `side` pixels, or with a share for its corners a square of just as many.
    ThumbnailResponse(URL url, int side, std::optional<double> cornerShare)
        : url_(std::move(url)), side_(side), cornerShare_(cornerShare) {
        setAutoDelete(false);
    }

    void run() override {
        if (!isCancelled()) image_ = load();
        Q_EMIT finished();
    }

    void cancel() override { cancelled_.store(true, std::memory_order_relaxed); }
    // That a file holds no picture is no error, which would be logged for each: nothing is handed on, and the item is
    // empty.
    [[nodiscard]] QQuickTextureFactory* textureFactory() const override {
        return image_.isNull() ? nullptr : QQuickTextureFactory::textureFactoryForImage(image_);
    }

  private:
    [[nodiscard]] bool isCancelled() const { return cancelled_.load(std::memory_order_relaxed); }
    [[nodiscard]] QImage load() const {
        const PictureForm form{.side = static_cast<std::size_t>(side_),
                               .shape = cornerShare_ ? PictureForm::Shape::square : PictureForm::Shape::whole};
        const QImage picture = readPicture(url_, form, [this] { return isCancelled(); });
        return picture.isNull() || !cornerShare_ ? picture : roundedSquare(picture, side_, *cornerShare_);
    }

    URL url_;
    int side_;
    std::optional<double> cornerShare_;
    std::atomic<bool> cancelled_ = false;
    QImage image_;
};

// Encoded, because an address passes through hands that tidy up percent signs and slashes.
QString encoded(const QString& url) {
    return QString::fromLatin1(url.toUtf8().toBase64(idEncoding));
}

}  // namespace

QStringList FileImages::symbols() {
    QStringList keys;
    keys.reserve(qsizetype(symbolFiles().size()));
    for (const SymbolFile& entry : symbolFiles())
        keys << QString::fromUtf8(entry.key.data(), qsizetype(entry.key.size()));
    return keys;
}

QString FileImages::icon(const QString& url) {
    const auto parsed = URL::fromAbsoluteString(url.toStdString());
    if (!parsed) return {};
    const QString name = fileKind(*parsed).iconName;
    return name.isEmpty() ? QString() : QStringLiteral("image://fileicon/") + name;
}

QString FileImages::symbol(const QString& url) {
    const auto parsed = URL::fromAbsoluteString(url.toStdString());
    return parsed ? fileKind(*parsed).symbol : QStringLiteral("doc");
}

QString FileImages::thumbnail(const QString& url, double cornerShare) {
    return QStringLiteral("image://thumbnail/%1/").arg(qRound(cornerShare * 1000)) + encoded(url);
}

QString FileImages::picture(const QString& url) {
    return QStringLiteral("image://thumbnail/whole/") + encoded(url);
}

QImage FileIconImages::requestImage(const QString& id, QSize* size, const QSize& requestedSize) {
    const int side = requestedSize.isEmpty() ? defaultSide : std::max(requestedSize.width(), requestedSize.height());
    const QImage image = QIcon::fromTheme(id).pixmap(QSize(side, side), 1.0).toImage();
    *size = image.size();
    return image;
}

ThumbnailImages::~ThumbnailImages() {
    fileThreads().waitForDone();
}

QQuickImageResponse* ThumbnailImages::requestImageResponse(const QString& id, const QSize& requestedSize) {
    const QString form = id.section(u'/', 0, 0);
    const QByteArray text = QByteArray::fromBase64(id.section(u'/', 1).toLatin1(), idEncoding);
    bool isSquare = false;
    const double share = form.toInt(&isSquare) / 1000.0;
    const int side = requestedSize.isEmpty() ? defaultSide : std::max(requestedSize.width(), requestedSize.height());
    auto* response = new ThumbnailResponse(URL::fromAbsoluteString(text.toStdString()).value_or(URL()), side,
                                           isSquare ? std::optional(share) : std::nullopt);
    fileThreads().start(response);
    return response;
}

}  // namespace tavrin
