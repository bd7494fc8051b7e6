#include "TavrinCore/Scanning/DownloadsJunkScanner.h"

#include "TavrinCore/Scanning/DetailText.h"
#include "TavrinCore/Scanning/FileSystemUtils.h"
#include "TavrinCore/Scanning/ScanRun.h"
#include "TavrinCore/Scanning/ScannerDefaults.h"
#include "TavrinCore/Scanning/TextCase.h"
#include "TavrinCore/Strings.h"

#include <algorithm>

namespace tavrin {
namespace {

constexpr std::chrono::seconds kDay{86'400};

bool isInstallerOrArchive(const URL& url) {
    const auto& known = scannerDefaults::DownloadsJunk::installerExtensions;
    return std::ranges::find(known, lowercased(url.pathExtension())) != known.end();
}

}  // namespace

DownloadsJunkScanner::DownloadsJunkScanner(int staleAfterDays, std::optional<URL> downloads)
    : staleAfter_(staleAfterDays * kDay),
      downloads_(downloads ? *std::move(downloads)
                           : FileSystemUtils::home().appendingPathComponent("Downloads", true)) {}

std::optional<std::string> DownloadsJunkScanner::reason(const URL& url, const FileStatus& status, Date now) const {
    if (status.type == FileType::directory) return std::nullopt;
    const std::optional<Date> lastUse = status.accessed ? status.accessed : status.modified;
    if (isInstallerOrArchive(url)) return detailWithDate(S::detailInstallerOrArchive(), lastUse);
    if (lastUse.value_or(Date::distantFuture) < now.adding(-staleAfter_))
        return detailWithDate(S::detailNotOpenedInAWhile(), lastUse);
    return std::nullopt;
}

void DownloadsJunkScanner::consider(ScanRun& run, const URL& child, Date now) const {
    // One that can't be looked at counts as a file without dates.
    const Result<FileStatus> status = fileStatus(child);
    std::optional<std::string> detail = reason(child, status ? *status : FileStatus{}, now);
    if (!detail) return;
    const std::int64_t size = run.sizeWithoutDenials(child);
    if (size < 1) return;
    run.report({.phase = S::scanCheckingDownloads(),
                .itemsFound = run.count(),
                .currentPath = std::string(child.lastPathComponent())});
    run.add({.id = UUID::random(),
             .url = child,
             .size = size,
             .category = ScanCategory::downloads,
             .detail = std::move(detail)});
}

std::vector<CleanableItem> DownloadsJunkScanner::scan(const ProgressCallback& progress,
                                                      const CancellationCallback& isCancelled) const {
    if (!FileSystemUtils::exists(downloads_)) return {};
    const Date now = Date::now();
    ScanRun run(progress, isCancelled);
    for (const URL& child : run.children(downloads_)) {
        run.throwIfCancelled();
        consider(run, child, now);
    }
    return run.finishLargestFirst(run.bytes());
}

}  // namespace tavrin
