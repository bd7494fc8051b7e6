// Whether every scanner can be stopped soon, and speaks often enough, on a large home; and what the largest of their
// steps cost.
//
//   ScansBenchmark [FOLDER]   makes its home in FOLDER (the current one) and keeps it.
#include "LargeHome.h"
#include "Measuring.h"
#include "TavrinCore/ScannerFactory.h"
#include "TavrinCore/Scanning/AppUninstaller.h"
#include "TavrinCore/Scanning/DeveloperJunkScanner.h"
#include "TavrinCore/Scanning/InstalledApps.h"
#include "TavrinCore/Scanning/ScanRun.h"
#include "TavrinCore/Scanning/ScannerDefaults.h"
#include "WalkFloor.h"

#include <algorithm>
#include <chrono>
#include <cstdlib>
#include <stdexcept>

namespace {

using namespace tavrin;
using namespace tavrin::benchmarks;
namespace fs = std::filesystem;
using Clock = std::chrono::steady_clock;

constexpr int kRounds = 3;

/// The longest time between two moments, in milliseconds.
class Gap {
  public:
    void now() {
        const Clock::time_point now = Clock::now();
        if (last_ != Clock::time_point()) longest_ = std::max(longest_, now - last_);
        last_ = now;
    }
    [[nodiscard]] double longest() const { return std::chrono::duration<double, std::milli>(longest_).count(); }

  private:
    Clock::time_point last_;
    Clock::duration longest_{};
};

struct Scan {
    double pollGap = 0;
    double reportGap = 0;
    double seconds = 0;
    std::size_t found = 0;
};

Scan scanned(ModuleKind kind) {
    Gap polls;
    Gap reports;
    const Clock::time_point begin = Clock::now();
    // From the start to the first question, and from the last one to the end, a cancel has to wait too.
    polls.now();
    const std::size_t found = ScannerFactory::makeScanner(kind)
                                  ->scan([&](const ScanProgress&) { reports.now(); },
                                         [&] {
                                             polls.now();
                                             return false;
                                         })
                                  .size();
    polls.now();
    reports.now();
    return {.pollGap = polls.longest(),
            .reportGap = reports.longest(),
            .seconds = std::chrono::duration<double>(Clock::now() - begin).count(),
            .found = found};
}

/// What disturbs a run only ever makes it longer: the best of some rounds counts.
void gapsOf(ModuleKind kind) {
    Scan best = scanned(kind);
    for (int round = 1; round < kRounds; ++round) {
        const Scan next = scanned(kind);
        best.pollGap = std::min(best.pollGap, next.pollGap);
        best.reportGap = std::min(best.reportGap, next.reportGap);
        best.seconds = std::min(best.seconds, next.seconds);
    }
    const std::string name(rawValue(kind));
    report(name + ": longest between two polls", best.pollGap, "ms", "<= 50");
    report(name + ": longest between two reports", best.reportGap, "ms", "<= 1000");
    report(name + ": " + std::to_string(best.found) + " findings", best.seconds, "s");
}

void owners() {
    const ProgressCallback silent = [](const ScanProgress&) {};
    const CancellationCallback never = neverCancelled;
    ScanRun run(silent, never);
    const auto identities = identitiesOf(removableAppsIn(defaultAppDirectories(), run));
    const std::vector<Cost> least = leastCosts(5, {[&] {
                                                   return costOf([&] {
                                                       const auto leftovers = AppUninstaller::assignLeftovers(
                                                           AppUninstaller::defaultLeftoverRoots(), identities, nullptr);
                                                       if (leftovers.size() != kApps)
                                                           throw std::runtime_error("not all apps were found");
                                                   });
                                               }});
    report("20,000 candidates and more, owners among 300 apps", least[0].clock, "s", "<= 0.5");
}

void projects(const fs::path& home) {
    const fs::path folder = home / "Projects";
    const DeveloperJunkScanner scanner(URL::fromPath((home / "nowhere").native()),
                                       std::vector{URL::fromPath(folder.native())},
                                       scannerDefaults::DeveloperJunk::maxDepth);
    const std::vector<Cost> least =
        leastCosts(5, {[&] { return costOf([&] { (void)walkFloor(folder.c_str()); }); },
                       [&] { return costOf([&] { (void)scanner.scan([](const ScanProgress&) {}); }); }});
    report("100,000 project folders, floor", least[0].clock * 1e3, "ms");
    report("100,000 project folders, scan", least[1].clock * 1e3, "ms");
    report("100,000 project folders / floor, processor", least[1].processor / least[0].processor, "ratio", "<= 1.20");
}

}  // namespace

int main(int argc, char** argv) {
    const fs::path home = fs::absolute(argc > 1 ? argv[1] : ".") / "large-home";
    makeLargeHome(home);
    ::setenv("HOME", home.c_str(), 1);
    for (const char* name : {"XDG_CONFIG_HOME", "XDG_DATA_HOME", "XDG_CACHE_HOME"})
        ::unsetenv(name);
    for (const ModuleKind kind : allModuleKinds)
        gapsOf(kind);
    owners();
    projects(home);
    return 0;
}
