// What reading other programs' property lists costs: an ordinary one, and the dearest that the limits let through.
#include "TavrinCore/Scanning/PropertyList.h"

#include <benchmark/benchmark.h>

#include <string>

namespace {

std::string repeated(std::string_view text, std::size_t count) {
    std::string all;
    for (std::size_t i = 0; i < count; ++i)
        all.append(text);
    return all;
}

void read(benchmark::State& state, const std::string& list) {
    bool isList = false;
    for (auto _ : state)
        isList = tavrin::PropertyList::fromBytes(list).has_value();
    state.SetLabel(isList ? "read" : "refused");
}

/// A hundred keys, as a bundle's dictionary has them.
std::string bundleInfo() {
    std::string entries;
    for (int i = 0; i < 100; ++i)
        entries += "<key>CFBundleKey" + std::to_string(i) + "</key>\n<string>com.example.value</string>\n";
    return "<plist version=\"1.0\"><dict>" + entries + "</dict></plist>";
}

/// Each of many keys is told twice; the second telling searches past all of the first.
std::string repeatedKeys() {
    std::string entries;
    for (int i = 0; i < 4'000; ++i)
        entries += "<key>" + std::to_string(i % 2'000) + "</key><true/>";
    return "<dict>" + entries + "</dict>";
}

/// Arrays of ten references each to the next one: few bytes that stand for many values.
std::string bomb(std::size_t levels) {
    std::string list = "bplist00";
    std::string offsets;
    for (std::size_t i = 0; i < levels; ++i) {
        offsets.push_back(static_cast<char>(list.size()));
        list.push_back('\xAA');
        list.append(10, static_cast<char>(i + 1));
    }
    offsets.push_back(static_cast<char>(list.size()));
    list.push_back('\x09');
    const char table = static_cast<char>(list.size());
    list += offsets + std::string(6, '\0') + "\x01\x01";
    list += std::string(7, '\0') + static_cast<char>(levels + 1) + std::string(8, '\0');
    return list + std::string(7, '\0') + table;
}

BENCHMARK_CAPTURE(read, bundleInfo, bundleInfo())->Unit(benchmark::kMicrosecond);
BENCHMARK_CAPTURE(read, mostValues, "<array>" + repeated("<true/>", 99'999) + "</array>")
    ->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(read, deepest, repeated("<array>", 128) + repeated("</array>", 128))->Unit(benchmark::kMicrosecond);
BENCHMARK_CAPTURE(read, mostEntities, "<string>" + repeated("&lt;", 11'000) + "</string>")
    ->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(read, repeatedKeys, repeatedKeys())->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(read, bombOf78Bytes, bomb(3))->Unit(benchmark::kMicrosecond);
BENCHMARK_CAPTURE(read, bombOf90Bytes, bomb(4))->Unit(benchmark::kMicrosecond);
BENCHMARK_CAPTURE(read, bombOf114Bytes, bomb(6))->Unit(benchmark::kMicrosecond);
BENCHMARK_CAPTURE(read, bombOf138Bytes, bomb(8))->Unit(benchmark::kMicrosecond);

}  // namespace

BENCHMARK_MAIN();
