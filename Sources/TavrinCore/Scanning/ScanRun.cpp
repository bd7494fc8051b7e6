#include "TavrinCore/Scanning/ScanRun.h"

#include "TavrinCore/Scanning/FileSystemUtils.h"

#include <algorithm>
#include <utility>

namespace tavrin {

ScanRun::ScanRun(const ProgressCallback& progress, const CancellationCallback& isCancelled, Clock clock)
    : progress_(progress), isCancelled_(isCancelled), clock_(std::move(clock)), poll_([this] {
          if (isCancelled_()) return true;
          breakSilence();
          return false;
      }) {}

void ScanRun::throwIfCancelled() {
    if (poll_()) throw ScanError::cancelled();
}

void ScanRun::breakSilence() {
    if (lastReport_ && clock_() - lastReportTime_ >= longestSilence) report(*std::exchange(lastReport_, std::nullopt));
}

void ScanRun::report(ScanProgress report) {
    progress_(report);
    lastReport_ = std::move(report);
    lastReportTime_ = clock_();
}

std::vector<URL> ScanRun::children(const URL& folder) {
    std::vector<URL> found = FileSystemUtils::children(folder, false, &denials_, poll_);
    throwIfCancelled();
    return found;
}

std::int64_t ScanRun::size(const URL& url) {
    return measured(url, &denials_);
}

std::int64_t ScanRun::sizeWithoutDenials(const URL& url) {
    return measured(url, nullptr);
}

std::int64_t ScanRun::measured(const URL& url, AccessDenials* denials) {
    const std::int64_t size = FileSystemUtils::size(url, denials, poll_);
    throwIfCancelled();
    return size;
}

void ScanRun::add(CleanableItem item) {
    bytes_ = FileSystemUtils::sumOfSizes(bytes_, item.size);
    items_.push_back(std::move(item));
}

std::vector<CleanableItem> ScanRun::finish(std::int64_t bytesFound) {
    denials_.throwIfNothingFound(count());
    progress_({.phase = denials_.finalPhase(),
               .itemsFound = count(),
               .bytesFound = bytesFound,
               .fractionCompleted = 1.0,
               .blockedFolders = static_cast<std::int64_t>(denials_.count())});
    return std::move(items_);
}

std::vector<CleanableItem> ScanRun::finishLargestFirst(std::int64_t bytesFound) {
    std::vector<CleanableItem> items = finish(bytesFound);
    std::ranges::stable_sort(items, std::ranges::greater{}, &CleanableItem::size);
    return items;
}

}  // namespace tavrin
