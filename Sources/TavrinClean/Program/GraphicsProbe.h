// Whether the graphics driver can be trusted with the window.
#pragma once

#include <string_view>

namespace tavrin {

enum class Renderer {
    /// The toolkit's own choice.
    graphicsDriver,
    /// Without a driver: slower nowhere that we go, and it can't fail.
    software,
};

/// Tries to make a context current, off screen. Software where that fails, or where the driver itself is emulated in
/// software, which costs several times more than painting without one. Call it after the application object stands and
/// before the first window: with a broken driver the toolkit ends the program.
[[nodiscard]] Renderer probeGraphics();

/// The choice by what the driver calls itself; empty when there is none.
[[nodiscard]] Renderer rendererFor(std::string_view driverName);

/// Makes the choice the program's, unless the person made one by the toolkit's own variables.
void chooseRenderer();

}  // namespace tavrin
