#include "TavrinClean/Program/FirstFrame.h"

#include <QLoggingCategory>
#include <QQuickWindow>

namespace tavrin {
namespace {

Q_LOGGING_CATEGORY(start, "tavrin.start", QtInfoMsg)

}  // namespace

void logFirstFrame(QObject& window) {
    auto* const quickWindow = qobject_cast<QQuickWindow*>(&window);
    if (quickWindow == nullptr || !start().isDebugEnabled()) return;
    QObject::connect(
        quickWindow, &QQuickWindow::frameSwapped, quickWindow, [] { qCDebug(start, "first frame"); },
        static_cast<Qt::ConnectionType>(Qt::QueuedConnection | Qt::SingleShotConnection));
}

}  // namespace tavrin
