#include "TavrinCore/Scanning/DuplicateScanner.h"

#include "TavrinCore/Platform/DirectoryWalk.h"
#include "TavrinCore/Scanning/CopyFinder.h"
#include "TavrinCore/Scanning/DetailText.h"
#include "TavrinCore/Scanning/FileIndex.h"
#include "TavrinCore/Scanning/FileSystemUtils.h"
#include "TavrinCore/Scanning/ScanRun.h"
#include "TavrinCore/Scanning/ScannerDefaults.h"
#include "TavrinCore/Scanning/SizeBuckets.h"
#include "TavrinCore/Strings.h"

#include <algorithm>
#include <iterator>
#include <span>
#include <string>
#include <utility>

namespace tavrin {
namespace {

using Number = FileIndex::Number;

constexpr int kFilesPerReport = 500;

}  // namespace

DuplicateScanner::DuplicateScanner(std::optional<std::vector<URL>> roots, std::int64_t minimumSize)
    : roots_(roots ? *std::move(roots) : defaultRoots()), minimumSize_(minimumSize) {}

std::vector<URL> DuplicateScanner::defaultRoots() {
    return FileSystemUtils::existingFolders(FileSystemUtils::home(), scannerDefaults::Duplicates::roots);
}

/// One scan under way.
class DuplicateScanner::Run {
  public:
    Run(const ProgressCallback& progress, const CancellationCallback& isCancelled) : run_(progress, isCancelled) {}

    std::vector<CleanableItem> over(const DuplicateScanner& scanner) {
        for (const URL& root : FileSystemUtils::distinctRoots(scanner.roots_)) {
            index(root, scanner.minimumSize_);
            run_.throwIfCancelled();
        }
        const SizeBuckets buckets(index_, run_.isCancelled());
        CopyFinder finder(index_, buckets.files(), run_.isCancelled());
        for (std::size_t i = 0; i < buckets.count(); ++i) {
            run_.throwIfCancelled();
            reportBucket(i, buckets.count());
            compare(buckets.bucket(i), finder);
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

    void reportBucket(std::size_t bucket, std::size_t count) {
        run_.report({.phase = S::scanComparingContents(),
                     .itemsFound = run_.count(),
                     .fractionCompleted = static_cast<double>(bucket + 1) / static_cast<double>(count)});
    }

    void compare(std::span<const Number> bucket, CopyFinder& finder) {
        std::vector<EqualFiles> groups;
        const auto isSameLength = [this](Number a, Number b) { return index_.length(a) == index_.length(b); };
        forEachRun(bucket, isSameLength, [&](std::span<const Number> alike) {
            std::ranges::move(finder.copies(alike), std::back_inserter(groups));
        });
        // The same order on every machine.
        std::ranges::sort(groups, {}, &EqualFiles::hash);
        for (EqualFiles& group : groups)
            addGroup(std::move(group.files), hexadecimal(group.hash));
    }

    /// The oldest is the one to keep; of equally old ones, the first that was met.
    void addGroup(std::vector<Number> files, const std::string& groupID) {
        std::ranges::stable_sort(files, {}, [this](Number file) { return index_.modified(file); });
        const std::string detail = S::detailDuplicateOf(detailName(index_.name(files.front())));
        for (const Number file : files) {
            run_.throwIfCancelled();
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
    std::int64_t selectedBytes_ = 0;
};

std::vector<CleanableItem> DuplicateScanner::scan(const ProgressCallback& progress,
                                                  const CancellationCallback& isCancelled) const {
    return Run(progress, isCancelled).over(*this);
}

}  // namespace tavrin
