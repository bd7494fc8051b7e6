// Icons and thumbnails of files, for lists.
#pragma once

#include <QtQml/qqmlregistration.h>

#include <QObject>
#include <QQuickAsyncImageProvider>

namespace tavrin {

/// Where the pictures of a file are to be had. A file is named by the absolute form of its URL, "file:///a%20b", so
/// that a name that is no text gets its picture too.
class FileImages : public QObject {
    Q_OBJECT
    QML_ELEMENT
    QML_SINGLETON
    /// The keys of all symbols there are.
    Q_PROPERTY(QStringList symbols READ symbols CONSTANT FINAL)

  public:
    using QObject::QObject;

    [[nodiscard]] static QStringList symbols();

    /// The address of the desktop's icon for that kind of file; empty when its icon theme has none.
    Q_INVOKABLE static QString icon(const QString& url);
    /// The symbol that stands for that kind of file where the desktop has no icon.
    Q_INVOKABLE static QString symbol(const QString& url);
    /// The address of a small square picture of what is in the file, its corners rounded by that share of its side. It
    /// is made in the background, and may turn out not to exist.
    Q_INVOKABLE static QString thumbnail(const QString& url, double cornerShare);
    /// The address of the whole picture, likewise.
    Q_INVOKABLE static QString picture(const QString& url);
};

/// "image://fileicon/NAME": an icon of the desktop's theme. On the main thread, where the icon theme lives.
class FileIconImages : public QQuickImageProvider {
  public:
    FileIconImages() : QQuickImageProvider(Image) {}

    QImage requestImage(const QString& id, QSize* size, const QSize& requestedSize) override;
};

/// "image://thumbnail/ID", with the IDs that FileImages gives.
class ThumbnailImages : public QQuickAsyncImageProvider {
  public:
    ThumbnailImages() = default;
    /// Waits for those on their way.
    ~ThumbnailImages() override;

    QQuickImageResponse* requestImageResponse(const QString& id, const QSize& requestedSize) override;
};

}  // namespace tavrin
