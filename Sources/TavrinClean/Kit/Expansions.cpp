#include "TavrinClean/Kit/Expansions.h"

#include "TavrinCore/Platform/FileStatus.h"
#include "TavrinCore/Scanning/FileSystemUtils.h"

#include <algorithm>
#include <utility>

namespace tavrin {
namespace {

std::vector<URL> urlsIn(const CleanableItem& item) {
    if (item.relatedURLs.empty()) return FileSystemUtils::children(item.url, false);
    std::vector<URL> urls{item.url};
    urls.insert(urls.end(), item.relatedURLs.begin(), item.relatedURLs.end());
    return urls;
}

}  // namespace

std::vector<DirChild> childrenOf(const CleanableItem& item, const CancellationCallback& isCancelled) {
    std::vector<DirChild> children;
    for (const URL& url : urlsIn(item)) {
        if (isCancelled()) return {};
        const Result<FileStatus> status = fileStatus(url);
        children.push_back({.url = url,
                            .size = FileSystemUtils::size(url, nullptr, isCancelled),
                            .isDirectory = status && status->type == FileType::directory});
    }
    std::ranges::stable_sort(children, std::ranges::greater(), &DirChild::size);
    return children;
}

bool Expansions::isOpen(std::uint32_t item) const {
    const auto found = entries_.find(item);
    return found != entries_.end() && found->second.isOpen;
}

const std::optional<std::vector<DirChild>>* Expansions::find(std::uint32_t item) const {
    const auto found = entries_.find(item);
    return found != entries_.end() ? &found->second.children : nullptr;
}

int Expansions::rows(std::uint32_t item) const {
    if (!isOpen(item)) return 0;
    const auto& children = *find(item);
    if (!children || children->empty()) return 1;
    const std::size_t more = children->size() > shownChildren ? 1 : 0;
    return static_cast<int>(std::min(children->size(), shownChildren) + more);
}

std::vector<std::uint32_t> Expansions::open() const {
    std::vector<std::uint32_t> items;
    for (const auto& [item, entry] : entries_) {
        if (entry.isOpen) items.push_back(item);
    }
    return items;
}

bool Expansions::toggle(std::uint32_t item) {
    const auto [place, isNew] = entries_.try_emplace(item);
    place->second.isOpen = !place->second.isOpen;
    return isNew;
}

void Expansions::setChildren(std::uint32_t item, std::vector<DirChild> children) {
    const auto found = entries_.find(item);
    if (found != entries_.end()) found->second.children = std::move(children);
}

}  // namespace tavrin
