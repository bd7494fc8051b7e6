#include "QuickLook.h"

#include "FileKind.h"
#include "FileThreads.h"
#include "TavrinCore/Models/URL.h"
#include "TavrinCore/Platform/FileReader.h"
#include "TavrinCore/Platform/FileStatus.h"
#include "TavrinCore/Scanning/ByteFormatter.h"
#include "TavrinCore/Scanning/DateText.h"

#include <mutex>
#include <utility>
#include <vector>

namespace tavrin {
namespace {

constexpr std::size_t textBytes = 64 * 1024;

QString nameOf(const URL& url) {
    return QString::fromStdString(lineText(url.lastPathComponent()));
}

QString readText(const URL& url) {
    const std::unique_ptr<FileReader> file = FileReader::open(url, FileReader::Expect::beginning);
    std::vector<unsigned char> bytes(textBytes);
    const std::size_t count = file != nullptr ? file->read(bytes).value_or(0) : 0;
    return QString::fromStdString(safeText({reinterpret_cast<const char*>(bytes.data()), count}));
}

QString shownDate(const std::optional<Date>& date) {
    return date ? QString::fromStdString(dateAndTimeText(*date)) : QString();
}

}  // namespace

PreviewFacts previewFacts(const URL& url) {
    PreviewFacts facts;
    facts.name = nameOf(url);
    const Result<FileStatus> status = fileStatus(url, LastLink::follow);
    if (!status) return facts;

    facts.isDirectory = status->type == FileType::directory;
    facts.created = shownDate(status->created);
    facts.modified = shownDate(status->modified);
    // Nothing but a regular file is read: a pipe would wait for a writer.
    if (status->type != FileType::regular) return facts;
    facts.bytes = status->size;
    facts.isText = fileKind(url).isText;
    if (facts.isText) facts.text = readText(url);
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

    // A disk may take its time. Somebody waits for this one, so it goes before the thumbnails that are queued.
    const auto look = [address = address_, url, file = *parsed] {
        PreviewFacts facts = previewFacts(file);
        const std::lock_guard lock(address->mutex);
        if (QuickLook* preview = address->preview)
            QMetaObject::invokeMethod(
                preview, [preview, url, facts = std::move(facts)] { preview->receive(url, facts); },
                Qt::QueuedConnection);
    };
    fileThreads().start(look, 1);
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
