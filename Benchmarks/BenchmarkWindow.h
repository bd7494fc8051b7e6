// The program's window in a process of the benchmark's own: on the software renderer, without a display, on a home that
// is thrown away, and with a scanner that finds what the benchmark wants.
#pragma once

#include "TavrinClean/Kit/AppModel.h"
#include "TavrinClean/Kit/ModuleViewModel.h"

#include <QGuiApplication>
#include <QQmlEngine>
#include <QQuickItem>
#include <QQuickWindow>
#include <chrono>
#include <filesystem>
#include <functional>
#include <memory>
#include <string_view>
#include <vector>

namespace tavrin::benchmarks {

/// Turns the event loop until it is so; false when that takes more than half a minute.
bool turnUntil(const std::function<bool()>& isTrue);
/// Turns the event loop, which sleeps while there is nothing to do.
void turnFor(std::chrono::milliseconds time);

class BenchmarkWindow {
  public:
    /// What a scan of that module finds; it may throw what scans throw.
    using Find = std::function<std::vector<CleanableItem>(ModuleKind)>;

    /// `home` is made anew, for somebody who has accepted the terms, and goes with the window. To be made first of all:
    /// what it sets must be there before the toolkit starts.
    BenchmarkWindow(int& argc, char** argv, std::filesystem::path home, Find find, CleanFunction clean = {});
    ~BenchmarkWindow();
    BenchmarkWindow(const BenchmarkWindow&) = delete;
    BenchmarkWindow& operator=(const BenchmarkWindow&) = delete;

    [[nodiscard]] QQuickWindow& window() { return *window_; }
    /// Shows a screen by its key.
    void show(std::string_view screen);
    /// The flow behind a module's screen.
    [[nodiscard]] ModuleViewModel& flow(ModuleKind kind);
    /// Waits for all that runs off the main thread.
    void settle();

  private:
    std::filesystem::path home_;
    std::unique_ptr<QGuiApplication> application_;
    std::unique_ptr<AppModel> app_;
    std::unique_ptr<QQmlEngine> engine_;
    std::unique_ptr<QQuickWindow> window_;
};

}  // namespace tavrin::benchmarks
