#include "TavrinCore/Scanning/DuplicateScanner.h"

#include "TavrinCore/Platform/DirectoryWalk.h"
#include "TavrinCore/Platform/FileReader.h"
#include "TavrinCore/Scanning/ContentComparison.h"
#include "TavrinCore/Scanning/FileFingerprint.h"
#include "TavrinCore/Scanning/FileIndex.h"
#include "TavrinCore/Scanning/FileSystemUtils.h"
#include "TavrinCore/Scanning/ScanRun.h"
#include "TavrinCore/Scanning/ScannerDefaults.h"
#include "TavrinCore/Strings.h"

#include <algorithm>
#include <chrono>
#include <iterator>
#include <memory>
#include <numeric>
#include <set>
#include <span>
#include <string>
#include <utility>

namespace tavrin {
namespace {

using Number = FileIndex::Number;

constexpr int kFilesPerReport = 500;
/// A disk that is asked for this many files at once finds a short way to all of them.
constexpr std::size_t kFilesAhead = 48;
/// Files up to this size are fetched whole when they are fetched ahead; of others, what the fingerprint wants.
constexpr std::int64_t kSmallFile = 65'536;
/// A file that takes longer than this came from the disk and not from memory,
constexpr std::chrono::microseconds kSlowRead{300};
/// and then this many are fetched ahead.
constexpr std::size_t kFilesPerSlowRead = 512;

struct Candidate {
    Number file;
    Fingerprint fingerprint;
};

const SHA256::Digest& digestOf(const Candidate& candidate) {
    return candidate.fingerprint.digest;
}

/// Calls `each` with every run of elements that `isSame` holds for.
template <class Element, class IsSame, class Each>
void forEachRun(std::span<const Element> elements, const IsSame& isSame, const Each& each) {
    for (std::size_t begin = 0, end = 0; begin < elements.size(); begin = end) {
        while (end < elements.size() && isSame(elements[begin], elements[end]))
            ++end;
        each(elements.subspan(begin, end - begin));
    }
}

}  // namespace

DuplicateScanner::DuplicateScanner(std::optional<std::vector<URL>> roots, std::int64_t minimumSize)
    : roots_(roots ? *std::move(roots) : defaultRoots()), minimumSize_(minimumSize) {}

std::vector<URL> DuplicateScanner::defaultRoots() {
    std::vector<URL> roots;
    for (const std::string_view name : scannerDefaults::Duplicates::roots) {
        URL root = FileSystemUtils::home().appendingPathComponent(name, true);
        if (FileSystemUtils::exists(root)) roots.push_back(std::move(root));
    }
    return roots;
}

/// One scan under way. A bucket is all the files of one size, in the order in which they were met.
class DuplicateScanner::Run {
  public:
    Run(const ProgressCallback& progress, const CancellationCallback& isCancelled) : run_(progress, isCancelled) {}

    std::vector<CleanableItem> over(const DuplicateScanner& scanner) {
        for (const URL& root : scanner.roots_) {
            index(root, scanner.minimumSize_);
            run_.throwIfCancelled();
        }
        sortIntoBuckets();
        for (std::size_t i = 0; i < buckets_.size(); ++i) {
            run_.throwIfCancelled();
            reportBucket(i);
            compare(buckets_[i]);
        }
        // Buckets came largest first, so the findings stand in their order.
        return run_.finish(selectedBytes_);
    }

  private:
    void index(const URL& root, std::int64_t minimumSize) {
        FileSystemUtils::enumerateRegularFileEntries(root, {}, &run_.denials(), run_.isCancelled(),
                                                     [&](const WalkEntry& entry, const FileStatus& status) {
                                                         if (status.measure() < minimumSize) return;
                                                         const URL file = entry.url();
                                                         index_.add(file, status);
                                                         if (index_.count() % kFilesPerReport == 0) reportIndexed(file);
                                                     });
    }

    void reportIndexed(const URL& file) {
        run_.report({.phase = S::scanIndexingFiles(), .itemsFound = index_.count(), .currentPath = file.path()});
    }

