// What hashing pictures costs, beside the codecs' libraries called straight; and what grouping the hashes costs.
//
//   SimilarImagesBenchmark [--large] [FOLDER]   makes its pictures in FOLDER (the current one) and keeps them; --large:
//   3,000 of 2 to 12 megapixels instead of 60.
#include "Measuring.h"
#include "PictureFloor.h"
#include "SamplePictures.h"
#include "TavrinCore/Scanning/PerceptualHash.h"

#include <filesystem>
#include <random>
#include <stdexcept>
#include <string>
#include <vector>

namespace {

using namespace tavrin;
using namespace tavrin::benchmarks;
namespace fs = std::filesystem;

constexpr int kUsual = 60;
constexpr int kLarge = 3'000;
constexpr std::size_t kHashes = 100'000;

void require(bool holds, const char* what) {
    if (!holds) throw std::runtime_error(what);
}

std::vector<std::string> pictures(const fs::path& folder, int count) {
    fs::create_directories(folder);
    std::vector<std::string> paths;
    for (int i = 0; i < count; ++i) {
        const auto number = static_cast<unsigned>(i);
        const bool isPNG = i % 12 == 5;
        const std::string path = folder / (std::to_string(i) + (isPNG ? ".png" : ".jpg"));
        paths.push_back(path);
        if (fs::exists(path)) continue;
        const auto width = static_cast<unsigned>(1'632 + i % 8 * 338);
        (isPNG ? writePNG : writeJPEG)(path, number, width, width * 3 / 4);
    }
    return paths;
}

void hashing(const std::vector<std::string>& paths) {
    const auto hashAll = [&] {
        for (const std::string& path : paths)
            require(PerceptualHash::dHash(URL::fromPath(path)).has_value(), "a picture has no hash");
    };
    const auto floorAll = [&] {
        for (const std::string& path : paths)
            require(pictureFloor(path) > 0, "the floor can't read a picture");
    };
    const std::vector<Cost> least = leastCosts(3, {[&] { return costOf(hashAll); }, [&] { return costOf(floorAll); }});
    report("a picture, hashed", least[0].clock / static_cast<double>(paths.size()) * 1e3, "ms");
    report("a picture, floor", least[1].clock / static_cast<double>(paths.size()) * 1e3, "ms");
    report("hashing / floor, clock", least[0].clock / least[1].clock, "ratio", "<= 1.15");
    report("hashing / floor, processor", least[0].processor / least[1].processor, "ratio", "<= 1.15");
    report("peak memory of hashing", static_cast<double>(memoryGrowth(hashAll)) / 1024, "MiB", "< 120");
}

void grouping() {
    std::mt19937_64 random(1);  // NOLINT(cert-msc51-cpp): the same in every run
    std::vector<std::uint64_t> hashes(kHashes);
    for (std::uint64_t& hash : hashes)
        hash = random();
    const Cost cost = costOf([&] {
        // A threshold that nothing reaches: each is compared with all before it.
        SimilarGroups groups(-1);
        for (const std::uint64_t hash : hashes)
            (void)groups.add(hash);
        require(groups.count() == kHashes, "some hashes matched");
    });
    report("100,000 hashes without a match, grouped", cost.clock, "s", "<= 6");
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
    hashing(pictures(base / "pictures", isLarge ? kLarge : kUsual));
    grouping();
    return 0;
}
