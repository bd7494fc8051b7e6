// Tells when the window can be seen, for whoever measures the start.
#pragma once

class QObject;

namespace tavrin {

/// Writes "first frame" to the log category "tavrin.start" once `window`, a QQuickWindow, has painted its first one.
/// The category is silent unless QT_LOGGING_RULES asks for "tavrin.start.debug=true".
void logFirstFrame(QObject& window);

}  // namespace tavrin
