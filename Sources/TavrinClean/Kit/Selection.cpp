#include "TavrinClean/Kit/Selection.h"

#include <utility>

namespace tavrin {

Selection::Selection(std::shared_ptr<const Findings> findings)
    : findings_(std::move(findings)), ticks_(findings_->size()) {
    for (std::uint32_t item = 0; item < findings_->size(); ++item)
        set(item, (*findings_)[item].isSelected);
}

void Selection::set(std::uint32_t item, bool selected) {
    if (contains(item) == selected) return;
    const int sign = selected ? 1 : -1;
    ticks_[item] = selected ? 1 : 0;
    count_ = selected ? count_ + 1 : count_ - 1;
    bytes_ += sign * findings_->bytes(item);
    paths_ += sign * static_cast<std::int64_t>(findings_->pathCount(item));
}

void Selection::setAll(bool selected) {
    for (std::uint32_t item = 0; item < ticks_.size(); ++item) {
        if (!selected || !findings_->isKeeper(item)) set(item, selected);
    }
}

void Selection::setGroup(std::uint32_t group, bool selected) {
    for (std::uint32_t item = 0; item < ticks_.size(); ++item) {
        if (findings_->groupOf(item) != group) continue;
        if (!selected || !findings_->isKeeper(item)) set(item, selected);
    }
}

}  // namespace tavrin
