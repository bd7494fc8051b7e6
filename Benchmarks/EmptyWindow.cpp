// EmptyWindow WIDTH HEIGHT: the least that a window of this toolkit costs, for the program's start to be compared with:
// one document, compiled beforehand, with a window and nothing in it.
// Says "first frame" on the standard error, as the program does when its log is asked to.
#include <QGuiApplication>
#include <QQmlApplicationEngine>
#include <QQuickWindow>
#include <cstdio>
#include <cstdlib>

int main(int argc, char** argv) {
    QGuiApplication application(argc, argv);
    if (argc != 3) return 2;
    QQuickWindow::setGraphicsApi(QSGRendererInterface::Software);
    QQmlApplicationEngine engine;
    engine.setInitialProperties(
        {{QStringLiteral("width"), std::atoi(argv[1])}, {QStringLiteral("height"), std::atoi(argv[2])}});
    engine.load(QUrl(QStringLiteral("qrc:/Benchmarks/EmptyWindow.qml")));
    auto* const window =
        engine.rootObjects().isEmpty() ? nullptr : qobject_cast<QQuickWindow*>(engine.rootObjects().constFirst());
    if (window == nullptr) return 3;
    QObject::connect(
        window, &QQuickWindow::frameSwapped, window, [] { std::fputs("first frame\n", stderr); },
        static_cast<Qt::ConnectionType>(Qt::QueuedConnection | Qt::SingleShotConnection));
    return QGuiApplication::exec();
}
