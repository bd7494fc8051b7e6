#include "TavrinClean/Program/GraphicsProbe.h"

#include <gtest/gtest.h>

namespace tavrin {
namespace {

TEST(GraphicsProbe, aRealDriverIsLeftToTheToolkit) {
    EXPECT_EQ(rendererFor("AMD Radeon RX 6600 (navi23)"), Renderer::graphicsDriver);
}

TEST(GraphicsProbe, anEmulatedDriverIsReplacedBySoftware) {
    EXPECT_EQ(rendererFor("llvmpipe (LLVM 15.0.6, 256 bits)"), Renderer::software);
    EXPECT_EQ(rendererFor("SOFTPIPE"), Renderer::software);
}

TEST(GraphicsProbe, noDriverIsReplacedBySoftware) {
    EXPECT_EQ(rendererFor(""), Renderer::software);
}

// Offscreen there is no driver to be had: the probe must say so, and must not end the program.
TEST(GraphicsProbe, whereNoContextCanBeMadeItSaysSoftware) {
    EXPECT_EQ(probeGraphics(), Renderer::software);
}

}  // namespace
}  // namespace tavrin
