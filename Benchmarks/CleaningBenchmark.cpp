// What a clean costs beyond its system calls, and whether a full Trash makes it dearer.
//
//   CleaningBenchmark [FOLDER]     works in a folder of its own below FOLDER (the current one), which it takes away
//
// What is compared takes turns, and the shortest turn of each counts: what else the machine does only makes it longer.
// The disk is brought to rest before each.
#include "TavrinCore/Cleaning/CleanJournal.h"
#include "TavrinCore/Cleaning/Cleaner.h"
#include "TrashFloor.h"

#include <sys/resource.h>
#include <unistd.h>

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <functional>
#include <string>
#include <vector>

namespace {

using namespace tavrin;
namespace fs = std::filesystem;

constexpr int kItems = 10'000;
constexpr int kRounds = 4;
constexpr int kProbe = 2'000;
constexpr int kPresent = 50'000;

fs::path makeItems(const fs::path& folder, int count) {
    fs::create_directories(folder);
    for (int i = 0; i < count; ++i)
        std::ofstream(folder / std::to_string(i)) << "a small item";
    return folder;
}

/// Another home's Trash each time: deleting thousands of files would go on in the file system while we measure.
fs::path freshTrash(const fs::path& world) {
    static int number = 0;
    const fs::path data = world / ("data" + std::to_string(number++));
    ::setenv("XDG_DATA_HOME", data.c_str(), 1);
    fs::create_directories(data / "Trash/files");
    fs::create_directories(data / "Trash/info");
    return data / "Trash";
}

double processorSeconds() {
    rusage usage{};
    ::getrusage(RUSAGE_SELF, &usage);
    const auto seconds = [](const timeval& time) {
        return static_cast<double>(time.tv_sec) + static_cast<double>(time.tv_usec) / 1e6;
    };
    return seconds(usage.ru_utime) + seconds(usage.ru_stime);
}

double microseconds(const std::function<void()>& work, int count) {
    ::sync();
    const double begin = processorSeconds();
    work();
    return (processorSeconds() - begin) * 1e6 / count;
}

void clean(const fs::path& folder, int count, const TrashedCallback& onTrashed = {}) {
    std::vector<CleanableItem> items;
    for (int i = 0; i < count; ++i)
        items.push_back({.id = UUID::random(),
                         .url = URL::fromPath((folder / std::to_string(i)).native()),
                         .size = 1,
                         .category = ScanCategory::userCache});
    const CleanResult result = Cleaner().clean(
        items, [](const ScanProgress&) {}, neverCancelled, onTrashed);
    if (result.removedItems == count) return;
    std::fprintf(stderr, "%zu of %d could not be moved\n", result.failures.size(), count);
    std::exit(1);
}

void floorOf(const fs::path& folder, const fs::path& trash, int count) {
    if (trashFloor(folder.c_str(), trash.c_str(), count) == 0) return;
    std::fprintf(stderr, "the floor could not move all\n");
    std::exit(1);
}

double least(const std::vector<double>& values) {
    return *std::ranges::min_element(values);
}

void report(const char* what, double value, const char* unit, const char* target = "") {
    std::printf("%s\t%.2f\t%s\t%s\n", what, value, unit, target);
    std::fflush(stdout);
}

void againstTheFloor(const fs::path& world) {
    std::vector<double> floors;
    std::vector<double> ours;
    for (int round = 0; round < kRounds; ++round) {
        fs::path folder = makeItems(world / "floor", kItems);
        floors.push_back(microseconds([&, trash = freshTrash(world)] { floorOf(folder, trash, kItems); }, kItems));
        freshTrash(world);
        folder = makeItems(world / "ours", kItems);
        ours.push_back(microseconds([&] { clean(folder, kItems); }, kItems));
    }
    report("clean 10,000 small items, each", least(ours), "us");
    report("the same system calls in C, each", least(floors), "us");
    report("ratio", least(ours) / least(floors), "", "<= 1.30");
}

/// What it costs to note each move for the case that the process is killed.
void withAJournal(const fs::path& world) {
    std::vector<double> without;
    std::vector<double> with;
    for (int round = 0; round < kRounds; ++round) {
        freshTrash(world);
        fs::path folder = makeItems(world / "without", kItems);
        without.push_back(microseconds([&] { clean(folder, kItems); }, kItems));
        freshTrash(world);
        folder = makeItems(world / "with", kItems);
        CleanJournal journal(URL::fromPath(world.native(), true), "System Junk", "systemJunk");
        const auto note = [&journal](const TrashedEntry& entry, std::int64_t bytes) { journal.note(entry, bytes); };
        with.push_back(microseconds([&] { clean(folder, kItems, note); }, kItems));
    }
    report("with a journal, each", least(with), "us");
    report("  beside without", least(with) / least(without), "ratio");
}

/// The names are the same each time, so that namesakes are what fills the Trash.
void withAFullTrash(const fs::path& world) {
    std::vector<double> empty;
    std::vector<double> full;
    for (int round = 0; round < kRounds; ++round) {
        freshTrash(world);
        const fs::path folder = makeItems(world / "probe", kProbe);
        empty.push_back(microseconds([&] { clean(folder, kProbe); }, kProbe));
    }
    freshTrash(world);
    for (int present = 0; present < kPresent; present += kProbe)
        clean(makeItems(world / "probe", kProbe), kProbe);
    for (int round = 0; round < kRounds; ++round)
        full.push_back(
            microseconds([&, folder = makeItems(world / "probe", kProbe)] { clean(folder, kProbe); }, kProbe));
    report("an item, the Trash being empty", least(empty), "us");
    report("an item, 50,000 namesakes in the Trash", least(full), "us");
    report("ratio", least(full) / least(empty), "", "flat");
}

}  // namespace

int main(int argc, char** argv) {
    const fs::path base = argc > 1 ? argv[1] : fs::current_path();
    std::string pattern = (fs::absolute(base) / "cleaning-benchmark-XXXXXX").native();
    if (::mkdtemp(pattern.data()) == nullptr) return 1;
    const fs::path world = pattern;
    ::setenv("HOME", world.c_str(), 1);
    againstTheFloor(world);
    withAJournal(world);
    withAFullTrash(world);
    fs::remove_all(world);
    return 0;
}
