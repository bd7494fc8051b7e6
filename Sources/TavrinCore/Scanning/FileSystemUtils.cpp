#include "TavrinCore/Scanning/FileSystemUtils.h"

#include "TavrinCore/Platform/DirectoryWalk.h"
#include "TavrinCore/Platform/Folders.h"
#include "TavrinCore/Platform/Packages.h"
#include "TavrinCore/Platform/WaitingMounts.h"

#include <algorithm>
#include <limits>

namespace tavrin {
namespace {

bool isBelow(const std::string& path, const std::string& folder) {
    return path.starts_with(folder) && (folder.ends_with('/') || path.substr(folder.size()).starts_with('/'));
}

bool isLink(const URL& url) {
    const Result<FileStatus> status = fileStatus(url);
    return status && status->type == FileType::symbolicLink;
}

bool meets(const std::string& place, const std::string& other) {
    return place == other || isBelow(place, other) || isBelow(other, place);
}

/// A link to the home, to what the home lies in, or into ~/Library would bring what no content folder holds.
bool leadsOutOfContent(const std::string& place) {
    const std::string home = FileSystemUtils::home().resolvingSymlinksInPath().path();
    const std::string library = FileSystemUtils::homeLibrary().resolvingSymlinksInPath().path();
    return place == home || isBelow(home, place) || place == library || isBelow(place, library);
}

void recordIfRefused(AccessDenials* denials, const URL& folder, const SystemError& error) {
    if (denials != nullptr) denials->recordIfRefused(folder, error);
}

/// The deep walk behind `size` and `enumerateRegularFiles`. Hands on the entry, so that the path of a file is made for
/// those who want it.
template <class OnFile>
class RegularFiles final : public WalkVisitor {
  public:
    RegularFiles(EnumerationOptions options, AccessDenials* denials, const CancellationCallback& isCancelled,
                 OnFile onFile)
        : options_(options), denials_(denials), isCancelled_(isCancelled), onFile_(std::move(onFile)) {}

    enum class Wants : std::uint8_t {
        sizes,
        all,
    };

    void walk(const URL& root, LastLink rootLink, Wants wants) {
        const bool all = wants == Wants::all;
        walkDirectory(root, {.rootLink = rootLink, .wantsDates = all, .wantsIdentifier = all}, *this);
        // Some systems show a protected folder as an empty one, without an error. Listing it directly tells.
        if (!wasStopped_ && !metAnything_ && denials_ != nullptr && FileSystemUtils::isPermissionDenied(root))
            denials_->record(root);
    }

    WalkStep visit(WalkEntry& entry) override {
        if (isCancelled_()) return stop();
        if (!options_.includeHidden && entry.isHidden()) return WalkStep::skip;
        metAnything_ = true;
        if (entry.type() == FileType::directory) {
            return options_.descendIntoPackages || !isPackageName(entry.name()) ? WalkStep::goOn : WalkStep::skip;
        }
        if (entry.type() != FileType::regular) return WalkStep::goOn;
        const FileStatus* status = entry.status();
        if (status != nullptr && status->type == FileType::regular) onFile_(entry, *status);
        return WalkStep::goOn;
    }

    void failed(const URL& folder, const SystemError& error) override { recordIfRefused(denials_, folder, error); }

  private:
    WalkStep stop() {
        wasStopped_ = true;
        return WalkStep::stop;
    }

    EnumerationOptions options_;
    AccessDenials* denials_;
    const CancellationCallback& isCancelled_;
    OnFile onFile_;
    bool metAnything_ = false;
    bool wasStopped_ = false;
};

/// The direct children.
class Children final : public WalkVisitor {
  public:
    Children(const URL& folder, bool includeHidden, AccessDenials* denials, const CancellationCallback& isCancelled)
        : folder_(folder), includeHidden_(includeHidden), denials_(denials), isCancelled_(isCancelled) {}

    WalkStep visit(WalkEntry& entry) override {
        if (isCancelled_()) return WalkStep::stop;
        if (entry.isHidden() && !includeHidden_) return WalkStep::skip;
        if (entry.type() != FileType::directory || !isWaiting(entry.name())) found.push_back(entry.url());
        return WalkStep::skip;
    }
    void failed(const URL& folder, const SystemError& error) override {
        // A listing that breaks off is no listing.
        found.clear();
        recordIfRefused(denials_, folder, error);
    }

    std::vector<URL> found;

  private:
    bool isWaiting(std::string_view name) {
        if (!waitingMounts_) waitingMounts_ = waitingMountsIn(folder_);
        return std::ranges::find(*waitingMounts_, name) != waitingMounts_->end();
    }

