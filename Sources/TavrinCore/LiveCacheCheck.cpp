#include "TavrinCore/LiveCacheCheck.h"

#include "TavrinCore/Platform/Bundle.h"
#include "TavrinCore/Scanning/TextCase.h"

#include <algorithm>
#include <optional>

namespace tavrin {
namespace {

bool nameBelongs(std::string_view name, const std::set<std::string>& runningBundleIDs) {
    const std::string lower = lowercased(name);
    return std::ranges::any_of(runningBundleIDs,
                               [&](const std::string& id) { return !id.empty() && lower.starts_with(id); });
}

bool applicationBelongs(const URL& url, const std::set<std::string>& runningBundleIDs) {
    const std::optional<std::string> id = bundleIdentifier(url);
    return id && runningBundleIDs.contains(lowercased(*id));
}

}  // namespace

bool LiveCacheCheck::belongsToRunningApp(const CleanableItem& item, const std::set<std::string>& runningBundleIDs) {
    switch (item.category) {
        case ScanCategory::systemCache:
        case ScanCategory::userCache:
        case ScanCategory::logs:
        case ScanCategory::appLeftovers:
        case ScanCategory::derivedData:
            return nameBelongs(item.name(), runningBundleIDs);
        case ScanCategory::application:
            return applicationBelongs(item.url, runningBundleIDs);
        default:
            return false;
    }
}

}  // namespace tavrin