    void reportBucket(std::size_t bucket) {
        run_.report({.phase = S::scanComparingContents(),
                     .itemsFound = run_.count(),
                     .fractionCompleted = static_cast<double>(bucket + 1) / static_cast<double>(buckets_.size())});
    }

    /// Only sizes that occur more than once are worth a bucket.
    void sortIntoBuckets() {
        std::vector<Number> bySize(index_.count());
        std::iota(bySize.begin(), bySize.end(), Number{0});
        std::ranges::sort(bySize, [this](Number a, Number b) {
            return index_.size(a) != index_.size(b) ? index_.size(a) > index_.size(b) : a < b;
        });
        const auto isSameSize = [this](Number a, Number b) { return index_.size(a) == index_.size(b); };
        std::size_t kept = 0;
        // Bucket by bucket they move to the front, over what was looked at already.
        for (std::size_t begin = 0, end = 0; begin < bySize.size(); begin = end) {
            while (end < bySize.size() && isSameSize(bySize[begin], bySize[end]))
                ++end;
            if (end - begin < 2) continue;
            std::copy(bySize.begin() + static_cast<std::ptrdiff_t>(begin),
                      bySize.begin() + static_cast<std::ptrdiff_t>(end),
                      bySize.begin() + static_cast<std::ptrdiff_t>(kept));
            kept += end - begin;
        }
        bySize.resize(kept);
        candidates_ = std::move(bySize);
        forEachRun(std::span<const Number>(candidates_), isSameSize,
                   [this](std::span<const Number> bucket) { buckets_.push_back(bucket); });
        isAlone_.resize(index_.count());
        for (const std::span<const Number> bucket : buckets_)
            markThoseAlone(bucket);
    }

    /// Files that occupy the same differ in length as often as not: with a length of its own, one needn't be opened.
    void markThoseAlone(std::span<const Number> bucket) {
        std::vector<Number> byLength(bucket.begin(), bucket.end());
        const auto length = [this](Number file) { return index_.length(file); };
        std::ranges::sort(byLength, {}, length);
        const auto isSameLength = [&length](Number a, Number b) { return length(a) == length(b); };
        forEachRun(std::span<const Number>(byLength), isSameLength, [&](std::span<const Number> same) {
            if (same.size() == 1 && length(same.front())) isAlone_[same.front()] = true;
        });
    }

    void compare(std::span<const Number> bucket) {
        std::vector<Candidate> candidates = fingerprinted(bucket);
        std::ranges::stable_sort(candidates, {}, digestOf);
        const auto isSame = [](const Candidate& a, const Candidate& b) { return digestOf(a) == digestOf(b); };
        forEachRun(std::span<const Candidate>(candidates), isSame, [this](std::span<const Candidate> same) {
            if (same.size() > 1) compareWhole(same);
        });
    }

    void compareWhole(std::span<const Candidate> same) {
        std::vector<Number> files;
        std::ranges::transform(same, std::back_inserter(files), &Candidate::file);
        // Small files have been read already.
        if (std::ranges::all_of(same, [](const Candidate& each) { return each.fingerprint.isWhole; })) {
            addGroup(std::move(files), digestOf(same.front()));
            return;
        }
        for (EqualFiles& equal : comparison_.equalFiles(files))
            addGroup(std::move(equal.files), equal.hash);
    }

    /// The names of one file are one file: it is read once, and the first name that can be opened stands for it. To
    /// offer the others would free nothing.
    std::vector<Candidate> fingerprinted(std::span<const Number> bucket) {
        const std::set<FileIdentifier> linked = identifiersMetTwice(bucket);
        std::set<FileIdentifier> seen;
        std::vector<Candidate> candidates;
        for (const Number file : bucket) {
            if (run_.isCancelled()()) throw ScanError::cancelled();
            fetchAhead();
            if (isAlone_[file]) continue;
            const auto begin = std::chrono::steady_clock::now();
            const std::optional<FileIdentifier> identifier = index_.identifier(file);
            const bool isLinked = identifier && linked.contains(*identifier);
            if (isLinked && seen.contains(*identifier)) continue;
            const std::unique_ptr<FileReader> reader = open(file);
            if (reader == nullptr) continue;
            if (isLinked) seen.insert(*identifier);
            candidates.push_back({.file = file, .fingerprint = fingerprintOf(*reader)});
            if (std::chrono::steady_clock::now() - begin > kSlowRead) fetchUntil_ = fingerprinted_ + kFilesPerSlowRead;
        }
        return candidates;
    }

