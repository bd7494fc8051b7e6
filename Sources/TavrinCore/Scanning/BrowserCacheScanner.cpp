#include "TavrinCore/Scanning/BrowserCacheScanner.h"

#include "TavrinCore/Scanning/DetailText.h"
#include "TavrinCore/Scanning/FileSystemUtils.h"
#include "TavrinCore/Scanning/ScanRun.h"
#include "TavrinCore/Strings.h"

#include <array>
#include <string_view>

namespace tavrin {
namespace {

struct BrowserFolder {
    std::string_view browser;
    std::string_view path;
};

/// Below "Caches".
constexpr std::array<BrowserFolder, 8> kCacheDirs{{
    {"Safari", "com.apple.Safari"},
    {"Chrome", "Google/Chrome"},
    {"Edge", "Microsoft Edge"},
    {"Brave", "BraveSoftware/Brave-Browser"},
    {"Firefox", "Firefox"},
    {"Opera", "com.operasoftware.Opera"},
    {"Vivaldi", "Vivaldi"},
    {"Arc", "company.thebrowser.Browser"},
}};

/// Inside a sandbox, where the system may refuse.
constexpr std::array<std::string_view, 2> kSafariContainerCaches{
    "Containers/com.apple.Safari/Data/Library/Caches/com.apple.Safari",
    "Containers/com.apple.Safari/Data/Library/Caches/WebKit",
};

/// Below "Application Support": each folder in one of them is taken for a profile.
constexpr std::array<BrowserFolder, 5> kChromiumSupport{{
    {"Chrome", "Google/Chrome"},
    {"Edge", "Microsoft Edge"},
    {"Brave", "BraveSoftware/Brave-Browser"},
    {"Vivaldi", "Vivaldi"},
    {"Arc", "company.thebrowser.Browser"},
}};

/// Below a profile.
constexpr std::array<std::string_view, 8> kChromiumCacheSubdirs{
    "Cache",
    "Code Cache",
    "GPUCache",
    "DawnCache",
    "DawnGraphiteCache",
    "GrShaderCache",
    "ShaderCache",
    "Service Worker/CacheStorage",
};

}  // namespace

BrowserCacheScanner::BrowserCacheScanner(std::int64_t minSize, std::optional<URL> library)
    : minSize_(minSize), library_(library ? *std::move(library) : FileSystemUtils::homeLibrary()) {}

void BrowserCacheScanner::considerFolder(ScanRun& run, const URL& folder, const std::string& label) const {
    run.throwIfCancelled();
    if (!FileSystemUtils::isFolder(folder)) return;
    const std::int64_t size = run.size(folder);
    if (size < minSize_) return;
    run.report({.phase = S::scanCheckingLabel(label),
                .itemsFound = run.count(),
                .currentPath = std::string(folder.lastPathComponent())});
    run.add({.id = UUID::random(),
             .url = folder,
             .size = size,
             .category = ScanCategory::browserCache,
             .isSelected = true,
             .detail = S::detailBrowserCache(label)});
}

void BrowserCacheScanner::findInProfiles(ScanRun& run) const {
    const URL support = library_.appendingPathComponent("Application Support", true);
    for (const auto& [browser, path] : kChromiumSupport) {
        run.throwIfCancelled();
        const URL root = support.appendingPathComponent(path, true);
        if (!FileSystemUtils::exists(root)) continue;
        for (const URL& profile : run.children(root)) {
            if (!profile.hasDirectoryPath()) continue;
            const std::string label = joinedDetail(browser, detailName(profile.lastPathComponent()));
            for (const std::string_view cache : kChromiumCacheSubdirs)
                considerFolder(run, profile.appendingPathComponent(cache, true), label);
        }
    }
}

std::vector<CleanableItem> BrowserCacheScanner::scan(const ProgressCallback& progress,
                                                     const CancellationCallback& isCancelled) const {
    ScanRun run(progress, isCancelled);
    const URL caches = library_.appendingPathComponent("Caches", true);
    for (const auto& [browser, path] : kCacheDirs)
        considerFolder(run, caches.appendingPathComponent(path, true), std::string(browser));
    for (const std::string_view path : kSafariContainerCaches)
        considerFolder(run, library_.appendingPathComponent(path, true), std::string(kCacheDirs[0].browser));
    findInProfiles(run);
    return run.finishLargestFirst(run.bytes());
}

}  // namespace tavrin
