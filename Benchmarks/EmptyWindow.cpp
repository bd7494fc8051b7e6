// EmptyWindow WIDTH HEIGHT: the least that a window of this toolkit costs, for the program's start to be compared with.
// Says "first frame" on the standard error, as the program does when its log is asked to.
#include <QGuiApplication>
#include <QQuickWindow>
#include <cstdio>
#include <cstdlib>

int main(int argc, char** argv) {
    QGuiApplication application(argc, argv);
    if (argc != 3) return 2;
    QQuickWindow::setGraphicsApi(QSGRendererInterface::Software);
    QQuickWindow window;
    window.resize(std::atoi(argv[1]), std::atoi(argv[2]));
    window.setColor(Qt::black);
    QObject::connect(
        &window, &QQuickWindow::frameSwapped, &window, [] { std::fputs("first frame\n", stderr); },
        static_cast<Qt::ConnectionType>(Qt::QueuedConnection | Qt::SingleShotConnection));
    window.show();
    return QGuiApplication::exec();
}
