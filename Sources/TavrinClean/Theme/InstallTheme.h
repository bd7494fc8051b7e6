// What the look needs of the engine before the first line of QML is read.
#pragma once

class QQmlEngine;

namespace tavrin {

/// Makes our modules known to the engine, and with them the pictures that the components ask for. Once for each engine.
void installTheme(QQmlEngine& engine);

/// Makes the embedded typeface the application's. Once, after the application object stands.
void installFonts();

}  // namespace tavrin