    const URL& folder_;
    std::optional<std::vector<std::string>> waitingMounts_;
    bool includeHidden_;
    AccessDenials* denials_;
    const CancellationCallback& isCancelled_;
};

/// Looks whether there is anything to look at.
class Probe final : public WalkVisitor {
  public:
    WalkStep visit(WalkEntry& /*entry*/) override { return WalkStep::stop; }
    void failed(const URL& /*folder*/, const SystemError& error) override {
        refused = AccessDenials::isPermissionError(error);
    }

    bool refused = false;
};

}  // namespace

URL FileSystemUtils::home() {
    return homeFolder();
}

URL FileSystemUtils::homeLibrary(std::initializer_list<std::string_view> components) {
    return homeLibrary(std::span(components.begin(), components.size()));
}

URL FileSystemUtils::homeLibrary(std::span<const std::string_view> components) {
    URL url = home().appendingPathComponent("Library", true);
    for (std::string_view component : components)
        url = url.appendingPathComponent(component);
    return url;
}

bool FileSystemUtils::exists(const URL& url) {
    return fileStatus(url, LastLink::follow).ok();
}

bool FileSystemUtils::isGone(const URL& url) {
    const Result<FileStatus> status = fileStatus(url, LastLink::follow);
    return !status && status.error().meansMissing();
}

std::vector<URL> FileSystemUtils::existingFolders(const URL& parent, std::span<const std::string_view> names) {
    std::vector<URL> folders;
    for (const std::string_view name : names) {
        if (URL folder = parent.appendingPathComponent(name, true); exists(folder))
            folders.push_back(std::move(folder));
    }
    return folders;
}

std::vector<URL> FileSystemUtils::distinctRoots(const std::vector<URL>& roots) {
    std::vector<std::string> places;
    std::vector<std::size_t> kept;
    std::vector<std::size_t> links;
    for (const URL& root : roots) {
        (isLink(root) ? links : kept).push_back(places.size());
        places.push_back(root.resolvingSymlinksInPath().path());
    }
    // Of two that lead one into the other, the outer one has all.
    std::ranges::stable_sort(links, {}, [&places](std::size_t link) { return places[link].size(); });
    for (const std::size_t link : links) {
        const auto meetsLink = [&](std::size_t root) { return meets(places[link], places[root]); };
        if (!leadsOutOfContent(places[link]) && std::ranges::none_of(kept, meetsLink)) kept.push_back(link);
    }
    std::ranges::sort(kept);
    std::vector<URL> distinct;
    distinct.reserve(kept.size());
    for (const std::size_t root : kept)
        distinct.push_back(roots[root]);
    return distinct;
}

bool FileSystemUtils::isFolder(const URL& url) {
    const Result<FileStatus> status = fileStatus(url);
    return status && status->type == FileType::directory;
}

std::int64_t FileSystemUtils::size(const URL& url, AccessDenials* denials, const CancellationCallback& isCancelled) {
    if (isWaitingMount(url)) return 0;
    const Result<FileStatus> status = fileStatus(url);
    if (!status) return 0;
    if (status->type != FileType::directory) return status->measure();
    std::int64_t total = 0;
    RegularFiles files({.descendIntoPackages = true, .includeHidden = true}, denials, isCancelled,
                       [&](const WalkEntry&, const FileStatus& file) { total = sumOfSizes(total, file.measure()); });
    files.walk(url, LastLink::keep, decltype(files)::Wants::sizes);
    return total;
}

std::int64_t FileSystemUtils::sumOfSizes(std::int64_t a, std::int64_t b) {
    return a > std::numeric_limits<std::int64_t>::max() - b ? std::numeric_limits<std::int64_t>::max() : a + b;
}

std::vector<URL> FileSystemUtils::children(const URL& folder, bool includeHidden, AccessDenials* denials,
                                           const CancellationCallback& isCancelled) {
    Children children(folder, includeHidden, denials, isCancelled);
    walkDirectory(folder, {.rootLink = LastLink::follow}, children);
    return std::move(children.found);
}

void FileSystemUtils::enumerateRegularFiles(const URL& root, EnumerationOptions options, AccessDenials* denials,
                                            const CancellationCallback& isCancelled,
                                            const std::function<void(const FileInfo&)>& visit) {
    enumerateRegularFileEntries(
        root, options, denials, isCancelled, [&](const WalkEntry& entry, const FileStatus& file) {
            visit({.url = entry.url(), .size = file.measure(), .modified = file.modified, .accessed = file.accessed});
        });
}

void FileSystemUtils::enumerateRegularFileEntries(
    const URL& root, EnumerationOptions options, AccessDenials* denials, const CancellationCallback& isCancelled,
    const std::function<void(const WalkEntry&, const FileStatus&)>& visit) {
    RegularFiles files(options, denials, isCancelled, visit);
    files.walk(root, LastLink::follow, decltype(files)::Wants::all);
}

bool FileSystemUtils::isPermissionDenied(const URL& folder) {
    Probe probe;
    walkDirectory(folder, {.rootLink = LastLink::follow}, probe);
    return probe.refused;
}

}  // namespace tavrin
