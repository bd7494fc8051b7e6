// What it takes to scroll through 200,000 findings in the window itself: how many frames a second are drawn, and what a
// frame costs the main thread.
//
// A frame's cost is the processor's time between two frames and not the clock's, so that other programs don't count; it
// must stay below the sixtieth of a second. Half of the findings are pictures that exist, so thumbnails are made on the
// way.
#include "BenchmarkWindow.h"
#include "Measuring.h"

#include <QElapsedTimer>
#include <QImage>
#include <QPropertyAnimation>
#include <algorithm>
#include <string>
#include <utility>
#include <vector>

namespace {

namespace fs = std::filesystem;
using namespace tavrin;
using benchmarks::turnUntil;

constexpr int kFindings = 200'000;
constexpr int kPictures = 1'000;
constexpr int kMembersOfAGroup = 3;
constexpr int kSeconds = 5;
constexpr double kPointsASecond = 3'000;
constexpr int kPages = 200;

/// One picture under many names.
void makePictures(const fs::path& folder) {
    fs::create_directories(folder);
    QImage picture(640, 480, QImage::Format_RGB32);
    for (int y = 0; y < picture.height(); ++y) {
        for (int x = 0; x < picture.width(); ++x)
            picture.setPixel(x, y, qRgb(x / 3, y / 2, (x + y) % 256));
    }
    picture.save(QString::fromStdString((folder / "0.jpeg").string()));
    for (int i = 1; i < kPictures; ++i)
        fs::create_hard_link(folder / "0.jpeg", folder / (std::to_string(i) + ".jpeg"));
}

std::vector<CleanableItem> manyFindings(const fs::path& home) {
    std::vector<CleanableItem> items;
    items.reserve(kFindings);
    for (int i = 0; i < kFindings; ++i) {
        const std::string name = i % 2 == 0 ? "Pictures/" + std::to_string(i / 2 % kPictures) + ".jpeg"
                                            : "Documents/Report of the year " + std::to_string(i) + ".pdf";
        items.push_back({.id = UUID::random(),
                         .url = URL::fromPath((home / name).string()),
                         .size = std::int64_t{1'000} * (kFindings - i),
                         .category = ScanCategory::duplicate,
                         .isSelected = i % kMembersOfAGroup != 0,
                         .detail = "Duplicate of " + name,
                         .groupID = "group " + std::to_string(i / kMembersOfAGroup),
                         .isGroupKeeper = i % kMembersOfAGroup == 0});
    }
    return items;
}

/// What the main thread has spent on each frame since this was made.
class Frames {
  public:
    explicit Frames(const QQuickWindow& window) : before_(benchmarks::processorOfThread()) {
        QObject::connect(
            &window, &QQuickWindow::frameSwapped, &context_,
            [this] {
                const double now = benchmarks::processorOfThread();
                milliseconds_.push_back((now - std::exchange(before_, now)) * 1e3);
            },
            Qt::DirectConnection);
    }

    [[nodiscard]] std::size_t count() const { return milliseconds_.size(); }
    [[nodiscard]] double share(double part) {
        std::ranges::sort(milliseconds_);
        return milliseconds_[static_cast<std::size_t>(part * static_cast<double>(milliseconds_.size() - 1))];
    }

  private:
    QObject context_;
    double before_;
    std::vector<double> milliseconds_;
};

void report(Frames& frames) {
    benchmarks::report("  a frame, of the main thread", frames.share(0.5), "ms");
    benchmarks::report("  99 of 100 frames", frames.share(0.99), "ms", "<= 16");
    benchmarks::report("  the longest frame", frames.share(1), "ms", "<= 16");
}

/// The list of results: the one thing in the window that is as long as that.
QQuickItem* findList(const QQuickItem* item) {
    const QList<QQuickItem*> children = item->childItems();
    for (QQuickItem* child : children) {
        if (child->property("count").toInt() > kFindings) return child;
        if (QQuickItem* const found = findList(child)) return found;
    }
    return nullptr;
}

void fling(const QQuickWindow& window, QQuickItem& list) {
    Frames frames(window);
    const double before = benchmarks::processorOfProcess();
    QElapsedTimer clock;
    clock.start();
    QPropertyAnimation animation(&list, "contentY");
    animation.setDuration(kSeconds * 1'000);
    animation.setStartValue(0.0);
    animation.setEndValue(kPointsASecond * kSeconds);
    animation.start();
    turnUntil([&] { return animation.state() == QAbstractAnimation::Stopped; });
    const double took = static_cast<double>(clock.elapsed()) / 1e3;
    const double spent = benchmarks::processorOfProcess() - before;
    benchmarks::report("flung, 3,000 points a second: frames a second", static_cast<double>(frames.count()) / took, "",
                       ">= 59");
    report(frames);
    benchmarks::report("  processor, of one core", spent * 100 / took, "%");
}

/// As fast as it goes: the scroll bar is dragged, and each frame shows other rows than the last.
void dragBar(QQuickWindow& window, QQuickItem& list) {
    const double step = list.property("contentHeight").toDouble() / (kPages + 1);
    Frames frames(window);
    for (int page = 1; page <= kPages; ++page) {
        const std::size_t before = frames.count();
        list.setProperty("contentY", page * step);
        window.update();
        turnUntil([&] { return frames.count() > before; });
    }
    benchmarks::note("the scroll bar dragged, other rows in each frame");
    report(frames);
}

}  // namespace

int main(int argc, char** argv) {
    const fs::path home = fs::absolute("scroll-home");
    benchmarks::BenchmarkWindow window(argc, argv, home, [home](ModuleKind) { return manyFindings(home); });
    makePictures(home / "Pictures");
    window.show("duplicates");
    window.flow(ModuleKind::duplicates).startScan();
    QQuickItem* list = nullptr;
    if (!turnUntil([&] { return (list = findList(window.window().contentItem())) != nullptr; })) return 1;
    window.settle();
    // The first rows are made before anything is measured.
    benchmarks::turnFor(std::chrono::milliseconds(500));
    fling(window.window(), *list);
    dragBar(window.window(), *list);
    return 0;
}
