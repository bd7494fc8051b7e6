#include "TavrinCore/Scanning/UnusedAppsScanner.h"

#include "TavrinCore/Scanning/AppUninstaller.h"
#include "TavrinCore/Scanning/DateText.h"
#include "TavrinCore/Scanning/InstalledApps.h"
#include "TavrinCore/Scanning/ScanRun.h"
#include "TavrinCore/Strings.h"

#include <chrono>
#include <string>
#include <utility>

namespace tavrin {
namespace {

std::string detailOf(Date lastUsed, const MeasuredApp& app) {
    std::string detail = S::detailNotOpenedSince(dateText(lastUsed));
    if (app.leftovers > 0) detail += S::detailAlsoIncludesRelated(app.leftovers);
    return detail;
}

}  // namespace

UnusedAppsScanner::UnusedAppsScanner(int unusedAfterDays, std::optional<std::vector<URL>> searchDirectories,
                                     AppTimes times)
    : unusedAfterDays_(unusedAfterDays),
      searchDirectories_(searchDirectories ? *std::move(searchDirectories) : defaultAppDirectories()),
      times_(std::move(times)) {}

std::vector<CleanableItem> UnusedAppsScanner::scan(const ProgressCallback& progress,
                                                   const CancellationCallback& isCancelled) const {
    const Date cutoff = times_.now().adding(-std::chrono::hours(24) * unusedAfterDays_);
    ScanRun run(progress, isCancelled);
    std::vector<RemovableApp> apps = removableAppsIn(searchDirectories_, run);
    std::vector<std::vector<URL>> leftovers = AppUninstaller::assignLeftovers(
        AppUninstaller::defaultLeftoverRoots(), identitiesOf(apps), &run.denials(), run.isCancelled());
    run.throwIfCancelled();
    for (std::size_t i = 0; i < apps.size(); ++i) {
        run.throwIfCancelled();
        reportApp(run, S::scanCheckingApps(), apps[i].url, i, apps.size());
        const std::optional<Date> lastUsed = times_.lastUsed(apps[i].url);
        if (!lastUsed || *lastUsed >= cutoff) continue;
        const MeasuredApp measured = measure(apps[i].url, leftovers[i], run);
        run.add({.id = UUID::random(),
                 .url = std::move(apps[i].url),
                 .size = measured.bytes(),
                 .category = ScanCategory::application,
                 .detail = detailOf(*lastUsed, measured),
                 .relatedURLs = std::move(leftovers[i])});
    }
    return run.finishLargestFirst(run.bytes());
}

}  // namespace tavrin
