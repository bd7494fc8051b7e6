// What the look needs of the engine before the first line of QML is read.
#pragma once

class QQmlEngine;

namespace tavrin {

/// Makes our modules known to the engine, and with them the pictures that the components ask for. Once for each engine.
void installTheme(QQmlEngine& engine);

/// Makes the embedded typeface the application's. Once, after the application object stands.
void installFonts();

/// Theme.reducedMotion of an engine that has read a document of ours; without one there is nothing that moves.
void setReducedMotion(QQmlEngine& engine, bool reduced);

}  // namespace tavrin
