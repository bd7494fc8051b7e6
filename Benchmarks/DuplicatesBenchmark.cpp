// What finding copies costs, beside the plainest way to find them and beside the tools that people use for it.
//
//   DuplicatesBenchmark [--large] [FOLDER]   makes its files in FOLDER (the current one), keeps them, and prints the
//   figures; --large: 50,000 files of 4 GB instead of 10,000 of 500 MB. The tools are those of the bench group that are
//   installed. Each is told to work with one thread, as the scanner does, and to hash with SHA-256 where it can. rmlint
//   works with several nevertheless: the processor's time tells.
#include "DuplicatesFloor.h"
#include "Measuring.h"
#include "TavrinCore/Scanning/DuplicateScanner.h"
#include "TavrinCore/Scanning/FileIndex.h"
#include "TavrinCore/Scanning/SizeBuckets.h"

#include <unistd.h>

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <random>
#include <stdexcept>
#include <string>
#include <vector>

namespace {

using namespace tavrin;
using namespace tavrin::benchmarks;
namespace fs = std::filesystem;

struct Volume {
    int files;
    double bytes;
};
constexpr Volume kUsual{10'000, 500e6};
constexpr Volume kLarge{50'000, 4e9};
constexpr int kIndexed = 1'000'000;

void require(bool holds, const char* what) {
    if (!holds) throw std::runtime_error(what);
}

/// Files as they are found in a home: most of them small, three of ten a copy of another one, some that differ from one
/// of the same size behind the first 8 KiB only, and some names more for the same file.
class Samples {
  public:
    Samples(fs::path folder, Volume volume) : folder_(std::move(folder)), volume_(volume) {}

    void make() {
        const fs::path done = folder_.native() + ".done";
        if (fs::exists(done)) return;
        fs::remove_all(folder_);
        for (int i = 0; i < volume_.files; ++i)
            makeFile(i);
        std::ofstream(done) << '\n';
    }

  private:
    [[nodiscard]] fs::path pathOf(int number) const {
        return folder_ / std::to_string(number % 97) / std::to_string(number % 13) / ("file-" + std::to_string(number));
    }

    void makeFile(int number) {
        const fs::path path = pathOf(number);
        fs::create_directories(path.parent_path());
        const auto kind = random_() % 100;
        const fs::path other =
            number == 0 ? fs::path() : pathOf(static_cast<int>(random_() % static_cast<unsigned>(number)));
        if (number > 0 && kind < 30) {
            fs::copy_file(other, path);
        } else if (number > 0 && kind < 32) {
            fs::create_hard_link(other, path);
        } else if (number > 0 && kind < 37 && fs::file_size(other) > 9'000) {
            fs::copy_file(other, path);
            std::fstream stream(path, std::ios::in | std::ios::out | std::ios::binary);
            stream.seekp(-1, std::ios::end);
            stream.put(static_cast<char>(random_()));
        } else {
            writeNew(path);
        }
    }

    void writeNew(const fs::path& path) {
        const double mean = volume_.bytes / volume_.files;
        std::lognormal_distribution<double> sizes(std::log(mean) - 1.125, 1.5);
        std::vector<char> bytes(static_cast<std::size_t>(std::min(sizes(random_), 400 * mean)) + 1);
        for (std::size_t i = 0; i + 8 <= bytes.size(); i += 8)
            *reinterpret_cast<std::uint64_t*>(bytes.data() + i) = random_();
        std::ofstream(path, std::ios::binary).write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
    }

    fs::path folder_;
    Volume volume_;
    std::mt19937_64 random_{1};  // NOLINT(cert-msc51-cpp): the same in every run
};

std::size_t copiesFound(const URL& folder) {
    const DuplicateScanner scanner(std::vector{folder}, 1);
    const std::vector<CleanableItem> items = scanner.scan([](const ScanProgress&) {}, neverCancelled);
    return static_cast<std::size_t>(std::ranges::count(items, false, &CleanableItem::isGroupKeeper));
}

struct Rival {
    std::string name;
    std::vector<std::string> command;
    std::string target;
};

bool isInstalled(const std::string& program) {
    return fs::exists("/usr/bin/" + program);
}

/// Each is told to write to its standard output alone. A path for its output would be replaced by a file, whatever
/// stands there: root would lose /dev/null by it. rmlint is told not to ask where on the disk a file lies: of a disk
/// that turns it asks, and flushes each file first (fsync). That is nine tenths of its time, and has nothing to do with
/// copies.
std::vector<Rival> rivals(const std::string& folder) {
    std::vector<Rival> all{
        {"rmlint",
         {"rmlint", "-a", "sha256", "-t", "1", "-T", "df", "--without-fiemap", "-o", "summary:stdout", folder},
         "<= 0.25"},
        {"rdfind",
         {"rdfind", "-checksum", "sha256", "-dryrun", "true", "-makeresultsfile", "false", folder},
         "<= 0.75"},
        {"jdupes", {"jdupes", "-r", "-q", "-m", folder}, "<= 1.00"},
    };
    std::erase_if(all, [](const Rival& rival) {
        const bool isMissing = !isInstalled(rival.command.front());
        if (isMissing) note(rival.name + " isn't installed");
        return isMissing;
    });
    return all;
}

void warm(const URL& folder, std::size_t expected) {
    const std::vector<Rival> others = rivals(folder.path());
    std::vector<std::function<Cost()>> runs{
        [&] { return costOf([&] { require(copiesFound(folder) == expected, "the scanner changed its mind"); }); },
        [&] { return costOf([&] { require(plainFunnel(folder.path()) == expected, "not what the funnel finds"); }); }};
    for (const Rival& rival : others)
        runs.emplace_back([&rival] { return costOfProgram(rival.command); });
    const std::vector<Cost> least = leastCosts(3, runs);
    report("scanner, warm", least[0].clock * 1e3, "ms");
    report("plain funnel, warm", least[1].clock * 1e3, "ms");
    report("scanner / plain funnel, warm, clock", least[0].clock / least[1].clock, "ratio");
    for (std::size_t i = 0; i < others.size(); ++i) {
        report(others[i].name + ", warm", least[i + 2].clock * 1e3, "ms");
        const Cost& other = least[i + 2];
        report("scanner / " + others[i].name + ", warm, clock", least[0].clock / other.clock, "ratio",
               others[i].target);
        report("scanner / " + others[i].name + ", warm, processor", least[0].processor / other.processor, "ratio",
               others[i].target);
    }
}

void cold(const URL& folder, std::size_t expected) {
    if (::access("/proc/sys/vm/drop_caches", W_OK) != 0) {
        note("cold runs are left out: only root may drop the caches");
        return;
    }
    const auto dropCaches = [] {
        ::sync();
        std::ofstream("/proc/sys/vm/drop_caches") << "3\n";
    };
    const std::vector<Cost> least = leastCosts(
        2,
        {[&] { return costOf([&] { require(copiesFound(folder) == expected, "the scanner changed its mind"); }); },
         [&] { return costOf([&] { require(plainFunnel(folder.path()) == expected, "not what the funnel finds"); }); }},
        dropCaches);
    report("scanner, cold", least[0].clock * 1e3, "ms");
    report("scanner / plain funnel, cold, clock", least[0].clock / least[1].clock, "ratio", "<= 0.75");
}

FileStatus statusOf(int number, std::int64_t length) {
    constexpr std::int64_t block = 4'096;
    return {.type = FileType::regular,
            .size = length,
            .allocatedSize = (length + block - 1) / block * block,
            .modified = Date::fromUnix(1'700'000'000 + number),
            .identifier = FileIdentifier{.device = 1, .inode = static_cast<std::uint64_t>(number)}};
}

/// What is held of each file from the walk to the comparison, at the most: the index, and the buckets while they are
/// sorted. Twenty files a folder.
void indexing() {
    const auto name = [](int number) { return "IMG_" + std::to_string(20'000'000 + number) + ".jpeg"; };
    const auto index = [&] {
        std::mt19937_64 random(1);  // NOLINT(cert-msc51-cpp): the same in every run
        std::lognormal_distribution<double> lengths(std::log(16e3), 1.5);
        FileIndex files;
        for (int i = 0; i < kIndexed; ++i) {
            const std::string folder =
                "/home/somebody/Pictures/" + std::to_string(i / 400) + "/" + std::to_string(i / 20);
            files.add(URL::fromPath(folder + "/" + name(i)),
                      statusOf(i, static_cast<std::int64_t>(lengths(random)) + 1));
        }
        require(SizeBuckets(files).files().size() > kIndexed / 2, "hardly any file has company of its size");
    };
    const double bytes = static_cast<double>(memoryGrowth(index)) * 1024;
    const double perName = static_cast<double>(name(0).size());
    report("1,000,000 files indexed, a file besides its name", bytes / kIndexed - perName, "bytes", "<= 120");
}

}  // namespace

int main(int argc, char** argv) {
    bool isLarge = false;
    fs::path base = fs::current_path();
    for (int i = 1; i < argc; ++i) {
        if (std::string(argv[i]) == "--large")
            isLarge = true;
        else
            base = fs::absolute(argv[i]);
    }
    const fs::path path = base / (isLarge ? "duplicates-large" : "duplicates");
    Samples(path, isLarge ? kLarge : kUsual).make();
    const URL folder = URL::fromPath(path.native());
    const std::size_t expected = copiesFound(folder);
    require(expected > 0 && plainFunnel(folder.path()) == expected, "the scanner and the funnel disagree");
    report("copies found", static_cast<double>(expected), "files");
    warm(folder, expected);
    cold(folder, expected);
    report("peak memory of a scan", static_cast<double>(memoryGrowth([&] { (void)copiesFound(folder); })) / 1024,
           "MiB");
    indexing();
    return 0;
}
