#include "TavrinClean/Kit/RowLayout.h"

#include <algorithm>

namespace tavrin {

RowLayout::RowLayout(std::shared_ptr<const Arrangement> arrangement, std::vector<bool> collapsed,
                     const std::vector<std::pair<std::uint32_t, int>>& extras)
    : arrangement_(std::move(arrangement)), collapsed_(std::move(collapsed)) {
    baseRows_.reserve(arrangement_->groups.size() + 1);
    for (std::size_t group = 0; group < collapsed_.size(); ++group) {
        const int members = collapsed_[group] ? 0 : static_cast<int>(arrangement_->groups[group].count());
        baseRows_.push_back(baseRows_.back() + 1 + members);
    }
    for (const auto& [place, rows] : extras) {
        const std::uint32_t group = arrangement_->groupAt(place);
        if (collapsed_[group]) continue;
        const auto offset = static_cast<int>(place - arrangement_->groups[group].begin);
        extras_.push_back({.baseRow = baseRows_[group] + 1 + offset, .rows = rows});
    }
    std::ranges::sort(extras_, std::ranges::less(), &Extra::baseRow);
    int before = 0;
    for (Extra& extra : extras_) {
        extra.before = before;
        before += extra.rows;
    }
    rowCount_ = baseRows_.back() + before;
}

RowRef RowLayout::at(int row) const {
    // The last opened item at or above this row.
    const auto next = std::ranges::upper_bound(extras_, row, std::ranges::less(),
                                               [](const Extra& extra) { return extra.baseRow + extra.before; });
    int baseRow = row;
    int below = 0;
    if (next != extras_.begin()) {
        const Extra& extra = *std::prev(next);
        below = row - (extra.baseRow + extra.before);
        if (below > extra.rows) {
            baseRow = row - extra.before - extra.rows;
            below = 0;
        } else {
            baseRow = extra.baseRow;
        }
    }
    const auto after = std::ranges::upper_bound(baseRows_, baseRow);
    RowRef ref;
    ref.group = static_cast<std::uint32_t>(after - baseRows_.begin()) - 1;
    const int offset = baseRow - baseRows_[ref.group];
    if (offset == 0) return ref;
    ref.kind = below > 0 ? RowRef::Kind::extra : RowRef::Kind::item;
    ref.place = arrangement_->groups[ref.group].begin + static_cast<std::uint32_t>(offset) - 1;
    ref.extra = below > 0 ? below - 1 : 0;
    return ref;
}

int RowLayout::shifted(int baseRow) const {
    const auto next = std::ranges::lower_bound(extras_, baseRow, std::ranges::less(), &Extra::baseRow);
    if (next == extras_.begin()) return baseRow;
    const Extra& extra = *std::prev(next);
    return baseRow + extra.before + extra.rows;
}

int RowLayout::rowOfGroup(std::uint32_t group) const {
    return shifted(baseRows_[group]);
}

int RowLayout::rowOfPlace(std::uint32_t place) const {
    const std::uint32_t group = arrangement_->groupAt(place);
    if (collapsed_[group]) return -1;
    return shifted(baseRows_[group] + 1 + static_cast<int>(place - arrangement_->groups[group].begin));
}

int RowLayout::rowsBelowGroup(std::uint32_t group) const {
    const int end = group + 1 < collapsed_.size() ? rowOfGroup(group + 1) : rowCount_;
    return end - rowOfGroup(group) - 1;
}

}  // namespace tavrin
