#include "TavrinCore/Scanning/InstalledApps.h"

#include "TavrinCore/Platform/Bundle.h"
#include "TavrinCore/Scanning/FileSystemUtils.h"
#include "TavrinCore/Scanning/ScanRun.h"
#include "TavrinCore/Scanning/ScannerDefaults.h"
#include "TavrinCore/Scanning/SystemAppGuard.h"

#include <algorithm>
#include <iterator>
#include <optional>
#include <string>
#include <utility>

namespace tavrin {

std::vector<URL> defaultAppDirectories() {
    std::vector<URL> directories{
        URL::fromPath(scannerDefaults::systemApplications, true),
        FileSystemUtils::home().appendingPathComponent(scannerDefaults::userApplications, true),
    };
    std::erase_if(directories, [](const URL& directory) { return !FileSystemUtils::exists(directory); });
    return directories;
}

bool isApp(const URL& url) {
    return url.pathExtension() == appSuffix.substr(1);
}

std::string_view appName(const URL& app) {
    std::string_view name = app.lastPathComponent();
    name.remove_suffix(appSuffix.size());
    return name;
}

std::vector<URL> appsIn(const std::vector<URL>& directories, ScanRun& run) {
    std::vector<URL> apps;
    for (const URL& directory : directories) {
        run.throwIfCancelled();
        for (URL& child : run.children(directory)) {
            if (isApp(child)) apps.push_back(std::move(child));
        }
    }
    return apps;
}

std::vector<RemovableApp> removableAppsIn(const std::vector<URL>& directories, ScanRun& run) {
    std::vector<RemovableApp> removable;
    for (URL& app : appsIn(directories, run)) {
        run.throwIfCancelled();
        std::optional<std::string> bundleID = bundleIdentifier(app);
        if (SystemAppGuard::isProtectedApp(app, bundleID)) continue;
        std::string name(appName(app));
        removable.push_back({std::move(app), {std::move(name), std::move(bundleID)}});
    }
    return removable;
}

std::vector<AppMatching::AppIdentity> identitiesOf(const std::vector<RemovableApp>& apps) {
    std::vector<AppMatching::AppIdentity> identities;
    identities.reserve(apps.size());
    std::ranges::transform(apps, std::back_inserter(identities), &RemovableApp::identity);
    return identities;
}

std::int64_t MeasuredApp::bytes() const {
    return FileSystemUtils::sumOfSizes(appBytes, leftoverBytes);
}

MeasuredApp measure(const URL& app, const std::vector<URL>& leftovers, ScanRun& run) {
    const auto sizeOf = [&run](const URL& url) {
        return FileSystemUtils::size(url, &run.denials(), run.isCancelled());
    };
    MeasuredApp measured{.appBytes = sizeOf(app), .leftovers = static_cast<std::int64_t>(leftovers.size())};
    for (const URL& leftover : leftovers)
        measured.leftoverBytes = FileSystemUtils::sumOfSizes(measured.leftoverBytes, sizeOf(leftover));
    return measured;
}

void reportApp(ScanRun& run, const std::string& phase, const URL& app, std::size_t index, std::size_t count) {
    run.report({.phase = phase,
                .itemsFound = run.count(),
                .currentPath = std::string(app.lastPathComponent()),
                .fractionCompleted = static_cast<double>(index) / static_cast<double>(count)});
}

}  // namespace tavrin
