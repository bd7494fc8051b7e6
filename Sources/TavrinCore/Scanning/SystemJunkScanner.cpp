#include "TavrinCore/Scanning/SystemJunkScanner.h"

#include "TavrinCore/Scanning/ByteFormatter.h"
#include "TavrinCore/Scanning/FileSystemUtils.h"
#include "TavrinCore/Scanning/ScanRun.h"
#include "TavrinCore/Strings.h"

#include <optional>
#include <string>
#include <string_view>
#include <unordered_set>
#include <utility>

namespace tavrin {
namespace {

/// Nil where there are none inside the container. Its app may make links in it, and one to the user's documents would
/// offer those as caches. The container may be a link: that is the user's doing.
std::optional<URL> cachesInside(const URL& container) {
    constexpr std::string_view path = "Data/Library/Caches";
    URL caches = container.appendingPathComponent(path, true);
    if (!FileSystemUtils::exists(caches)) return std::nullopt;
    const URL inside = container.resolvingSymlinksInPath().appendingPathComponent(path, true);
    return caches.resolvingSymlinksInPath().path() == inside.path() ? std::optional(std::move(caches)) : std::nullopt;
}

}  // namespace

SystemJunkScanner::SystemJunkScanner(bool includePrivileged, std::optional<URL> library)
    : includePrivileged_(includePrivileged), library_(library ? *std::move(library) : FileSystemUtils::homeLibrary()) {}

/// The order matters: a path belongs to the first source that meets it. Xcode's cache is a child of Caches first and a
/// source of its own only where Caches couldn't be listed; DiagnosticReports is a finding, and so are its children.
std::vector<SystemJunkScanner::Source> SystemJunkScanner::makeSources(ScanRun& run) const {
    const auto below = [this](std::string_view path) { return library_.appendingPathComponent(path, true); };
    std::vector<Source> sources{
        {below("Caches"), ScanCategory::userCache, true},
        {below("Logs"), ScanCategory::logs, true},
        {below("Logs/DiagnosticReports"), ScanCategory::logs, true},
        {below("Application Support/CrashReporter"), ScanCategory::logs, false},
        {below("Saved Application State"), ScanCategory::tempFiles, true},
        {below("Developer/Xcode/DerivedData"), ScanCategory::derivedData, true},
        {below("Developer/Xcode/iOS DeviceSupport"), ScanCategory::derivedData, true},
        {below("Caches/com.apple.dt.Xcode"), ScanCategory::derivedData, false},
    };
    for (const URL& container : run.children(below("Containers"))) {
        if (std::optional<URL> caches = cachesInside(container))
            sources.push_back({*std::move(caches), ScanCategory::userCache, true});
    }
    if (includePrivileged_) {
        sources.push_back({URL::fromPath("/Library/Caches/"), ScanCategory::systemCache, true});
        sources.push_back({URL::fromPath("/Library/Logs/"), ScanCategory::logs, true});
    }
    return sources;
}

/// One scan under way.
class SystemJunkScanner::Run {
  public:
    Run(const ProgressCallback& progress, const CancellationCallback& isCancelled) : run_(progress, isCancelled) {}

    std::vector<CleanableItem> over(const SystemJunkScanner& scanner) {
        const std::vector<Source> sources = scanner.makeSources(run_);
        for (std::size_t i = 0; i < sources.size(); ++i) {
            run_.throwIfCancelled();
            if (!FileSystemUtils::exists(sources[i].url)) continue;
            reportSource(sources[i], static_cast<double>(i) / static_cast<double>(sources.size()));
            for (const URL& candidate : candidates(sources[i]))
                consider(candidate, sources[i].category);
        }
        return run_.finishLargestFirst(run_.bytes());
    }

  private:
    void reportSource(const Source& source, double fraction) {
        run_.report({.phase = S::scanCheckingLabel(displayName(source.category)),
                     .itemsFound = run_.count(),
                     .bytesFound = run_.bytes(),
                     .currentPath = source.url.path(),
                     .fractionCompleted = fraction});
    }

    [[nodiscard]] std::vector<URL> candidates(const Source& source) {
        if (!source.perChild) return {source.url};
        return run_.children(source.url);
    }

    void consider(const URL& candidate, ScanCategory category) {
        run_.throwIfCancelled();
        if (!seen_.insert(candidate.standardizedFileURL().path()).second) return;
        const std::int64_t size = run_.size(candidate);
        if (size < 1) return;
        run_.add({.id = UUID::random(),
                  .url = candidate,
                  .size = size,
                  .category = category,
                  .isSelected = true,
                  .detail = ByteFormatter::string(size)});
    }

    ScanRun run_;
    std::unordered_set<std::string> seen_;
};

std::vector<CleanableItem> SystemJunkScanner::scan(const ProgressCallback& progress,
                                                   const CancellationCallback& isCancelled) const {
    return Run(progress, isCancelled).over(*this);
}

}  // namespace tavrin
