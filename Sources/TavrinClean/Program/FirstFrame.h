// When the window can be seen: for what waits until then, and for whoever measures the start.
#pragma once

#include <functional>

class QQuickWindow;

namespace tavrin {

/// Calls `then` once, on the window's thread, when the window has painted its next frame. A window that nobody can see
/// paints none; one that is destroyed first never calls.
void afterNextFrame(QQuickWindow& window, std::function<void()> then);

/// Writes `milestone` to the log category "tavrin.start", which is silent unless QT_LOGGING_RULES asks for
/// "tavrin.start.debug=true".
void logStart(const char* milestone);

}  // namespace tavrin
