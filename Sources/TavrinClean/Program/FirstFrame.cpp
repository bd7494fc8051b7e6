#include "TavrinClean/Program/FirstFrame.h"

#include <QLoggingCategory>
#include <QQuickWindow>
#include <utility>

namespace tavrin {
namespace {

Q_LOGGING_CATEGORY(start, "tavrin.start", QtInfoMsg)

}  // namespace

void afterNextFrame(QQuickWindow& window, std::function<void()> then) {
    // Queued, because a frame is told on the thread that painted it.
    QObject::connect(&window, &QQuickWindow::frameSwapped, &window, std::move(then),
                     static_cast<Qt::ConnectionType>(Qt::QueuedConnection | Qt::SingleShotConnection));
}

void logStart(const char* milestone) {
    qCDebug(start, "%s", milestone);
}

}  // namespace tavrin
