#include "BenchmarkWindow.h"

#include "TavrinClean/KitModule/KitTypes.h"
#include "TavrinClean/Theme/InstallTheme.h"

#include <QDeadlineTimer>
#include <QEventLoop>
#include <QQmlComponent>
#include <QTimer>
#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <utility>

namespace tavrin::benchmarks {
namespace {

namespace fs = std::filesystem;

constexpr const char* kWindow = R"(
import QtQuick
import QtQuick.Window
import Tavrin.Theme
import Tavrin.Views

Window {
    property alias screen: content.selection

    width: 1120
    height: 740
    visible: true
    BrandBackground { anchors.fill: parent }
    ContentView { id: content; anchors.fill: parent }
})";

class FakeScanner final : public Scanner {
  public:
    FakeScanner(ModuleKind kind, const BenchmarkWindow::Find& find) : kind_(kind), find_(find) {}

    [[nodiscard]] ModuleKind kind() const override { return kind_; }
    [[nodiscard]] std::vector<CleanableItem> scan(const ProgressCallback&, const CancellationCallback&) const override {
        return find_(kind_);
    }

  private:
    ModuleKind kind_;
    BenchmarkWindow::Find find_;
};

void makeHome(const fs::path& home) {
    fs::remove_all(home);
    fs::create_directories(home / ".config/tavrin-clean");
    std::ofstream(home / ".config/tavrin-clean/settings.ini") << "[General]\nconsentAcceptedVersion=1\n";
    for (const char* variable : {"XDG_CONFIG_HOME", "XDG_DATA_HOME", "XDG_CACHE_HOME", "DBUS_SESSION_BUS_ADDRESS"})
        ::unsetenv(variable);
    ::setenv("HOME", home.c_str(), 1);
    ::setenv("LANGUAGE", "en", 1);
    ::setenv("QT_QPA_PLATFORM", "offscreen", 1);
    ::setenv("QT_QUICK_BACKEND", "software", 1);
}

}  // namespace

bool turnUntil(const std::function<bool()>& isTrue) {
    const QDeadlineTimer deadline(30'000);
    // A loop as the program's own: what was let go is deleted in it.
    QEventLoop loop;
    QTimer look;
    QObject::connect(&look, &QTimer::timeout, &loop, [&] {
        if (isTrue() || deadline.hasExpired()) loop.quit();
    });
    look.start(1);
    loop.exec();
    return isTrue();
}

void turnFor(std::chrono::milliseconds time) {
    QEventLoop loop;
    QTimer::singleShot(time, &loop, &QEventLoop::quit);
    loop.exec();
}

BenchmarkWindow::BenchmarkWindow(int& argc, char** argv, fs::path home, Find find, CleanFunction clean)
    : home_(std::move(home)) {
    makeHome(home_);
    application_ = std::make_unique<QGuiApplication>(argc, argv);
    installFonts();
    ModuleServices services = ModuleServices::real();
    services.makeScanner = [find = std::move(find)](ModuleKind kind) {
        return std::make_unique<FakeScanner>(kind, find);
    };
    services.clean = std::move(clean);
    app_ = std::make_unique<AppModel>(std::move(services));
    setApp(*app_);
    engine_ = std::make_unique<QQmlEngine>();
    installTheme(*engine_);
    QQmlComponent component(engine_.get());
    component.setData(kWindow, QUrl());
    window_.reset(qobject_cast<QQuickWindow*>(component.create()));
    if (window_ != nullptr) return;
    std::fputs(qPrintable(component.errorString()), stderr);
    std::exit(EXIT_FAILURE);
}

BenchmarkWindow::~BenchmarkWindow() {
    fs::remove_all(home_);
}

void BenchmarkWindow::show(std::string_view screen) {
    window_->setProperty("screen", QString::fromUtf8(screen.data(), static_cast<qsizetype>(screen.size())));
}

ModuleViewModel& BenchmarkWindow::flow(ModuleKind kind) {
    return app_->store()->viewModel(kind);
}

void BenchmarkWindow::settle() {
    app_->store()->services().background->drain();
}

}  // namespace tavrin::benchmarks
