#include "TavrinClean/Kit/AppModel.h"
#include "TavrinClean/KitModule/KitTypes.h"
#include "TavrinClean/Platform/EndRequests.h"
#include "TavrinClean/Platform/MotionPreference.h"
#include "TavrinClean/Platform/ProgramId.h"
#include "TavrinClean/Platform/SingleInstance.h"
#include "TavrinClean/Program/DisplayCheck.h"
#include "TavrinClean/Program/FirstFrame.h"
#include "TavrinClean/Program/GraphicsProbe.h"
#include "TavrinClean/Program/MainWindow.h"
#include "TavrinClean/Theme/FileThreads.h"
#include "TavrinClean/Theme/InstallTheme.h"
#include "TavrinCore/Strings.h"

#include <QGuiApplication>
#include <QIcon>
#include <QQmlEngine>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <memory>

namespace {

using namespace std::chrono_literals;

std::unique_ptr<QGuiApplication> startApplication(int& argc, char** argv) {
    const tavrin::DisplayCheck check;
    return std::make_unique<QGuiApplication>(argc, argv);
}

/// Everything that the first frame can do without. Ends the program when it can't be had.
void furnish(tavrin::MainWindow& window, QQmlEngine& engine, const tavrin::MotionPreference& motion) {
    tavrin::logStart("first frame");
    tavrin::installFonts();
    tavrin::installTheme(engine);
    QObject::connect(&engine, &QQmlEngine::quit, qGuiApp, &QGuiApplication::quit, Qt::QueuedConnection);
    if (!window.furnish(QUrl(QStringLiteral("qrc:/qt/qml/Tavrin/Program/WindowContent.qml"))))
        return QGuiApplication::exit(2);
    tavrin::setReducedMotion(engine, motion.isReduced());
    QObject::connect(&motion, &tavrin::MotionPreference::reducedChanged, &engine,
                     [&engine](bool reduced) { tavrin::setReducedMotion(engine, reduced); });
    tavrin::afterNextFrame(window, [] {
        tavrin::logStart("first screen");
        QGuiApplication::setWindowIcon(QIcon(QStringLiteral(":/%1.svg").arg(tavrin::programId)));
    });
}

}  // namespace

int main(int argc, char** argv) {
    const auto application = startApplication(argc, argv);
    QGuiApplication::setApplicationName(QStringLiteral("tavrin-clean"));
    QGuiApplication::setDesktopFileName(tavrin::programId.toString());

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

    const tavrin::MotionPreference motion;
    tavrin::AppModel app;
    tavrin::setApp(app);
    QQmlEngine engine;
    // Before the engine it goes, with what the engine made for it.
    tavrin::MainWindow window(engine);
    tavrin::afterNextFrame(window, [&] { furnish(window, engine, motion); });
    QObject::connect(&instance, &tavrin::SingleInstance::activated, &window, &tavrin::MainWindow::bringToFront);
    const tavrin::EndRequests requests;
    QObject::connect(&requests, &tavrin::EndRequests::asked, qGuiApp, &QGuiApplication::quit);
    window.show();
    const int status = QGuiApplication::exec();
    // A scan or a preview that hangs in a file system that doesn't answer must not keep the program.
    if (!app.stopWork(2s) || !tavrin::finishReadingFiles(500ms)) std::_Exit(status);
    return status;
}
