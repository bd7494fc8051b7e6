#include "TavrinCore/Scanning/AppUninstaller.h"

#include "TavrinCore/Scanning/ByteFormatter.h"
#include "TavrinCore/Scanning/Collation.h"
#include "TavrinCore/Scanning/FileSystemUtils.h"
#include "TavrinCore/Scanning/InstalledApps.h"
#include "TavrinCore/Scanning/ScanRun.h"
#include "TavrinCore/Scanning/ScannerDefaults.h"
#include "TavrinCore/Strings.h"

#include <algorithm>
#include <compare>
#include <iterator>
#include <string>
#include <utility>

namespace tavrin {
namespace {

std::string detailOf(const MeasuredApp& app) {
    if (app.leftovers == 0) return S::detailNoRelatedFiles();
    return S::detailIncludesRelated(app.leftovers, ByteFormatter::string(app.leftoverBytes));
}

}  // namespace

AppUninstaller::AppUninstaller(std::optional<std::vector<URL>> searchDirectories,
                               std::optional<std::vector<URL>> leftoverRoots)
    : searchDirectories_(searchDirectories ? *std::move(searchDirectories) : defaultAppDirectories()),
      leftoverRoots_(leftoverRoots ? *std::move(leftoverRoots) : defaultLeftoverRoots()) {}

std::vector<URL> AppUninstaller::defaultLeftoverRoots() {
    const URL library = FileSystemUtils::homeLibrary();
    std::vector<URL> roots;
    roots.reserve(scannerDefaults::Uninstaller::leftoverRoots.size());
    for (std::string_view name : scannerDefaults::Uninstaller::leftoverRoots)
        roots.push_back(library.appendingPathComponent(name, true));
    return roots;
}

std::vector<std::vector<URL>> AppUninstaller::assignLeftovers(const std::vector<URL>& roots,
                                                              const std::vector<AppMatching::AppIdentity>& apps,
                                                              AccessDenials* denials,
                                                              const CancellationCallback& isCancelled) {
    std::vector<URL> candidates;
    for (const URL& root : roots) {
        std::vector<URL> children = FileSystemUtils::children(root, false, denials, isCancelled);
        std::ranges::move(children, std::back_inserter(candidates));
    }
    std::vector<std::string> names;
    names.reserve(candidates.size());
    for (const URL& candidate : candidates)
        names.emplace_back(candidate.lastPathComponent());

    const std::vector<std::optional<std::size_t>> owners = AppMatching::assignOwners(names, apps, isCancelled);
    std::vector<std::vector<URL>> leftovers(apps.size());
    for (std::size_t i = 0; i < candidates.size(); ++i) {
        if (owners[i]) leftovers[*owners[i]].push_back(std::move(candidates[i]));
    }
    return leftovers;
}

std::vector<CleanableItem> AppUninstaller::scan(const ProgressCallback& progress,
                                                const CancellationCallback& isCancelled) const {
    ScanRun run(progress, isCancelled);
    std::vector<RemovableApp> apps = removableAppsIn(searchDirectories_, run);
    std::vector<std::vector<URL>> leftovers =
        assignLeftovers(leftoverRoots_, identitiesOf(apps), &run.denials(), run.isCancelled());
    run.throwIfCancelled();
    for (std::size_t i = 0; i < apps.size(); ++i) {
        run.throwIfCancelled();
        reportApp(run, S::scanScanningApps(), apps[i].url, i, apps.size());
        const MeasuredApp measured = measure(apps[i].url, leftovers[i], run);
        run.add({.id = UUID::random(),
                 .url = std::move(apps[i].url),
                 .size = measured.bytes(),
                 .category = ScanCategory::application,
                 .detail = detailOf(measured),
                 .relatedURLs = std::move(leftovers[i])});
    }
    // Nothing is preselected, so nothing counts as space to win.
    std::vector<CleanableItem> items = run.finish(0);
    std::ranges::stable_sort(items, [](const CleanableItem& a, const CleanableItem& b) {
        return std::is_lt(compareNames(a.name(), b.name()));
    });
    return items;
}

}  // namespace tavrin
