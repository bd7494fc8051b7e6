#include "TavrinClean/Kit/Arrangement.h"

#include "TavrinCore/Scanning/Collation.h"
#include "TavrinCore/Scanning/TextCase.h"
#include "TavrinCore/Strings.h"

#include <algorithm>
#include <numeric>
#include <utility>

namespace tavrin {
namespace {

/// Most scanners give the largest first, so that there is nothing to do.
template <class Before>
void sortStably(std::vector<std::uint32_t>& order, const Before& before) {
    if (!std::ranges::is_sorted(order, before)) std::ranges::stable_sort(order, before);
}

void sortGroups(const Findings& findings, std::vector<ArrangedGroup>& groups) {
    if (findings.kind() != ModuleKind::appLanguages) {
        std::ranges::stable_sort(groups, std::ranges::greater(), &ArrangedGroup::totalBytes);
        return;
    }
    std::vector<std::pair<std::string, ArrangedGroup>> titled;
    titled.reserve(groups.size());
    for (const ArrangedGroup& group : groups)
        titled.emplace_back(nameSortKey(groupTitle(findings, group)), group);
    std::ranges::stable_sort(titled, std::ranges::less(), &std::pair<std::string, ArrangedGroup>::first);
    std::ranges::transform(titled, groups.begin(), &std::pair<std::string, ArrangedGroup>::second);
}

/// The groups in the order in which `order` meets them, each with what it needs but its place.
std::vector<ArrangedGroup> groupsOf(const Findings& findings, const std::vector<std::uint32_t>& order) {
    std::vector<ArrangedGroup> groups;
    groups.reserve(std::min<std::size_t>(findings.groupCount(), order.size()));
    std::vector<std::uint32_t> listedAs(findings.groupCount(), Arrangement::nowhere);
    for (const std::uint32_t item : order) {
        std::uint32_t& index = listedAs[findings.groupOf(item)];
        if (index == Arrangement::nowhere) {
            index = static_cast<std::uint32_t>(groups.size());
            groups.push_back({.group = findings.groupOf(item), .firstItem = item});
        }
        ++groups[index].fullCount;
        groups[index].totalBytes += findings.bytes(item);
    }
    return groups;
}

/// Gives each group its stretch, and each item of `sortedItems` its place in it.
void place(Arrangement& arrangement, const std::vector<std::uint32_t>& sortedItems) {
    const Findings& findings = *arrangement.findings;
    std::vector<std::uint32_t> next(findings.groupCount());
    std::uint32_t begin = 0;
    for (ArrangedGroup& group : arrangement.groups) {
        group.begin = begin;
        next[group.group] = begin;
        begin += group.fullCount;
        group.end = begin;
    }
    arrangement.order.resize(sortedItems.size());
    arrangement.places.resize(findings.size());
    for (const std::uint32_t item : sortedItems) {
        const std::uint32_t at = next[findings.groupOf(item)]++;
        arrangement.order[at] = item;
        arrangement.places[item] = at;
    }
}

/// The listed members of `group`, appended to `result`.
void appendMatching(Arrangement& result, const Arrangement& all, ArrangedGroup group,
                    const std::vector<bool>& matches) {
    const std::uint32_t begin = group.begin;
    const std::uint32_t end = group.end;
    group.begin = static_cast<std::uint32_t>(result.order.size());
    group.totalBytes = 0;
    for (std::uint32_t at = begin; at < end; ++at) {
        const std::uint32_t item = all.order[at];
        if (!matches[item]) continue;
        result.places[item] = static_cast<std::uint32_t>(result.order.size());
        result.order.push_back(item);
        group.totalBytes += all.findings->bytes(item);
    }
    group.end = static_cast<std::uint32_t>(result.order.size());
    if (group.count() > 0) result.groups.push_back(group);
}

/// Languages are found by their title, with all that they hold.
std::vector<bool> inGroupsTitled(const Arrangement& all, const std::string& query) {
    std::vector<bool> matches(all.findings->size());
    for (const ArrangedGroup& group : all.groups) {
        if (comparisonForm(groupTitle(*all.findings, group)).find(query) == std::string::npos) continue;
        for (std::uint32_t at = group.begin; at < group.end; ++at)
            matches[all.order[at]] = true;
    }
    return matches;
}

}  // namespace

std::uint32_t Arrangement::groupAt(std::uint32_t place) const {
    const auto next = std::ranges::upper_bound(groups, place, std::ranges::less(), &ArrangedGroup::begin);
    return static_cast<std::uint32_t>(next - groups.begin()) - 1;
}

std::optional<std::uint32_t> Arrangement::placeOfGroup(std::uint32_t group) const {
    const auto found = std::ranges::find(groups, group, &ArrangedGroup::group);
    if (found == groups.end()) return std::nullopt;
    return static_cast<std::uint32_t>(found - groups.begin());
}

std::vector<std::uint32_t> sorted(const Findings& findings, SortOrder sortOrder, const InstallDate& installDate) {
    std::vector<std::uint32_t> order(findings.size());
    std::iota(order.begin(), order.end(), 0U);
    switch (sortOrder) {
        case SortOrder::sizeDesc:
            sortStably(order, [&](auto a, auto b) { return findings.bytes(a) > findings.bytes(b); });
            break;
        case SortOrder::sizeAsc:
            sortStably(order, [&](auto a, auto b) { return findings.bytes(a) < findings.bytes(b); });
            break;
        case SortOrder::dateNewest: {
            const std::vector<Date>& dates = findings.installDates(installDate);
            sortStably(order, [&](auto a, auto b) { return dates[a] > dates[b]; });
            break;
        }
        case SortOrder::dateOldest: {
            const std::vector<Date>& dates = findings.installDates(installDate);
            sortStably(order, [&](auto a, auto b) { return dates[a] < dates[b]; });
            break;
        }
        case SortOrder::name: {
            const std::vector<std::uint32_t>& ranks = findings.nameRanks();
            sortStably(order, [&](auto a, auto b) { return ranks[a] < ranks[b]; });
            break;
        }
    }
    return order;
}

std::shared_ptr<const Arrangement> arranged(std::shared_ptr<const Findings> findings, SortOrder sortOrder,
                                            const InstallDate& installDate) {
    const std::vector<std::uint32_t> order = sorted(*findings, sortOrder, installDate);
    auto arrangement = std::make_shared<Arrangement>();
    arrangement->groups = groupsOf(*findings, order);
    sortGroups(*findings, arrangement->groups);
    arrangement->sortOrder = sortOrder;
    arrangement->findings = std::move(findings);
    place(*arrangement, order);
    return arrangement;
}

std::shared_ptr<const Arrangement> filtered(std::shared_ptr<const Arrangement> all, const std::string& query) {
    if (query.empty()) return all;
    const bool byTitle = all->findings->kind() == ModuleKind::appLanguages;
    const std::vector<bool> matches = byTitle ? inGroupsTitled(*all, query) : all->findings->matching(query);
    auto result = std::make_shared<Arrangement>();
    result->findings = all->findings;
    result->sortOrder = all->sortOrder;
    result->query = query;
    result->places.assign(all->findings->size(), Arrangement::nowhere);
    for (const ArrangedGroup& group : all->groups)
        appendMatching(*result, *all, group, matches);
    return result;
}

std::string groupTitle(const Findings& findings, const ArrangedGroup& group) {
    const CleanableItem& first = findings[group.firstItem];
    switch (findings.kind()) {
        case ModuleKind::appLanguages:
            return first.groupID ? *first.groupID : S::moduleGroupLanguage();
        case ModuleKind::similarImages:
            return S::moduleGroupSimilar(group.fullCount);
        case ModuleKind::duplicates:
            return S::moduleGroupDuplicate(displayText(first.name()));
        default:
            return displayName(first.category);
    }
}

}  // namespace tavrin
