// What it costs to load, to salvage and to save a history of 2,000 records with 100,000 entries: time, and the most
// memory that the process ever held.
//
// Each figure is taken in a process of its own, so that none carries the memory of another. Usage:
//
//   HistoryBenchmark                 runs all, in a folder of its own, and prints a line for each
//   HistoryBenchmark load|save DIR   one of them, on the history in DIR
#include "TavrinCore/Cleaning/HistoryCodec.h"
#include "TavrinCore/Cleaning/HistoryStore.h"

#include <sys/resource.h>
#include <unistd.h>

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <string>
#include <vector>

namespace {

using namespace tavrin;
namespace fs = std::filesystem;

constexpr int kRecords = 2'000;
constexpr int kEntriesEach = 50;
constexpr int kRounds = 5;

std::vector<CleanupRecord> bigHistory() {
    std::vector<CleanupRecord> records;
    for (int i = 0; i < kRecords; ++i) {
        CleanupRecord record{.id = UUID::random(),
                             .date = Date::now(),
                             .module = "System Junk",
                             .moduleKey = "systemJunk",
                             .itemCount = kEntriesEach,
                             .reclaimedBytes = 123'456'789,
                             .entries = {}};
        for (int k = 0; k < kEntriesEach; ++k) {
            const std::string name = "com.example.application-" + std::to_string(i) + "-" + std::to_string(k);
            record.entries.push_back({URL::fromPath("/Users/somebody/Library/Caches/" + name + "/fsCachedData ñ/"),
                                      URL::fromPath("/Users/somebody/.local/share/Trash/files/" + name + "/")});
        }
        records.push_back(std::move(record));
    }
    return records;
}

void write(const HistoryStore& store, const std::string& text) {
    std::ofstream(store.fileURL().path(), std::ios::binary) << text;
}

double milliseconds(const timeval& time) {
    return static_cast<double>(time.tv_sec) * 1e3 + static_cast<double>(time.tv_usec) / 1e3;
}

rusage usageSoFar() {
    rusage usage{};
    ::getrusage(RUSAGE_SELF, &usage);
    return usage;
}

double processorTime(const rusage& usage) {
    return milliseconds(usage.ru_utime) + milliseconds(usage.ru_stime);
}

/// One of the operations, timed, with the figures on one line: milliseconds by the clock and by the processor, KiB.
int runOne(const std::string& operation) {
    HistoryStore store;
    const std::vector<CleanupRecord> records = operation == "save" ? bigHistory() : std::vector<CleanupRecord>();
    const double processorBefore = processorTime(usageSoFar());
    const auto begin = std::chrono::steady_clock::now();
    const std::size_t count = operation == "save" ? (store.save(records) ? records.size() : 0) : store.load().size();
    const std::chrono::duration<double, std::milli> took = std::chrono::steady_clock::now() - begin;
    const rusage usage = usageSoFar();
    std::cout << took.count() << ' ' << processorTime(usage) - processorBefore << ' ' << usage.ru_maxrss << ' ' << count
              << '\n';
    return 0;
}

struct Figures {
    double clock = 0;
    double processor = 0;
    long peakKiB = 0;
    std::size_t records = 0;
};

Figures inOwnProcess(const std::string& operation, const std::string& folder) {
    const std::string command = "/proc/" + std::to_string(::getpid()) + "/exe " + operation + " '" + folder + "'";
    Figures figures;
    FILE* output = ::popen(command.c_str(), "r");
    if (output == nullptr || std::fscanf(output, "%lf %lf %ld %zu", &figures.clock, &figures.processor,
                                         &figures.peakKiB, &figures.records) != 4)
        std::abort();
    ::pclose(output);
    return figures;
}

/// The middle one of several rounds; `before` lays the file out anew for each.
template <class Before>
void report(const std::string& name, const std::string& operation, const std::string& folder, Before before) {
    std::vector<Figures> rounds;
    for (int round = 0; round < kRounds; ++round) {
        before();
        rounds.push_back(inOwnProcess(operation, folder));
    }
    std::ranges::sort(rounds, {}, &Figures::processor);
    const Figures& middle = rounds[rounds.size() / 2];
    std::printf("%-34s %6.0f ms %6.0f ms of processor %5ld MiB %6zu records\n", name.c_str(), middle.clock,
                middle.processor, middle.peakKiB / 1024, middle.records);
}

std::string damagedBy(std::string text, std::string_view what, std::string_view with) {
    return text.replace(text.find(what, text.size() / 2), what.size(), with);
}

void runAll(const std::string& folder) {
    HistoryStore store;
    const std::string text = encodeHistory(bigHistory()).value();
    std::printf("history.json of %zu bytes\n", text.size());
    report("load", "load", folder, [&] { write(store, text); });
    const auto salvage = [&](const std::string& name, const std::string& damaged) {
        report("salvage: " + name, "load", folder, [&] { write(store, damaged); });
    };
    salvage("a value of a wrong type", damagedBy(text, "\"itemCount\": 50", "\"itemCount\": {}"));
    salvage("a number beyond a double", damagedBy(text, "123456789", "1e9999999"));
    salvage("a byte that isn't UTF-8", damagedBy(text, "System", "S\xFFstem"));
    salvage("the end cut off", text.substr(0, text.size() - 100));
    report("save", "save", folder, [] {});
}

}  // namespace

int main(int argc, char** argv) {
    if (argc == 3) {
        ::setenv("XDG_DATA_HOME", argv[2], 1);
        return runOne(argv[1]);
    }
    std::string folder = (fs::current_path() / "history-benchmark-XXXXXX").native();
    if (::mkdtemp(folder.data()) == nullptr) return 1;
    ::setenv("XDG_DATA_HOME", folder.c_str(), 1);
    runAll(folder);
    fs::remove_all(folder);
    return 0;
}
