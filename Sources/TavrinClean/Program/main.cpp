#include "TavrinClean/Program/GraphicsProbe.h"
#include "TavrinClean/Theme/InstallTheme.h"

#include <QGuiApplication>
#include <QQmlApplicationEngine>

int main(int argc, char** argv) {
    QGuiApplication application(argc, argv);
    QGuiApplication::setApplicationName(QStringLiteral("tavrin-clean"));
    tavrin::chooseRenderer();
    tavrin::installFonts();

    QQmlApplicationEngine engine;
    tavrin::installTheme(engine);
    engine.load(QUrl(QStringLiteral("qrc:/Window.qml")));
    return engine.rootObjects().isEmpty() ? 2 : QGuiApplication::exec();
}
