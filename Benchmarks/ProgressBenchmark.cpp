// What it costs a scan that somebody watches: the part of its thread's processor time that goes into sending its
// reports to the screen; and how closely they follow one another there.
//
// To run the same scan without a watcher and to compare would drown so small a part in the noise of any machine. The
// scans are the ones that report most for what they do: one looks at files without opening them, one compares many
// small ones.
#include "Measuring.h"
#include "TavrinClean/Kit/Background.h"
#include "TavrinClean/Kit/ProgressMailbox.h"
#include "TavrinCore/Scanning/DuplicateScanner.h"
#include "TavrinCore/Scanning/LargeFilesScanner.h"

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

constexpr int kFiles = 50'000;
constexpr int kFilesInAFolder = 50;
constexpr int kSmallest = 100;
constexpr int kRounds = 8;

/// Two files of each size, so that each pair is compared, and reported, by itself.
void makeFiles(const fs::path& root) {
    for (int i = 0; i < kFiles; ++i) {
        const fs::path folder = root / std::to_string(i / kFilesInAFolder);
        fs::create_directories(folder);
        const int size = kSmallest + i / 2;
        std::ofstream(folder / std::to_string(i)) << std::string(static_cast<std::size_t>(size), 'x');
    }
}

struct Cost {
    double scan = 0;
    double reports = 0;
    int count = 0;
};

/// Seconds of the thread that scans; the main thread turns meanwhile, as the program's does.
Cost cost(Background& background, const std::shared_ptr<const Scanner>& scanner, const ProgressCallback& progress) {
    QObject owner;
    std::optional<Cost> result;
    background.run(
        Background::Lane::work, &owner,
        [scanner, progress] {
            Cost cost;
            const double before = benchmarks::processorOfThread();
            (void)scanner->scan(
                [&cost, &progress](const ScanProgress& report) {
                    const double begin = benchmarks::processorOfThread();
                    progress(report);
                    cost.reports += benchmarks::processorOfThread() - begin;
                    ++cost.count;
                },
                [] { return false; });
            cost.scan = benchmarks::processorOfThread() - before;
            return cost;
        },
        [&result](const Cost& taken) { result = taken; });
    while (!result)
        QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
    return *result;
}

void measure(const std::string& what, const std::shared_ptr<const Scanner>& scanner) {
    Background background;
    double shortest = 1e9;
    QElapsedTimer sinceDelivery;
    ProgressMailbox mailbox(background, [&](const ScanProgress&) {
        if (sinceDelivery.isValid())
            shortest = std::min(shortest, static_cast<double>(sinceDelivery.nsecsElapsed()) / 1e6);
        sinceDelivery.start();
    });
    Cost all;
    for (int round = 0; round < kRounds; ++round) {
        const Cost one = cost(background, scanner, mailbox.callback());
        all.scan += one.scan;
        all.reports += one.reports;
        all.count = one.count;
    }
    benchmarks::report(what + ": reports of a scan", all.count, "");
    benchmarks::report("  watched / unwatched", all.scan / (all.scan - all.reports), "ratio", "<= 1.01");
    benchmarks::report("  shortest time between two on the screen", shortest, "ms", ">= 15");
}

}  // namespace

int main(int argc, char** argv) {
    const QCoreApplication application(argc, argv);
    const fs::path root = fs::absolute("progress-files");
    fs::remove_all(root);
    makeFiles(root);
    const std::vector<URL> roots{URL::fromPath(root.string(), true)};
    measure("large files",
            std::make_shared<LargeFilesScanner>(roots, std::int64_t{1} << 40U, std::chrono::years(50), false));
    measure("duplicates", std::make_shared<DuplicateScanner>(roots, 1));
    fs::remove_all(root);
    return 0;
}
