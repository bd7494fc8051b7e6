#include "TavrinCore/Scanning/DeveloperJunkScanner.h"

#include "TavrinCore/Platform/DirectoryWalk.h"
#include "TavrinCore/Scanning/ByteFormatter.h"
#include "TavrinCore/Scanning/DetailText.h"
#include "TavrinCore/Scanning/FileSystemUtils.h"
#include "TavrinCore/Scanning/ScanRun.h"
#include "TavrinCore/Scanning/ScannerDefaults.h"
#include "TavrinCore/Strings.h"

#include <algorithm>
#include <string>
#include <string_view>

namespace tavrin {
namespace {

struct CacheSource {
    std::string_view label;
    /// Below the home.
    std::string_view path;
};

std::vector<CacheSource> cacheSources() {
    return {
        {"Homebrew", "Library/Caches/Homebrew"},
        {"npm", ".npm/_cacache"},
        {"yarn", "Library/Caches/Yarn"},
        {"pip", "Library/Caches/pip"},
        {"pnpm", "Library/pnpm/store"},
        {"Gradle", ".gradle/caches"},
        {"Maven", ".m2/repository"},
        {"CocoaPods", "Library/Caches/CocoaPods"},
        {"Carthage", "Library/Caches/org.carthage.CarthageKit"},
        {S::detailSimulatorCaches(), "Library/Developer/CoreSimulator/Caches"},
        {"SwiftPM", "Library/Caches/org.swift.swiftpm"},
        {"Go modules", "go/pkg/mod/cache"},
    };
}

/// A folder is build output by its name alone; no manifest and no repository is asked for. Hidden folders are passed
/// over, so of the names only those without a dot are ever met.
bool isBuildDirName(std::string_view name) {
    return std::ranges::find(scannerDefaults::DeveloperJunk::buildDirNames, name) !=
           scannerDefaults::DeveloperJunk::buildDirNames.end();
}

/// Finds build folders below one root, and never looks into one.
class BuildDirs final : public WalkVisitor {
  public:
    BuildDirs(ScanRun& run, int maxDepth, std::vector<URL>& found) : run_(run), maxDepth_(maxDepth), found_(found) {}

    WalkStep visit(WalkEntry& entry) override {
        if (run_.isCancelled()()) return WalkStep::stop;
        if (entry.isHidden() || entry.type() != FileType::directory) return WalkStep::skip;
        if (!isBuildDirName(entry.name()))
            return std::cmp_less_equal(entry.depth(), maxDepth_) ? WalkStep::goOn : WalkStep::skip;
        found_.push_back(entry.url());
        run_.report({.phase = S::scanLookingForProjects(), .currentPath = found_.back().path()});
        return WalkStep::skip;
    }

    void failed(const URL& folder, const SystemError& error) override { run_.denials().recordIfRefused(folder, error); }

  private:
    ScanRun& run_;
    int maxDepth_;
    std::vector<URL>& found_;
};

/// "app · node_modules".
std::string projectDetail(const URL& buildDir) {
    const URL project = buildDir.deletingLastPathComponent();
    return joinedDetail(detailName(project.lastPathComponent()), detailName(buildDir.lastPathComponent()));
}

}  // namespace

DeveloperJunkScanner::DeveloperJunkScanner(std::optional<URL> home, std::optional<std::vector<URL>> projectRoots,
                                           int maxDepth)
    : home_(home ? *std::move(home) : FileSystemUtils::home()),
      projectRoots_(projectRoots
                        ? *std::move(projectRoots)
                        : FileSystemUtils::existingFolders(home_, scannerDefaults::DeveloperJunk::projectRoots)),
      maxDepth_(maxDepth) {}

void DeveloperJunkScanner::findToolCaches(ScanRun& run) const {
    for (const auto& [label, path] : cacheSources()) {
        run.throwIfCancelled();
        const URL folder = home_.appendingPathComponent(path, true);
        if (!FileSystemUtils::exists(folder)) continue;
        run.report(
            {.phase = S::scanToolCaches(std::string(label)), .itemsFound = run.count(), .currentPath = folder.path()});
        const std::int64_t size = run.size(folder);
        if (size < 1) continue;
        run.add({.id = UUID::random(),
                 .url = folder,
                 .size = size,
                 .category = ScanCategory::developerCache,
                 .isSelected = true,
                 .detail = joinedDetail(label, ByteFormatter::string(size))});
    }
}

std::vector<URL> DeveloperJunkScanner::findBuildDirs(ScanRun& run) const {
    std::vector<URL> found;
    if (maxDepth_ < 0) return found;
    BuildDirs visitor(run, maxDepth_, found);
    for (const URL& root : projectRoots_) {
        walkDirectory(root, {.rootLink = LastLink::follow}, visitor);
        run.throwIfCancelled();
    }
    return found;
}

std::vector<CleanableItem> DeveloperJunkScanner::scan(const ProgressCallback& progress,
                                                      const CancellationCallback& isCancelled) const {
    ScanRun run(progress, isCancelled);
    findToolCaches(run);
    const std::int64_t selectedBytes = run.bytes();
    for (const URL& folder : findBuildDirs(run)) {
        run.throwIfCancelled();
        const std::int64_t size = run.size(folder);
        if (size < 1) continue;
        run.add({.id = UUID::random(),
                 .url = folder,
                 .size = size,
                 .category = ScanCategory::buildArtifacts,
                 .detail = projectDetail(folder)});
    }
    return run.finishLargestFirst(selectedBytes);
}

}  // namespace tavrin
