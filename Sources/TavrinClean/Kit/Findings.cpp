#include "TavrinClean/Kit/Findings.h"

#include "TavrinCore/Scanning/Collation.h"
#include "TavrinCore/Scanning/TextCase.h"

#include <algorithm>
#include <cstring>
#include <numeric>
#include <utility>

namespace tavrin {
namespace {

std::uint64_t beginning(const UUID& id) {
    std::uint64_t bytes = 0;
    std::memcpy(&bytes, id.bytes().data(), sizeof bytes);
    return bytes;
}

bool hasScannersGroups(ModuleKind kind) {
    return kind == ModuleKind::duplicates || kind == ModuleKind::similarImages || kind == ModuleKind::appLanguages;
}

std::vector<CleanableItem> picked(const std::vector<CleanableItem>& items, const std::vector<std::uint32_t>& which) {
    std::vector<CleanableItem> result;
    result.reserve(which.size());
    for (const std::uint32_t item : which)
        result.push_back(items[item]);
    return result;
}

std::vector<std::uint32_t> ranksOfNames(const std::vector<CleanableItem>& items) {
    std::vector<std::pair<std::string, std::uint32_t>> keys;
    keys.reserve(items.size());
    for (const CleanableItem& item : items)
        keys.emplace_back(nameSortKey(item.name()), static_cast<std::uint32_t>(keys.size()));
    std::ranges::sort(keys);
    std::vector<std::uint32_t> ranks(keys.size());
    std::uint32_t rank = 0;
    for (std::size_t i = 0; i < keys.size(); ++i) {
        if (i > 0 && keys[i].first != keys[i - 1].first) ++rank;
        ranks[keys[i].second] = rank;
    }
    return ranks;
}

}  // namespace

Findings::Findings(ModuleKind kind, std::vector<CleanableItem> items) : kind_(kind), items_(std::move(items)) {
    index();
}

Findings::Findings(const Findings& base, const std::vector<std::uint32_t>& left)
    : kind_(base.kind_), items_(picked(base.items_, left)) {
    index();
    if (!base.installDates_.isReady()) return;
    const std::vector<Date>& dates = base.installDates({});
    (void)installDates_.get([&] {
        std::vector<Date> kept;
        kept.reserve(left.size());
        for (const std::uint32_t item : left)
            kept.push_back(dates[item]);
        return kept;
    });
}

void Findings::index() {
    bytes_.reserve(items_.size());
    pathCounts_.reserve(items_.size());
    keepers_.reserve(items_.size());
    groups_.reserve(items_.size());
    ids_.reserve(items_.size());
    // A group of the scanner's has two members or more.
    if (hasScannersGroups(kind_)) groupsById_.reserve(items_.size() / 2);
    for (const CleanableItem& item : items_) {
        bytes_.push_back(item.size);
        totalBytes_ += item.size;
        pathCounts_.push_back(static_cast<std::uint32_t>(1 + item.relatedURLs.size()));
        keepers_.push_back(item.isGroupKeeper ? 1 : 0);
        groups_.push_back(groupFor(item));
        ids_.emplace_back(beginning(item.id), static_cast<std::uint32_t>(ids_.size()));
        hasApplications_ = hasApplications_ || item.category == ScanCategory::application;
    }
    std::ranges::sort(ids_);
}

std::uint32_t Findings::groupFor(const CleanableItem& item) {
    const bool byScanner = hasScannersGroups(kind_);
    std::string alone;
    std::string_view id = rawValue(item.category);
    if (byScanner && item.groupID) {
        id = *item.groupID;
    } else if (byScanner) {
        alone = item.id.uuidString();
        id = alone;
    }
    // Scanners give the members of a group one after the other.
    if (!groups_.empty() && *groupIds_[groups_.back()] == id) return groups_.back();
    const auto [place, isNew] = groupsById_.try_emplace(std::string(id), groupCount());
    if (isNew) groupIds_.push_back(&place->first);
    return place->second;
}

std::optional<std::uint32_t> Findings::groupWithId(const std::string& id) const {
    const auto found = groupsById_.find(id);
    return found != groupsById_.end() ? std::optional(found->second) : std::nullopt;
}

std::optional<std::uint32_t> Findings::itemWithId(const UUID& id) const {
    const std::pair<std::uint64_t, std::uint32_t> first{beginning(id), 0};
    for (auto it = std::ranges::lower_bound(ids_, first); it != ids_.end() && it->first == first.first; ++it) {
        if (items_[it->second].id == id) return it->second;
    }
    return std::nullopt;
}

const std::vector<std::uint32_t>& Findings::nameRanks() const {
    return nameRanks_.get([this] { return ranksOfNames(items_); });
}

const std::vector<Date>& Findings::installDates(const InstallDate& installDate) const {
    return installDates_.get([&] {
        std::vector<Date> dates;
        dates.reserve(items_.size());
        for (const CleanableItem& item : items_)
            dates.push_back(installDate ? installDate(item.url).value_or(Date::distantPast) : Date::distantPast);
        return dates;
    });
}

const Findings::SearchText& Findings::searchText() const {
    return searchText_.get([this] {
        SearchText text;
        text.begins.reserve(items_.size());
        for (const CleanableItem& item : items_) {
            text.begins.push_back(text.bytes.size());
            // No name holds a zero byte, so nothing is found across one.
            text.bytes.append(comparisonForm(item.name())).push_back('\0');
            if (item.detail) text.bytes.append(comparisonForm(*item.detail)).push_back('\0');
        }
        return text;
    });
}

std::vector<bool> Findings::matching(const std::string& query) const {
    std::vector<bool> matches(items_.size(), query.empty());
    if (query.empty() || items_.empty() || query.find('\0') != std::string::npos) return matches;
    const SearchText& text = searchText();
    for (std::size_t at = text.bytes.find(query); at != std::string::npos; at = text.bytes.find(query, at)) {
        const auto next = std::ranges::upper_bound(text.begins, at);
        matches[static_cast<std::size_t>(next - text.begins.begin()) - 1] = true;
        // One hit is enough for an item.
        if (next == text.begins.end()) break;
        at = *next;
    }
    return matches;
}

void Findings::prepare(const InstallDate& installDate) const {
    (void)searchText();
    (void)nameRanks();
    if (installDate) (void)installDates(installDate);
}

std::string searchForm(std::string_view query) {
    return comparisonForm(trimmed(query));
}

}  // namespace tavrin
