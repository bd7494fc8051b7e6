#include "FileKind.h"

#include <QIcon>
#include <QMimeDatabase>
#include <array>
#include <utility>

namespace tavrin {
namespace {

// The first beginning that fits decides.
constexpr std::array<std::pair<QLatin1StringView, QLatin1StringView>, 11> symbolsByType{{
    {QLatin1StringView("image/"), QLatin1StringView("photo")},
    {QLatin1StringView("video/"), QLatin1StringView("film")},
    {QLatin1StringView("audio/"), QLatin1StringView("music.note")},
    {QLatin1StringView("text/"), QLatin1StringView("doc.text")},
    {QLatin1StringView("application/pdf"), QLatin1StringView("doc.text")},
    {QLatin1StringView("application/zip"), QLatin1StringView("doc.zipper")},
    {QLatin1StringView("application/gzip"), QLatin1StringView("doc.zipper")},
    {QLatin1StringView("application/x-tar"), QLatin1StringView("doc.zipper")},
    {QLatin1StringView("application/x-compressed"), QLatin1StringView("doc.zipper")},
    {QLatin1StringView("application/vnd.rar"), QLatin1StringView("doc.zipper")},
    {QLatin1StringView("application/x-7z"), QLatin1StringView("doc.zipper")},
}};

QString symbolForType(const QString& type) {
    for (const auto& [beginning, symbol] : symbolsByType)
        if (type.startsWith(beginning)) return symbol;
    return QStringLiteral("doc");
}

QString themedIcon(std::initializer_list<QString> names) {
    for (const QString& name : names)
        if (!name.isEmpty() && QIcon::hasThemeIcon(name)) return name;
    return {};
}

}  // namespace

FileKind fileKind(const URL& url) {
    FileKind kind;
    if (url.pathExtension() == "app") {
        kind.symbol = QStringLiteral("app");
        kind.iconName = themedIcon({QStringLiteral("application-x-executable")});
        return kind;
    }
    if (url.hasDirectoryPath()) {
        kind.symbol = QStringLiteral("folder.fill");
        kind.iconName = themedIcon({QStringLiteral("folder"), QStringLiteral("inode-directory")});
        return kind;
    }
    const QString name = QString::fromStdString(displayText(url.lastPathComponent()));
    const QMimeType type = QMimeDatabase().mimeTypeForFile(name, QMimeDatabase::MatchExtension);
    kind.isImage = type.name().startsWith(QLatin1StringView("image/"));
    kind.isText = type.inherits(QStringLiteral("text/plain"));
    kind.symbol = kind.isText ? QStringLiteral("doc.text") : symbolForType(type.name());
    kind.iconName = themedIcon({type.iconName(), type.genericIconName()});
    return kind;
}

}  // namespace tavrin
