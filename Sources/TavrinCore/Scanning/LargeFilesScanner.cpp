#include "TavrinCore/Scanning/LargeFilesScanner.h"

#include "TavrinCore/Platform/Folders.h"
#include "TavrinCore/Scanning/ByteFormatter.h"
#include "TavrinCore/Scanning/ScanRun.h"
#include "TavrinCore/Scanning/ScannerDefaults.h"
#include "TavrinCore/Strings.h"

#include <cmath>

namespace tavrin {
namespace {

constexpr std::int64_t kFilesPerReport = 500;
constexpr std::chrono::duration<double> kYear = std::chrono::seconds{31'536'000};

std::int64_t wholeYears(std::chrono::duration<double> age) {
    return std::llround(age / kYear);
}

}  // namespace

LargeFilesScanner::LargeFilesScanner(std::optional<std::vector<URL>> roots, std::int64_t largeThreshold,
                                     std::chrono::seconds staleInterval, bool includeTrash)
    : roots_(roots ? *std::move(roots) : userContentRoots(FileSystemUtils::home())),
      largeThreshold_(largeThreshold),
      staleInterval_(staleInterval),
      includeTrash_(includeTrash) {}

std::vector<URL> LargeFilesScanner::userContentRoots(const URL& home) {
    return FileSystemUtils::existingFolders(home, scannerDefaults::LargeFiles::roots);
}

std::optional<CleanableItem> LargeFilesScanner::judge(const FileInfo& file, Date now) const {
    const std::optional<Date> lastUse = file.accessed ? file.accessed : file.modified;
    const bool isLarge = file.size >= largeThreshold_;
    const bool isStale = lastUse && now.since(*lastUse) > staleInterval_;
    if (!isLarge && !isStale) return std::nullopt;
    std::string detail = ByteFormatter::string(file.size);
    if (isStale) detail += S::detailStaleYears(wholeYears(now.since(*lastUse)));
    return CleanableItem{.id = UUID::random(),
                         .url = file.url,
                         .size = file.size,
                         .category = isLarge ? ScanCategory::largeFile : ScanCategory::oldFile,
                         .detail = std::move(detail)};
}

void LargeFilesScanner::findInTrash(ScanRun& run) {
    const std::optional<URL> trash = trashFolder();
    if (!trash) return;
    for (const URL& child : run.children(*trash)) {
        run.throwIfCancelled();
        run.add({.id = UUID::random(),
                 .url = child,
                 .size = run.size(child),
                 .category = ScanCategory::trash,
                 .isSelected = true,
                 .detail = S::detailInTheTrash()});
    }
}

std::vector<CleanableItem> LargeFilesScanner::scan(const ProgressCallback& progress,
                                                   const CancellationCallback& isCancelled) const {
    const Date now = Date::now();
    ScanRun run(progress, isCancelled);
    std::int64_t filesSeen = 0;
    const auto look = [&](const FileInfo& file) {
        if (++filesSeen % kFilesPerReport == 0) {
            run.report({.phase = S::scanAnalyzingDisk(), .itemsFound = run.count(), .currentPath = file.url.path()});
        }
        if (std::optional<CleanableItem> item = judge(file, now)) run.add(*std::move(item));
    };
    for (const URL& root : FileSystemUtils::distinctRoots(roots_)) {
        FileSystemUtils::enumerateRegularFiles(root, {}, &run.denials(), run.isCancelled(), look);
        run.throwIfCancelled();
    }
    if (includeTrash_) findInTrash(run);
    // What is selected is summed up by whoever shows it.
    return run.finishLargestFirst(0);
}

}  // namespace tavrin
