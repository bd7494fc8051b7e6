#include "TavrinClean/Kit/AppModel.h"
#include "TavrinClean/KitModule/KitTypes.h"
#include "TavrinClean/Platform/SingleInstance.h"
#include "TavrinClean/Program/DisplayCheck.h"
#include "TavrinClean/Program/FirstFrame.h"
#include "TavrinClean/Program/GraphicsProbe.h"
#include "TavrinClean/Theme/InstallTheme.h"
#include "TavrinCore/Strings.h"

#include <QGuiApplication>
#include <QQmlApplicationEngine>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <memory>

namespace {

std::unique_ptr<QGuiApplication> startApplication(int& argc, char** argv) {
    const tavrin::DisplayCheck check;
    return std::make_unique<QGuiApplication>(argc, argv);
}

}  // namespace

int main(int argc, char** argv) {
    const auto application = startApplication(argc, argv);
    QGuiApplication::setApplicationName(QStringLiteral("tavrin-clean"));
    QGuiApplication::setDesktopFileName(QStringLiteral("org.tavrin.Clean"));

    tavrin::SingleInstance instance;
    switch (instance.claim()) {
        case tavrin::SingleInstance::Start::first:
            break;
        case tavrin::SingleInstance::Start::handedOver:
            return 0;
        case tavrin::SingleInstance::Start::otherIsStuck:
            std::fprintf(stderr, "%s\n", tavrin::S::windowOtherDoesNotAnswer().c_str());
            return 1;
    }
    tavrin::chooseRenderer();
    tavrin::installFonts();

    tavrin::AppModel app;
    tavrin::setApp(app);
    QQmlApplicationEngine engine;
    tavrin::installTheme(engine);
    engine.load(QUrl(QStringLiteral("qrc:/Window.qml")));
    if (engine.rootObjects().isEmpty()) return 2;
    QObject* const window = engine.rootObjects().constFirst();
    tavrin::logFirstFrame(*window);
    QObject::connect(&instance, &tavrin::SingleInstance::activated, window,
                     [window] { QMetaObject::invokeMethod(window, "bringToFront"); });
    const int status = QGuiApplication::exec();
    // A scan that hangs in a file system that doesn't answer must not keep the program.
    if (!app.stopWork(std::chrono::seconds(2))) std::_Exit(status);
    return status;
}
