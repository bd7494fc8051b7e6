#include "TavrinCore/Scanning/SystemJunkScanner.h"

#include "TavrinCore/Scanning/ByteFormatter.h"
#include "TavrinCore/Scanning/FileSystemUtils.h"
#include "TavrinCore/Strings.h"

#include <algorithm>
#include <string>
#include <unordered_set>

namespace tavrin {
namespace {

void throwIfCancelled(const CancellationCallback& isCancelled) {
    if (isCancelled()) throw ScanError::cancelled();
}

}  // namespace

SystemJunkScanner::SystemJunkScanner(bool includePrivileged, std::optional<URL> library)
    : includePrivileged_(includePrivileged), library_(library ? *std::move(library) : FileSystemUtils::homeLibrary()) {}

/// The order matters: a path belongs to the first source that meets it. Xcode's cache is a child of Caches first and a
/// source of its own only where Caches couldn't be listed; DiagnosticReports is a finding, and so are its children.
std::vector<SystemJunkScanner::Source> SystemJunkScanner::makeSources(AccessDenials& denials) const {
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
    for (const URL& container : FileSystemUtils::children(below("Containers"), false, &denials)) {
        URL caches = container.appendingPathComponent("Data/Library/Caches", true);
        if (FileSystemUtils::exists(caches)) sources.push_back({std::move(caches), ScanCategory::userCache, true});
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
    Run(const ProgressCallback& progress, const CancellationCallback& isCancelled)
        : progress_(progress), isCancelled_(isCancelled) {}

    std::vector<CleanableItem> over(const SystemJunkScanner& scanner) {
        const std::vector<Source> sources = scanner.makeSources(denials_);
        for (std::size_t i = 0; i < sources.size(); ++i) {
            throwIfCancelled(isCancelled_);
            if (!FileSystemUtils::exists(sources[i].url)) continue;
            reportSource(sources[i], static_cast<double>(i) / static_cast<double>(sources.size()));
            for (const URL& candidate : candidates(sources[i]))
                consider(candidate, sources[i].category);
        }
        denials_.throwIfNothingFound(count());
        reportEnd();
        std::ranges::stable_sort(items_, std::ranges::greater{}, &CleanableItem::size);
        return std::move(items_);
    }

  private:
    [[nodiscard]] std::int64_t count() const { return static_cast<std::int64_t>(items_.size()); }

    void reportSource(const Source& source, double fraction) const {
        progress_({.phase = S::scanCheckingLabel(displayName(source.category)),
                   .itemsFound = count(),
                   .bytesFound = bytesFound_,
                   .currentPath = source.url.path(),
                   .fractionCompleted = fraction});
    }

    void reportEnd() const {
        progress_({.phase = denials_.finalPhase(),
                   .itemsFound = count(),
                   .bytesFound = bytesFound_,
                   .fractionCompleted = 1.0,
                   .blockedFolders = static_cast<std::int64_t>(denials_.all().size())});
    }

    [[nodiscard]] std::vector<URL> candidates(const Source& source) {
        if (!source.perChild) return {source.url};
        return FileSystemUtils::children(source.url, false, &denials_);
    }

    void consider(const URL& candidate, ScanCategory category) {
        throwIfCancelled(isCancelled_);
        if (!seen_.insert(candidate.standardizedFileURL().path()).second) return;
        const std::int64_t size = FileSystemUtils::size(candidate, &denials_, isCancelled_);
        throwIfCancelled(isCancelled_);  // a measure that was stopped is a partial sum
        if (size < 1) return;
        bytesFound_ += size;
        items_.push_back({.id = UUID::random(),
                          .url = candidate,
                          .size = size,
                          .category = category,
                          .isSelected = true,
                          .detail = ByteFormatter::string(size)});
    }

    const ProgressCallback& progress_;
    const CancellationCallback& isCancelled_;
    AccessDenials denials_;
    std::vector<CleanableItem> items_;
    std::int64_t bytesFound_ = 0;
    std::unordered_set<std::string> seen_;
};

std::vector<CleanableItem> SystemJunkScanner::scan(const ProgressCallback& progress,
                                                   const CancellationCallback& isCancelled) const {
    return Run(progress, isCancelled).over(*this);
}

}  // namespace tavrin
