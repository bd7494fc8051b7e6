// What it costs a scan that somebody watches: its reports on their way to the screen, beside the same scan whose reports
// nobody reads; and how closely they follow one another there.
//
// The scans are the ones that report most for what they do: one looks at files without opening them, one compares many
// small ones. What counts is the processor's time of the thread that scans.
#include "Measuring.h"
#include "TavrinClean/Kit/Background.h"
#include "TavrinClean/Kit/ProgressMailbox.h"
#include "TavrinCore/Scanning/DuplicateScanner.h"
#include "TavrinCore/Scanning/LargeFilesScanner.h"

#include <ctime>

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QEventLoop>
#include <algorithm>
#include <chrono>
#include <filesystem>
#include <fstream>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace {

namespace fs = std::filesystem;
using namespace tavrin;

constexpr int kFiles = 10'000;
constexpr int kFilesInAFolder = 50;
constexpr int kSmallest = 100;
constexpr int kRounds = 25;

/// Two files of each size, so that each pair is compared, and reported, by itself.
void makeFiles(const fs::path& root) {
    for (int i = 0; i < kFiles; ++i) {
        const fs::path folder = root / std::to_string(i / kFilesInAFolder);
        fs::create_directories(folder);
        const int size = kSmallest + i / 2;
        std::ofstream(folder / std::to_string(i)) << std::string(static_cast<std::size_t>(size), 'x');
    }
}

double processorOfThread() {
    timespec now{};
    ::clock_gettime(CLOCK_THREAD_CPUTIME_ID, &now);
    return static_cast<double>(now.tv_sec) + static_cast<double>(now.tv_nsec) / 1e9;
}

/// Seconds of the thread that scans; the main thread turns meanwhile, as the program's does.
double cost(Background& background, const std::shared_ptr<const Scanner>& scanner, const ProgressCallback& progress) {
    QObject owner;
    std::optional<double> seconds;
    background.run(
        Background::Lane::work, &owner,
        [scanner, progress] {
            const double before = processorOfThread();
            (void)scanner->scan(progress, [] { return false; });
            return processorOfThread() - before;
        },
        [&seconds](double taken) { seconds = taken; });
    while (!seconds)
        QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
    return *seconds;
}

void measure(const std::string& what, const std::shared_ptr<const Scanner>& scanner) {
    Background background;
    int reports = 0;
    double shortest = 1e9;
    QElapsedTimer sinceDelivery;
    ProgressMailbox mailbox(background, [&](const ScanProgress&) {
        if (sinceDelivery.isValid()) shortest = std::min(shortest, static_cast<double>(sinceDelivery.nsecsElapsed()) / 1e6);
        sinceDelivery.start();
    });
    double alone = 1e9;
    double watched = 1e9;
    (void)cost(background, scanner, [&reports](const ScanProgress&) { ++reports; });
    for (int round = 0; round < kRounds; ++round) {
        alone = std::min(alone, cost(background, scanner, [](const ScanProgress&) {}));
        watched = std::min(watched, cost(background, scanner, mailbox.callback()));
    }
    benchmarks::report(what + ": reports of a scan", reports, "");
    benchmarks::report("  shortest time between two on the screen", shortest, "ms", ">= 15");
    benchmarks::report("  watched / unwatched", watched / alone, "ratio", "<= 1.01");
}

}  // namespace

int main(int argc, char** argv) {
    const QCoreApplication application(argc, argv);
    const fs::path root = fs::absolute("progress-files");
    fs::remove_all(root);
    makeFiles(root);
    const std::vector<URL> roots{URL::fromPath(root.string(), true)};
    measure("large files", std::make_shared<LargeFilesScanner>(roots, std::int64_t{1} << 40U, std::chrono::years(50), false));
    measure("duplicates", std::make_shared<DuplicateScanner>(roots, 1));
    fs::remove_all(root);
    return 0;
}
