// Pictures of a window, and the accepted ones that they are compared with, point by point.
#pragma once

#include <QImage>
#include <QQuickWindow>
#include <QString>

namespace tavrin::test {

/// What the window shows once it stands still: what hovers or was just loaded takes some frames.
[[nodiscard]] QImage settledPicture(QQuickWindow& window);

/// Keeps `picture` under `name` and the window's scale: as the accepted one where `accept` says so, else beside the
/// build, compared with the accepted one. False where they differ, with a line on the standard error.
[[nodiscard]] bool isGolden(const QImage& picture, const QString& name, qreal scale, bool accept);

}  // namespace tavrin::test
