#include "TavrinClean/Program/GraphicsProbe.h"

#include <QOffscreenSurface>
#include <QOpenGLContext>
#include <QOpenGLFunctions>
#include <QQuickWindow>
#include <QSGRendererInterface>
#include <algorithm>
#include <array>
#include <string>

namespace tavrin {
namespace {

constexpr std::array<std::string_view, 3> emulatedDrivers{"llvmpipe", "softpipe", "swrast"};

std::string driverName() {
    QOffscreenSurface surface;
    surface.create();
    QOpenGLContext context;
    if (!surface.isValid() || !context.create() || !context.makeCurrent(&surface)) return {};
    const auto* name = reinterpret_cast<const char*>(context.functions()->glGetString(GL_RENDERER));
    std::string result = name != nullptr ? name : "";
    context.doneCurrent();
    return result;
}

}  // namespace

Renderer rendererFor(std::string_view driverName) {
    std::string name(driverName);
    std::ranges::transform(name, name.begin(), [](char c) { return c >= 'A' && c <= 'Z' ? char(c - 'A' + 'a') : c; });
    const bool emulated = std::ranges::any_of(
        emulatedDrivers, [&name](std::string_view part) { return name.find(part) != std::string::npos; });
    return name.empty() || emulated ? Renderer::software : Renderer::graphicsDriver;
}

Renderer probeGraphics() {
    return rendererFor(driverName());
}

void chooseRenderer() {
    if (qEnvironmentVariableIsSet("QT_QUICK_BACKEND") || qEnvironmentVariableIsSet("QSG_RHI_BACKEND")) return;
    if (probeGraphics() == Renderer::software) QQuickWindow::setGraphicsApi(QSGRendererInterface::Software);
}

}  // namespace tavrin
