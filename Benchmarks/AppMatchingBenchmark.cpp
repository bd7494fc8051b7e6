// Who owns the leftovers of a well-used Library: the cost grows with apps and folders, not with their product.
#include "TavrinCore/Scanning/AppMatching.h"

#include <benchmark/benchmark.h>

#include <random>
#include <string>

namespace {

using tavrin::AppMatching;

std::vector<AppMatching::AppIdentity> madeUpApps(std::size_t count) {
    std::vector<AppMatching::AppIdentity> apps;
    for (std::size_t i = 0; i < count; ++i) {
        const std::string number = std::to_string(i);
        apps.push_back({"App Number " + number, "com.maker" + std::to_string(i % 40) + ".app-number-" + number});
        if (i % 10 == 0) apps.back().bundleID.reset();
    }
    return apps;
}

std::vector<std::string> madeUpCandidates(std::size_t count, const std::vector<AppMatching::AppIdentity>& apps) {
    std::mt19937 random(1);
    std::vector<std::string> candidates;
    for (std::size_t i = 0; i < count; ++i) {
        const AppMatching::AppIdentity& app = apps[random() % apps.size()];
        switch (random() % 4) {
            case 0:
                candidates.push_back(app.name);
                break;
            case 1:
                candidates.push_back(app.bundleID.value_or(app.name + ".helper") + ".plist");
                break;
            case 2:
                candidates.push_back("Señor Programa " + std::to_string(i));
                break;
            default:
                candidates.push_back("com.somebody.else" + std::to_string(i) + ".helper.plist");
        }
    }
    return candidates;
}

void assignOwners(benchmark::State& state) {
    const auto apps = madeUpApps(static_cast<std::size_t>(state.range(1)));
    const auto candidates = madeUpCandidates(static_cast<std::size_t>(state.range(0)), apps);
    for (auto _ : state)
        benchmark::DoNotOptimize(AppMatching::assignOwners(candidates, apps));
    state.SetItemsProcessed(state.iterations() * state.range(0));
}
BENCHMARK(assignOwners)
    ->ArgNames({"candidates", "apps"})
    ->Args({20'000, 300})
    ->Args({20'000, 3'000})
    ->Args({200'000, 300})
    ->Unit(benchmark::kMillisecond);

}  // namespace

BENCHMARK_MAIN();
