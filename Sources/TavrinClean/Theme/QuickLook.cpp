#include "QuickLook.h"

#include "FileKind.h"
#include "TavrinCore/Models/URL.h"
#include "TavrinCore/Scanning/ByteFormatter.h"
#include "TavrinCore/Strings.h"

#include <QDateTime>
#include <QLocale>
#include <QThreadPool>
#include <chrono>
#include <filesystem>
#include <fstream>
#include <mutex>
#include <system_error>
#include <utility>

namespace tavrin {
namespace {

constexpr std::size_t textBytes = 64 * 1024;

QString nameOf(const URL& url) {
    return QString::fromStdString(displayText(url.lastPathComponent()));
}

QString readText(const std::string& path) {
    std::ifstream file(path, std::ios::binary);
    std::string bytes(textBytes, '\0');
    file.read(bytes.data(), static_cast<std::streamsize>(bytes.size()));
    bytes.resize(static_cast<std::size_t>(file.gcount()));
    return safeText(std::move(bytes));
}

QString shownDate(std::filesystem::file_time_type time) {
    const auto sinceEpoch = std::chrono::file_clock::to_sys(time).time_since_epoch();
    const auto milliseconds = std::chrono::duration_cast<std::chrono::milliseconds>(sinceEpoch).count();
    const QLocale locale(S::useEnglish() ? QLocale::English : QLocale::Spanish);
    return locale.toString(QDateTime::fromMSecsSinceEpoch(milliseconds), QLocale::ShortFormat);
}

// The marks that turn the direction of text: a name or a text could disguise itself with them.
bool turnsText(QChar c) {
    const char16_t u = c.unicode();
    return (u >= 0x202A && u <= 0x202E) || (u >= 0x2066 && u <= 0x2069);
}

}  // namespace

QString safeText(std::string bytes) {
    QString text = QString::fromStdString(displayText(bytes));
    text.replace(QStringLiteral("\r\n"), QStringLiteral("\n"));
    for (QChar& c : text) {
        const bool control = c.category() == QChar::Other_Control && c != u'\n' && c != u'\t';
        if (control || turnsText(c)) c = QChar::ReplacementCharacter;
    }
    return text;
}

PreviewFacts previewFacts(const URL& url) {
    PreviewFacts facts;
    facts.name = nameOf(url);
    std::error_code error;
    const std::filesystem::path path(url.path());
    const std::filesystem::file_status status = std::filesystem::status(path, error);
    if (error || !std::filesystem::exists(status)) return facts;

    facts.isDirectory = std::filesystem::is_directory(status);
    if (const auto time = std::filesystem::last_write_time(path, error); !error) facts.modified = shownDate(time);
    // Nothing but a regular file is read: a pipe would wait for a writer.
    if (!std::filesystem::is_regular_file(status)) return facts;
    if (const auto size = std::filesystem::file_size(path, error); !error)
        facts.bytes = static_cast<std::int64_t>(size);
    facts.isText = fileKind(url).isText;
    if (facts.isText) facts.text = readText(url.path());
    return facts;
}

// Under the lock, the preview either stands, and an event sent to it dies with it, or is known to be gone.
struct QuickLook::Address {
    std::mutex mutex;
    QuickLook* preview;
};

QuickLook::QuickLook(QObject* parent) : QObject(parent), address_(std::make_shared<Address>()) {
    address_->preview = this;
}

QuickLook::~QuickLook() {
    const std::lock_guard lock(address_->mutex);
    address_->preview = nullptr;
}

void QuickLook::show(const QString& url) {
    const auto parsed = URL::fromAbsoluteString(url.toStdString());
    if (!parsed) return;
    url_ = url;
    facts_ = {};
    facts_.name = nameOf(*parsed);
    Q_EMIT urlChanged();
    Q_EMIT factsChanged();

    // A disk may take its time.
    QThreadPool::globalInstance()->start([address = address_, url, file = *parsed] {
        PreviewFacts facts = previewFacts(file);
        const std::lock_guard lock(address->mutex);
        if (QuickLook* preview = address->preview)
            QMetaObject::invokeMethod(
                preview, [preview, url, facts = std::move(facts)] { preview->receive(url, facts); },
                Qt::QueuedConnection);
    });
}

// What arrives after another file was asked for is dropped.
void QuickLook::receive(const QString& url, PreviewFacts facts) {
    if (url != url_) return;
    facts_ = std::move(facts);
    Q_EMIT factsChanged();
}

void QuickLook::close() {
    if (url_.isEmpty()) return;
    url_.clear();
    Q_EMIT urlChanged();
}

QString QuickLook::size() const {
    return facts_.bytes ? QString::fromStdString(ByteFormatter::string(*facts_.bytes)) : QString();
}

QString QuickLook::summary() const {
    QStringList parts{size(), facts_.modified};
    parts.removeAll(QString());
    return parts.join(QStringLiteral(" · "));
}

}  // namespace tavrin
