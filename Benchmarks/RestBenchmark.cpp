// What the window costs while nothing happens, on each screen and in each phase that waits for the person: frames that
// are drawn, and the processor's time. Where nothing is under way nothing moves, so both must be nothing.
#include "BenchmarkWindow.h"
#include "Measuring.h"

#include <stdexcept>
#include <string>
#include <vector>

namespace {

using namespace tavrin;
using Phase = ModuleViewModel::Phase;
using benchmarks::BenchmarkWindow;
using namespace std::chrono_literals;

constexpr auto kSettle = 1500ms;
constexpr auto kRest = 3000ms;

CleanableItem finding(const std::string& name) {
    return {.id = UUID::random(),
            .url = URL::fromPath("/nowhere/" + name),
            .size = 5'000'000,
            .category = ScanCategory::largeFile,
            .isSelected = true};
}

/// A module for each way that a scan can end.
std::vector<CleanableItem> find(ModuleKind kind) {
    switch (kind) {
        case ModuleKind::mailAttachments:
            throw ScanError::accessDenied(URL::fromPath("/nowhere"));
        case ModuleKind::screenshots:
            throw std::runtime_error("a scan that fails");
        case ModuleKind::browserCaches:
            return {};
        default:
            return {finding("one.mov"), finding("two.mov"), finding("three.mov")};
    }
}

CleanResult clean(std::span<const CleanableItem> items, const ProgressCallback&, const CancellationCallback&,
                  const TrashedCallback&) {
    return {.removedItems = 2,
            .reclaimedBytes = 10'000'000,
            .failures = {{.url = items.back().url, .reason = "It can't be moved."}}};
}

void measure(BenchmarkWindow& window, const std::string& what) {
    window.settle();
    benchmarks::turnFor(kSettle);
    int frames = 0;
    const QObject context;
    QObject::connect(
        &window.window(), &QQuickWindow::frameSwapped, &context, [&frames] { ++frames; }, Qt::DirectConnection);
    const double before = benchmarks::processorOfProcess();
    benchmarks::turnFor(kRest);
    benchmarks::report(what + ": processor in 3 s", (benchmarks::processorOfProcess() - before) * 1e3, "ms", "<= 3");
    benchmarks::report("  frames", frames, "", "0");
}

void measureModule(BenchmarkWindow& window, ModuleKind kind, const std::string& what) {
    window.show(rawValue(kind));
    ModuleViewModel& flow = window.flow(kind);
    flow.startScan();
    benchmarks::turnUntil([&flow] { return flow.phase() != Phase::scanning; });
    measure(window, what);
}

}  // namespace

int main(int argc, char** argv) {
    BenchmarkWindow window(argc, argv, std::filesystem::absolute("rest-home"), find, clean);
    measure(window, "a screen that isn't built");
    window.show("history");
    measure(window, "the history");
    window.show(rawValue(ModuleKind::largeFiles));
    measure(window, "a module before its scan");
    measureModule(window, ModuleKind::largeFiles, "what a scan found");
    ModuleViewModel& flow = window.flow(ModuleKind::largeFiles);
    flow.clean();
    benchmarks::turnUntil([&flow] { return flow.phase() == Phase::done; });
    measure(window, "what a clean did");
    measureModule(window, ModuleKind::similarImages, "the gallery");
    measureModule(window, ModuleKind::appLanguages, "the languages");
    measureModule(window, ModuleKind::browserCaches, "nothing found");
    measureModule(window, ModuleKind::mailAttachments, "access is missing");
    measureModule(window, ModuleKind::screenshots, "a scan that failed");
    return 0;
}
