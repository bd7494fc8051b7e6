#include "TavrinCore/Scanning/SimilarImagesScanner.h"

#include "TavrinCore/Scanning/DetailText.h"
#include "TavrinCore/Scanning/FileSystemUtils.h"
#include "TavrinCore/Scanning/PerceptualHash.h"
#include "TavrinCore/Scanning/ScanRun.h"
#include "TavrinCore/Scanning/ScannerDefaults.h"
#include "TavrinCore/Strings.h"

#include <algorithm>
#include <string>
#include <utility>

namespace tavrin {
namespace {

constexpr std::int64_t kPicturesPerReport = 50;

struct Hashed {
    FileInfo file;
    std::uint64_t hash;
};

std::vector<URL> defaultRoots() {
    return FileSystemUtils::existingFolders(FileSystemUtils::home(), scannerDefaults::SimilarImages::roots);
}

}  // namespace

SimilarImagesScanner::SimilarImagesScanner(std::optional<std::vector<URL>> roots, int threshold,
                                           std::int64_t minimumSize, Hash hash)
    : roots_(roots ? *std::move(roots) : defaultRoots()),
      threshold_(threshold),
      minimumSize_(minimumSize),
      hash_(hash ? std::move(hash) : [](const URL& picture, const CancellationCallback& isCancelled) {
          return PerceptualHash::dHash(picture, isCancelled);
      }) {}

/// One scan under way.
class SimilarImagesScanner::Run {
  public:
    Run(const ProgressCallback& progress, const CancellationCallback& isCancelled) : run_(progress, isCancelled) {}

    std::vector<CleanableItem> over(const SimilarImagesScanner& scanner) {
        for (const URL& root : FileSystemUtils::distinctRoots(scanner.roots_)) {
            FileSystemUtils::enumerateRegularFiles(root, {}, &run_.denials(), run_.isCancelled(),
                                                   [&](const FileInfo& file) { consider(file, scanner); });
            run_.throwIfCancelled();
        }
        std::vector<std::vector<Hashed>> groups = group(scanner.threshold_);
        for (std::size_t number = 0; number < groups.size(); ++number) {
            if (groups[number].size() > 1) addGroup(std::move(groups[number]), number);
        }
        return run_.finish(0);
    }

  private:
    void consider(const FileInfo& file, const SimilarImagesScanner& scanner) {
        if (file.size < scanner.minimumSize_ || !PerceptualHash::isImage(file.url)) return;
        if (++seen_ % kPicturesPerReport == 0) {
            run_.report({.phase = S::scanAnalyzingImages(),
                         .itemsFound = static_cast<std::int64_t>(hashed_.size()),
                         .currentPath = file.url.path()});
        }
        const std::optional<std::uint64_t> hash = scanner.hash_(file.url, run_.isCancelled());
        if (hash) hashed_.push_back({.file = file, .hash = *hash});
    }

    [[nodiscard]] std::vector<std::vector<Hashed>> group(int threshold) {
        SimilarGroups similar(threshold);
        std::vector<std::vector<Hashed>> groups;
        for (Hashed& picture : hashed_) {
            run_.throwIfCancelled();
            const std::size_t number = similar.add(picture.hash);
            groups.resize(similar.count());
            groups[number].push_back(std::move(picture));
        }
        return groups;
    }

    /// The largest is the one to keep; of equally large ones, the first that was met.
    void addGroup(std::vector<Hashed> members, std::size_t number) {
        std::ranges::stable_sort(members, std::ranges::greater{},
                                 [](const Hashed& member) { return member.file.size; });
        const std::string detail = S::detailSimilarTo(detailName(members.front().file.url.lastPathComponent()));
        for (const Hashed& member : members) {
            const bool isKeeper = &member == &members.front();
            run_.add({.id = UUID::random(),
                      .url = member.file.url,
                      .size = member.file.size,
                      .category = ScanCategory::similarImage,
                      .isSelected = false,
                      .detail = isKeeper ? S::detailLargestOfGroup() : detail,
                      .groupID = "img-" + std::to_string(number),
                      .isGroupKeeper = isKeeper});
        }
    }

    ScanRun run_;
    std::int64_t seen_ = 0;
    std::vector<Hashed> hashed_;
};

std::vector<CleanableItem> SimilarImagesScanner::scan(const ProgressCallback& progress,
                                                      const CancellationCallback& isCancelled) const {
    return Run(progress, isCancelled).over(*this);
}

}  // namespace tavrin
