// What walking costs, beside the least that it can cost and beside du.
//
//   WalkBenchmark [--large] [FOLDER]   makes its trees in FOLDER (the current one), keeps them, and prints the figures
#include "Measuring.h"
#include "SampleTree.h"
#include "TavrinCore/Scanning/FileSystemUtils.h"
#include "WalkFloor.h"

#include <fcntl.h>
#include <sched.h>
#include <sys/mount.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <stdexcept>
#include <string>

namespace {

using namespace tavrin;
using namespace tavrin::benchmarks;
namespace fs = std::filesystem;

constexpr int kFolders = 30'000;
constexpr double kEntriesEach = 11;

void require(bool holds, const char* what) {
    if (!holds) throw std::runtime_error(what);
}

Cost costOfSize(const URL& tree, std::int64_t expected) {
    return costOf([&] { require(FileSystemUtils::size(tree) == expected, "size gives another sum than the floor"); });
}

Cost costOfFloor(const URL& tree, std::int64_t expected) {
    return costOf([&] { require(walkFloor(tree.path().c_str()) == expected, "the floor changed its mind"); });
}

Cost costOfEnumerating(const URL& tree, std::int64_t expected) {
    return costOf([&] {
        std::int64_t total = 0;
        FileSystemUtils::enumerateRegularFiles(
            tree, {.descendIntoPackages = true, .includeHidden = true}, nullptr, neverCancelled,
            [&](const FileInfo& file) { total += file.modified && file.accessed ? file.size : 0; });
        require(total == expected, "enumerateRegularFiles gives another sum than the floor");
    });
}

void reportRatio(const std::string& what, const Cost& cost, const Cost& base, const std::string& target) {
    report(what + ", clock", cost.clock / base.clock, "ratio", target);
    report(what + ", processor", cost.processor / base.processor, "ratio", target);
}

void warm(const URL& tree, std::int64_t expected) {
    const std::vector<Cost> least =
        leastCosts(20, {[&] { return costOfFloor(tree, expected); }, [&] { return costOfSize(tree, expected); },
                        [&] { return costOfEnumerating(tree, expected); },
                        [&] {
                            return costOfProgram({"du", "-s", tree.path()});
                        }});
    report("floor, warm", least[0].clock * 1e3, "ms");
    report("size, warm", least[1].clock * 1e3, "ms");
    report("enumerateRegularFiles, warm", least[2].clock * 1e3, "ms");
    report("du -s, warm", least[3].clock * 1e3, "ms");
    reportRatio("size / floor, warm", least[1], least[0], "<= 1.10");
    reportRatio("size / du -s, warm", least[1], least[3], "<= 0.90");
    reportRatio("enumerateRegularFiles / floor, warm", least[2], least[0], "<= 1.35");
}

void dropCaches() {
    ::sync();
    std::ofstream("/proc/sys/vm/drop_caches") << "3\n";
}

void cold(const URL& tree, std::int64_t expected) {
    if (::access("/proc/sys/vm/drop_caches", W_OK) != 0) {
        note("cold runs are left out: only root may drop the caches");
        return;
    }
    const std::vector<Cost> least = leastCosts(
        5, {[&] { return costOfFloor(tree, expected); }, [&] { return costOfSize(tree, expected); }}, dropCaches);
    report("floor, cold", least[0].clock * 1e3, "ms");
    report("size, cold", least[1].clock * 1e3, "ms");
    report("size / floor, cold, clock", least[1].clock / least[0].clock, "ratio", "<= 1.05");
}

/// Nanoseconds of the processor for an entry of a tree of that many folders; of the floor too.
struct Slope {
    double size = 0;
    double floor = 0;
};

Slope slope(const fs::path& folder, int folders) {
    const fs::path path = folder / ("tree-" + std::to_string(folders));
    makeSampleTree(path, folders, 0);
    const URL tree = URL::fromPath(path.native());
    const std::vector<Cost> least = leastCosts(
        std::max(3, 300'000 / folders), {[&] { return costOfFloor(tree, 0); }, [&] { return costOfSize(tree, 0); }});
    const double entries = folders * kEntriesEach;
    return {.size = least[1].processor / entries * 1e9, .floor = least[0].processor / entries * 1e9};
}

void growth(const fs::path& folder, bool large) {
    const Slope small = slope(folder, kFolders / 10);
    report("an entry of 33,000", small.size, "ns");
    for (const int folders : {kFolders, kFolders * 10}) {
        if (folders > kFolders && !large) continue;
        const Slope next = slope(folder, folders);
        const std::string entries = folders > kFolders ? "3,300,000" : "330,000";
        report("an entry of " + entries, next.size, "ns");
        report("an entry of " + entries + " / of 33,000", next.size / small.size, "ratio", "0.90 to 1.10");
        // What the kernel needs for an entry grows with the caches that a tree overflows. The rest is the walker's.
        report("the same, beside the floor's", next.size / small.size / (next.floor / small.floor), "ratio",
               "0.90 to 1.10");
    }
    if (!large) note("3,300,000 entries: with --large");
}

void reportMemory(const std::string& what, const fs::path& path) {
    const URL tree = URL::fromPath(path.native());
    const long kib = memoryGrowth([&] { (void)FileSystemUtils::size(tree); });
    report("memory of size, " + what, static_cast<double>(kib) / 1024, "MiB", "< 16");
}

/// A folder of a million entries.
void makeWideFolder(const fs::path& path, bool ofFolders) {
    fs::create_directory(path);
    const int folder = ::open(path.c_str(), O_PATH | O_DIRECTORY | O_CLOEXEC);
    for (int i = 0; i < 1'000'000; ++i) {
        const std::string name = "an entry of a wide folder " + std::to_string(i);
        const int made =
            ofFolders ? ::mkdirat(folder, name.c_str(), 0755) : ::mknodat(folder, name.c_str(), S_IFREG | 0644, 0);
        require(made == 0, "no room for a wide folder");
    }
    ::close(folder);
}

/// Trees of millions take hours on a disk. These are made in memory, on a mount that nobody else sees and that ends
/// with this process.
void inMemory(const fs::path& folder, bool large) {
    fs::create_directories(folder);
    require(::unshare(CLONE_NEWNS) == 0, "no mounts of its own");
    require(::mount("none", "/", nullptr, MS_REC | MS_PRIVATE, nullptr) == 0, "mount");
    require(::mount("tmpfs", folder.c_str(), "tmpfs", 0, "nr_inodes=8000000") == 0, "tmpfs");
    growth(folder, large);
    makeWideFolder(folder / "files", false);
    reportMemory("1,000,000 files in a folder", folder / "files");
    makeWideFolder(folder / "folders", true);
    reportMemory("1,000,000 folders in a folder", folder / "folders");
}

}  // namespace

int main(int argc, char** argv) {
    const bool large = argc > 1 && std::string_view(argv[1]) == "--large";
    const int at = large ? 2 : 1;
    const fs::path folder = fs::absolute(argc > at ? argv[at] : ".");
    const fs::path path = folder / ("tree-" + std::to_string(kFolders));
    makeSampleTree(path, kFolders);
    const URL tree = URL::fromPath(path.native());
    const std::int64_t expected = walkFloor(path.c_str());
    warm(tree, expected);
    cold(tree, expected);
    reportMemory("330,000 entries", path);
    if (::geteuid() == 0) {
        inMemory(folder / "in-memory", large);
    } else {
        note("growth and folders of 1,000,000 entries are left out: only root may make them in memory");
    }
    return 0;
}
