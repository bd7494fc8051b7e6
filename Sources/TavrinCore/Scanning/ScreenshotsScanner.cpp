#include "TavrinCore/Scanning/ScreenshotsScanner.h"

#include "TavrinCore/Platform/FileStatus.h"
#include "TavrinCore/Platform/ScreenCapture.h"
#include "TavrinCore/Scanning/DateText.h"
#include "TavrinCore/Scanning/FileSystemUtils.h"
#include "TavrinCore/Scanning/ScanRun.h"
#include "TavrinCore/Scanning/ScannerDefaults.h"
#include "TavrinCore/Scanning/TextCase.h"
#include "TavrinCore/Strings.h"

#include <algorithm>
#include <unordered_set>

namespace tavrin {
namespace {

/// "~" and "~/…". Nil for what would be looked for below whatever folder the program was started in.
std::optional<URL> expandingTilde(std::string_view path, const URL& home) {
    // No path holds a zero byte, whoever wrote the setting.
    if (path.find('\0') != std::string_view::npos) return std::nullopt;
    if (path == "~" || path.starts_with("~/")) return home.appendingPathComponent(path.substr(1), true);
    return path.starts_with('/') ? std::optional(URL::fromPath(path, true)) : std::nullopt;
}

std::optional<std::string> modificationText(const URL& url) {
    const Result<FileStatus> status = fileStatus(url);
    if (!status || !status->modified) return std::nullopt;
    return dateAndTimeText(*status->modified);
}

}  // namespace

ScreenshotsScanner::ScreenshotsScanner(std::optional<std::vector<URL>> locations)
    : injectedLocations_(std::move(locations)) {}

std::vector<URL> ScreenshotsScanner::locations(const URL& home, const std::optional<std::string>& setting) {
    std::vector<URL> locations{home.appendingPathComponent("Desktop", true)};
    const std::optional<URL> captures = setting ? expandingTilde(*setting, home) : std::nullopt;
    if (captures) locations.push_back(*captures);
    return locations;
}

bool ScreenshotsScanner::isScreenshotName(std::string_view name) {
    const URL url = URL().appendingPathComponent(name);
    const std::string_view extension = url.pathExtension();
    if (std::ranges::find(scannerDefaults::Screenshots::extensions, lowercased(extension)) ==
        scannerDefaults::Screenshots::extensions.end())
        return false;
    // Some disks store an accent apart from its letter.
    const std::string stem = comparisonForm(name.substr(0, name.size() - extension.size() - 1));
    return std::ranges::any_of(scannerDefaults::Screenshots::prefixes,
                               [&](std::string_view prefix) { return stem.starts_with(prefix); });
}

/// One scan under way.
class ScreenshotsScanner::Run {
  public:
    Run(const ProgressCallback& progress, const CancellationCallback& isCancelled) : run_(progress, isCancelled) {}

    std::vector<CleanableItem> over(const std::vector<URL>& locations) {
        for (const URL& location : locations) {
            run_.throwIfCancelled();
            if (!FileSystemUtils::exists(location)) continue;
            run_.report({.phase = S::scanCheckingScreenshots(), .currentPath = location.path()});
            // A folder that is reached over a link is the same folder.
            const URL realLocation = location.resolvingSymlinksInPath();
            for (const URL& child : run_.children(location))
                consider(child, realLocation);
        }
        return run_.finishLargestFirst(run_.bytes());
    }

  private:
    /// A folder of such a name is one too: nothing asks what it is.
    void consider(const URL& child, const URL& realLocation) {
        run_.throwIfCancelled();
        if (!isScreenshotName(child.lastPathComponent())) return;
        if (!seen_.insert(realLocation.appendingPathComponent(child.lastPathComponent()).path()).second) return;
        run_.add({.id = UUID::random(),
                  .url = child,
                  .size = run_.sizeWithoutDenials(child),
                  .category = ScanCategory::screenshot,
                  .detail = modificationText(child)});
    }

    ScanRun run_;
    std::unordered_set<std::string> seen_;
};

std::vector<CleanableItem> ScreenshotsScanner::scan(const ProgressCallback& progress,
                                                    const CancellationCallback& isCancelled) const {
    return Run(progress, isCancelled)
        .over(injectedLocations_ ? *injectedLocations_ : locations(FileSystemUtils::home(), screenCaptureLocation()));
}

}  // namespace tavrin
