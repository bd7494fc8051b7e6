#include "TavrinCore/Scanning/PerceptualHash.h"

#include "TavrinCore/Platform/FileReader.h"
#include "TavrinCore/Platform/PictureDecoder.h"
#include "TavrinCore/Scanning/TextCase.h"

#include <algorithm>
#include <bit>
#include <cmath>

namespace tavrin {
namespace {

constexpr std::size_t kColumns = kThumbnailColumns;
constexpr std::size_t kRows = kThumbnailRows;

using Search = std::size_t (*)(const std::uint64_t* seeds, std::size_t count, std::uint64_t hash, int threshold);

/// Inlined into each of the searches, so that it is compiled for what the search may use.
[[gnu::always_inline]] inline std::size_t search(const std::uint64_t* seeds, std::size_t count, std::uint64_t hash,
                                                 int threshold) {
    for (std::size_t i = 0; i < count; ++i) {
        if (std::popcount(seeds[i] ^ hash) <= threshold) return i;
    }
    return count;
}

std::size_t portableSearch(const std::uint64_t* seeds, std::size_t count, std::uint64_t hash, int threshold) {
    return search(seeds, count, hash, threshold);
}

#if defined(__x86_64__)
/// The instruction is younger than the oldest processors that the program runs on.
[[gnu::target("popcnt")]] std::size_t popcountSearch(const std::uint64_t* seeds, std::size_t count, std::uint64_t hash,
                                                     int threshold) {
    return search(seeds, count, hash, threshold);
}

Search quickestSearch() {
    return __builtin_cpu_supports("popcnt") ? popcountSearch : portableSearch;
}
#else
Search quickestSearch() {
    return portableSearch;
}
#endif

}  // namespace

bool PerceptualHash::isImage(const URL& url) {
    return std::ranges::find(imageExtensions, lowercased(url.pathExtension())) != imageExtensions.end();
}

std::optional<std::uint64_t> PerceptualHash::dHash(const URL& url, const CancellationCallback& isCancelled) {
    const std::unique_ptr<FileReader> file = FileReader::open(url, FileReader::Expect::whole);
    if (file == nullptr) return std::nullopt;
    const std::optional<GreyPicture> thumbnail = decodeThumbnail(*file, isCancelled);
    if (!thumbnail) return std::nullopt;
    return dHash(*thumbnail);
}

std::uint64_t PerceptualHash::dHash(const GreyPicture& picture) {
    const GreyPicture grid = picture.reducedTo(kColumns, kRows);
    std::uint64_t hash = 0;
    for (std::size_t row = 0; row < kRows; ++row) {
        for (std::size_t column = 0; column + 1 < kColumns; ++column) {
            const std::size_t pixel = row * kColumns + column;
            if (std::lround(grid.pixels[pixel]) > std::lround(grid.pixels[pixel + 1]))
                hash |= std::uint64_t{1} << (8 * row + column);
        }
    }
    return hash;
}

int PerceptualHash::hammingDistance(std::uint64_t a, std::uint64_t b) {
    return std::popcount(a ^ b);
}

std::size_t PerceptualHash::firstWithin(std::span<const std::uint64_t> seeds, std::uint64_t hash, int threshold) {
    static const Search quickest = quickestSearch();
    return quickest(seeds.data(), seeds.size(), hash, threshold);
}

std::size_t SimilarGroups::add(std::uint64_t hash) {
    const std::size_t group = PerceptualHash::firstWithin(seeds_, hash, threshold_);
    if (group == seeds_.size()) seeds_.push_back(hash);
    return group;
}

}  // namespace tavrin