    [[nodiscard]] std::set<FileIdentifier> identifiersMetTwice(std::span<const Number> bucket) const {
        std::vector<Number> sorted(bucket.begin(), bucket.end());
        const auto identifier = [this](Number file) { return index_.identifier(file); };
        std::ranges::sort(sorted, {}, identifier);
        std::set<FileIdentifier> twice;
        for (std::size_t i = 1; i < sorted.size(); ++i) {
            const std::optional<FileIdentifier> here = identifier(sorted[i]);
            if (here && here == identifier(sorted[i - 1])) twice.insert(*here);
        }
        return twice;
    }

    /// Lets the disk begin with the files that come next. Not where it is known by heart: there it would only cost.
    void fetchAhead() {
        ++fingerprinted_;
        if (fingerprinted_ > fetchUntil_) return;
        fetched_ = std::max(fetched_, fingerprinted_);
        for (; fetched_ < std::min(candidates_.size(), fingerprinted_ + kFilesAhead); ++fetched_) {
            const Number file = candidates_[fetched_];
            if (isAlone_[file]) continue;
            const std::unique_ptr<FileReader> reader = open(file);
            if (reader == nullptr) continue;
            const std::int64_t size = index_.size(file);
            reader->prefetch(0, size <= kSmallFile ? static_cast<std::size_t>(size) : kFingerprintPrefix + 1);
        }
    }

    /// The file that was met in the walk; nil for whatever stands at its path instead by now.
    [[nodiscard]] std::unique_ptr<FileReader> open(Number file,
                                                   FileReader::Expect expect = FileReader::Expect::beginning) const {
        std::unique_ptr<FileReader> reader = FileReader::open(index_.url(file), expect);
        if (reader == nullptr || reader->status().identifier != index_.identifier(file)) return nullptr;
        return reader;
    }

    /// The oldest is the one to keep; of equally old ones, the first that was met.
    void addGroup(std::vector<Number> files, const SHA256::Digest& hash) {
        std::ranges::stable_sort(files, {}, [this](Number file) { return index_.modified(file); });
        const std::string groupID = hexadecimal(hash);
        const std::string detail = S::detailDuplicateOf(displayText(index_.name(files.front())));
        for (const Number file : files) {
            const bool isKeeper = file == files.front();
            const std::int64_t size = index_.size(file);
            if (!isKeeper) selectedBytes_ = FileSystemUtils::sumOfSizes(selectedBytes_, size);
            run_.add({.id = UUID::random(),
                      .url = index_.url(file),
                      .size = size,
                      .category = ScanCategory::duplicate,
                      .isSelected = !isKeeper,
                      .detail = isKeeper ? S::detailOriginalKept() : detail,
                      .groupID = groupID,
                      .isGroupKeeper = isKeeper});
        }
    }

    ScanRun run_;
    FileIndex index_;
    /// All buckets, one behind the other, and where each lies.
    std::vector<Number> candidates_;
    std::vector<std::span<const Number>> buckets_;
    /// By number: no other file has its length, so none has its contents.
    std::vector<bool> isAlone_;
    std::size_t fingerprinted_ = 0;
    std::size_t fetched_ = 0;
    std::size_t fetchUntil_ = 0;
    ContentComparison::Open openWhole_ = [this](Number file) {
        return open(file, index_.size(file) <= kSmallFile ? FileReader::Expect::beginning : FileReader::Expect::whole);
    };
    ContentComparison comparison_{openWhole_, run_.isCancelled()};
    std::int64_t selectedBytes_ = 0;
};

std::vector<CleanableItem> DuplicateScanner::scan(const ProgressCallback& progress,
                                                  const CancellationCallback& isCancelled) const {
    return Run(progress, isCancelled).over(*this);
}

}  // namespace tavrin
