// What 200,000 findings cost the one who looks at them: how long the main thread is held when they arrive, are
// searched, sorted and ticked, when the answer stands in the model, and the memory beside the findings' own paths.
//
// A timer that should fire all the time watches the main thread; the longest it had to wait is the longest hold.
// Nothing is drawn here: what the window adds is measured with the window.
#include "Measuring.h"
#include "TavrinClean/Kit/ModuleScreenModel.h"
#include "TavrinClean/Kit/ModuleViewModel.h"

#include <malloc.h>

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QEventLoop>
#include <QTimer>
#include <algorithm>
#include <functional>
#include <memory>
#include <string>
#include <vector>

namespace {

using namespace tavrin;

constexpr int kFindings = 200'000;
constexpr int kMembersOfAGroup = 3;

std::vector<CleanableItem> manyFindings() {
    std::vector<CleanableItem> items;
    items.reserve(kFindings);
    std::uint64_t random = 42;
    for (int i = 0; i < kFindings; ++i) {
        random = random * 6'364'136'223'846'793'005U + 1'442'695'040'888'963'407U;
        const std::string name =
            "Photo " + std::to_string(random >> 40U) + " of somebody's " + std::to_string(i) + ".jpeg";
        items.push_back({.id = UUID::random(),
                         .url = URL::fromPath("/home/somebody/Pictures/2023/" + name),
                         .size = static_cast<std::int64_t>(random >> 36U),
                         .category = ScanCategory::duplicate,
                         .isSelected = i % kMembersOfAGroup != 0,
                         .detail = "Duplicate of " + name,
                         .groupID = "group " + std::to_string(i / kMembersOfAGroup),
                         .isGroupKeeper = i % kMembersOfAGroup == 0});
    }
    return items;
}

class ManyScanner final : public Scanner {
  public:
    explicit ManyScanner(QElapsedTimer& ended) : ended_(&ended) {}

    [[nodiscard]] ModuleKind kind() const override { return ModuleKind::duplicates; }
    [[nodiscard]] std::vector<CleanableItem> scan(const ProgressCallback& progress,
                                                  const CancellationCallback&) const override {
        std::vector<CleanableItem> items = manyFindings();
        progress({.phase = "end", .itemsFound = kFindings, .fractionCompleted = 1.0});
        ended_->restart();
        return items;
    }

  private:
    QElapsedTimer* ended_;
};

/// The longest time between two turns of the event loop since the last look.
class Watchdog {
  public:
    Watchdog() {
        QObject::connect(&timer_, &QTimer::timeout, &timer_, [this] { note(); });
        timer_.start(0);
        last_.start();
    }
    [[nodiscard]] double longestMilliseconds() {
        note();
        return static_cast<double>(std::exchange(longest_, 0)) / 1e6;
    }

  private:
    void note() {
        longest_ = std::max(longest_, last_.nsecsElapsed());
        last_.restart();
    }

    QTimer timer_;
    QElapsedTimer last_;
    qint64 longest_ = 0;
};

void turnUntil(const std::function<bool()>& isTrue) {
    while (!isTrue())
        QCoreApplication::processEvents(QEventLoop::AllEvents);
}

double milliseconds(const QElapsedTimer& since) {
    return static_cast<double>(since.nsecsElapsed()) / 1e6;
}

double heldBytes() {
    ::malloc_trim(0);
    return static_cast<double>(::mallinfo2().uordblks + ::mallinfo2().hblkhd);
}

double pathBytes(const Findings& findings) {
    double bytes = 0;
    for (const CleanableItem& item : findings.items())
        bytes += static_cast<double>(item.url.path().capacity() + 1);
    return bytes;
}

/// Does something and waits until it shows, and reports both how long that took and how long the main thread was held.
void measure(Watchdog& watchdog, const std::string& what, double target, const std::function<void()>& act,
             const std::function<bool()>& isShown) {
    (void)watchdog.longestMilliseconds();
    QElapsedTimer since;
    since.start();
    act();
    turnUntil(isShown);
    const double took = milliseconds(since);
    benchmarks::report(what, took, "ms", "<= " + std::to_string(static_cast<int>(target)));
    benchmarks::report("  longest hold of the main thread", watchdog.longestMilliseconds(), "ms", "<= 16");
}

}  // namespace

int main(int argc, char** argv) {
    QCoreApplication application(argc, argv);
    QElapsedTimer ended;
    ended.start();
    ModuleServices services = ModuleServices::real();
    services.makeScanner = [&ended](ModuleKind) { return std::make_unique<ManyScanner>(ended); };
    const double before = heldBytes();
    {
        ModuleStore store(services, nullptr);
        ModuleScreenModel screen;
        screen.setStore(&store);
        screen.setModuleKey(QStringLiteral("duplicates"));
        const ModuleViewModel& flow = store.viewModel(ModuleKind::duplicates);
        Watchdog watchdog;

        screen.startScan();
        turnUntil([&] { return screen.phase() == ModuleScreenModel::Results; });
        benchmarks::report("200,000 findings, from a scan's end to the first rows", milliseconds(ended), "ms",
                           "<= 100");
        benchmarks::report("  longest hold of the main thread", watchdog.longestMilliseconds(), "ms", "<= 16");
        services.background->drain();

        // Each act is over when its rows are shown.
        bool isShown = false;
        QObject::connect(&screen, &ModuleScreenModel::shownChanged, &screen, [&isShown] { isShown = true; });
        const auto isQuiet = [&] { return isShown; };
        const auto search = [&](const char16_t* text) {
            isShown = false;
            screen.setSearchText(QString::fromUtf16(text));
        };
        const auto sortBy = [&](int order) {
            isShown = false;
            screen.setSortIndex(order);
        };
        measure(
            watchdog, "a key in the search field", 50, [&] { search(u"7"); }, isQuiet);
        measure(
            watchdog, "the next key", 50, [&] { search(u"77"); }, isQuiet);
        measure(
            watchdog, "the search emptied", 50, [&] { search(u""); }, isQuiet);
        measure(
            watchdog, "sorted by name", 250, [&] { sortBy(2); }, isQuiet);
        measure(
            watchdog, "sorted by size, smallest first", 250, [&] { sortBy(1); }, isQuiet);
        measure(
            watchdog, "select all", 16, [&] { screen.selectAll(); }, [] { return true; });
        measure(
            watchdog, "select none", 16, [&] { screen.selectNone(); }, [] { return true; });

        const double held = heldBytes() - before;
        benchmarks::report("memory beside a finding's path", (held - pathBytes(*flow.findings())) / kFindings, "B",
                           "<= 600");
        measure(
            watchdog, "scanned again: the old findings let go", 16, [&] { screen.startScan(); }, [] { return true; });
        store.cancelAll();
        turnUntil([&] { return screen.phase() == ModuleScreenModel::Results; });
        services.background->drain();
    }
    services.background->drain();
    return 0;
}
