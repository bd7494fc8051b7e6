#include "TavrinCore/Scanning/CopyFinder.h"

#include "TavrinCore/Scanning/CancellationPoll.h"
#include "TavrinCore/Scanning/FileFingerprint.h"
#include "TavrinCore/Scanning/SizeBuckets.h"

#include <algorithm>
#include <iterator>
#include <tuple>
#include <utility>

namespace tavrin {
namespace {

/// A disk that is asked for this many files at once finds a short way to all of them.
constexpr std::size_t kFilesAhead = 48;
/// Files up to this size are fetched whole when they are fetched ahead; of others, what is read first.
constexpr std::int64_t kSmallFile = 65'536;
/// Where a file has to come from the disk, so will most of as many behind it.
constexpr std::size_t kFilesPerSlowRead = 512;

}  // namespace

struct CopyFinder::Candidate {
    Number file;
    Fingerprint fingerprint;
};

std::vector<EqualFiles> CopyFinder::copies(std::span<const Number> alike) {
    reached_ = static_cast<std::size_t>(alike.data() - all_.data());
    end_ = reached_ + alike.size();
    const std::vector<Number> files = withOneNameEach(alike);
    if (files.size() < 2) return {};
    if (files.size() > ContentComparison::kMostOpen) return copiesAmongMany(files);
    std::vector<EqualFiles> found = comparison_.equalFiles(files);
    if (comparison_.hadToWait()) fetchUntil_ = reached_ + kFilesPerSlowRead;
    return found;
}

std::vector<FileIndex::Number> CopyFinder::withOneNameEach(std::span<const Number> alike) {
    std::vector<Number> files(alike.begin(), alike.end());
    const auto identifier = [this](Number file) { return index_.identifier(file); };
    const auto isSame = [&](Number a, Number b) { return identifier(a) && identifier(a) == identifier(b); };
    CancellationPoll poll(isCancelled_);
    std::ranges::sort(files, [&](Number a, Number b) {
        poll();
        return std::pair(identifier(a), a) < std::pair(identifier(b), b);
    });
    std::size_t kept = 0;
    forEachRun(std::span<const Number>(files), isSame, [&](std::span<const Number> names) {
        const auto first =
            names.size() == 1 ? names.begin()
                              : std::ranges::find_if(names, [this](Number name) { return openKnown(name) != nullptr; });
        if (first != names.end()) files[kept++] = *first;
    });
    files.resize(kept);
    std::ranges::sort(files);
    return files;
}

std::vector<EqualFiles> CopyFinder::copiesAmongMany(std::span<const Number> files) {
    std::vector<EqualFiles> found;
    const std::vector<Candidate> candidates = fingerprinted(files);
    const auto isSame = [](const Candidate& a, const Candidate& b) {
        return a.fingerprint.digest == b.fingerprint.digest;
    };
    forEachRun(std::span<const Candidate>(candidates), isSame, [&](std::span<const Candidate> same) {
        if (same.size() < 2) return;
        std::vector<Number> numbers;
        std::ranges::transform(same, std::back_inserter(numbers), &Candidate::file);
        // Small files have been read already.
        if (std::ranges::all_of(same, [](const Candidate& each) { return each.fingerprint.isWhole; }))
            found.push_back({.hash = same.front().fingerprint.digest, .files = std::move(numbers)});
        else
            std::ranges::move(comparison_.equalFiles(numbers), std::back_inserter(found));
    });
    return found;
}

/// By their fingerprints, and then in the order of the index.
std::vector<CopyFinder::Candidate> CopyFinder::fingerprinted(std::span<const Number> files) {
    std::vector<Candidate> candidates;
    candidates.reserve(files.size());
    for (const Number file : files) {
        if (isCancelled_()) throw ScanError::cancelled();
        const std::unique_ptr<FileReader> reader = open(file);
        if (reader == nullptr) continue;
        candidates.push_back({.file = file, .fingerprint = fingerprintOf(*reader)});
        if (reader->hadToWait()) fetchUntil_ = reached_ + kFilesPerSlowRead;
    }
    CancellationPoll poll(isCancelled_);
    std::ranges::sort(candidates, [&poll](const Candidate& a, const Candidate& b) {
        poll();
        return std::tie(a.fingerprint.digest, a.file) < std::tie(b.fingerprint.digest, b.file);
    });
    return candidates;
}

std::unique_ptr<FileReader> CopyFinder::open(Number file) {
    // Where they are known by heart, to fetch them ahead would only cost.
    if (reached_ < end_ && ++reached_ <= fetchUntil_) fetchAhead();
    return openKnown(file);
}

/// The file that was met in the walk; nil for whatever stands at its path instead by now.
std::unique_ptr<FileReader> CopyFinder::openKnown(Number file) const {
    const auto expect = index_.size(file) <= kSmallFile ? FileReader::Expect::beginning : FileReader::Expect::whole;
    std::unique_ptr<FileReader> reader = FileReader::open(index_.url(file), expect);
    if (reader == nullptr || reader->status().identifier != index_.identifier(file)) return nullptr;
    return reader;
}

/// Lets the disk begin with the files that come next.
void CopyFinder::fetchAhead() {
    fetched_ = std::max(fetched_, reached_);
    for (; fetched_ < std::min(all_.size(), reached_ + kFilesAhead); ++fetched_) {
        if (isCancelled_()) throw ScanError::cancelled();
        const Number file = all_[fetched_];
        const std::unique_ptr<FileReader> reader = openKnown(file);
        if (reader == nullptr) continue;
        const std::int64_t size = index_.size(file);
        reader->prefetch(0, size <= kSmallFile ? static_cast<std::size_t>(size) : ContentComparison::kFirstChunk);
    }
}

}  // namespace tavrin
