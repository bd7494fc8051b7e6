// In which order findings are listed, in which groups, and which of them.
#pragma once

#include "TavrinClean/Kit/Findings.h"
#include "TavrinClean/Kit/SortOrder.h"

#include <cstdint>
#include <limits>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace tavrin {

/// A group as it is listed: a stretch of Arrangement::order.
struct ArrangedGroup {
    /// Which of the findings' groups.
    std::uint32_t group = 0;
    std::uint32_t begin = 0;
    std::uint32_t end = 0;
    /// Of what is listed.
    std::int64_t totalBytes = 0;
    /// What the title is made of, the same under a search: the first member in this order, and how many there are.
    std::uint32_t firstItem = 0;
    std::uint32_t fullCount = 0;

    [[nodiscard]] std::uint32_t count() const { return end - begin; }
    friend bool operator==(const ArrangedGroup&, const ArrangedGroup&) = default;
};

/// Plain numbers, made off the main thread and never changed: an item is its index in the findings.
struct Arrangement {
    static constexpr std::uint32_t nowhere = std::numeric_limits<std::uint32_t>::max();

    std::shared_ptr<const Findings> findings;
    SortOrder sortOrder = SortOrder::sizeDesc;
    /// In search form; empty when everything is listed.
    std::string query = {};
    /// The listed items, group after group.
    std::vector<std::uint32_t> order = {};
    std::vector<ArrangedGroup> groups = {};
    /// Where each item stands in `order`; `nowhere` for those that aren't listed.
    std::vector<std::uint32_t> places = {};

    /// Which of `groups` holds this place of `order`.
    [[nodiscard]] std::uint32_t groupAt(std::uint32_t place) const;
    /// Where one of the findings' groups is listed, if it is.
    [[nodiscard]] std::optional<std::uint32_t> placeOfGroup(std::uint32_t group) const;
};

/// Items sorted by `sortOrder`, those that are equal in the scanner's order.
[[nodiscard]] std::vector<std::uint32_t> sorted(const Findings& findings, SortOrder sortOrder,
                                                const InstallDate& installDate);

/// Everything, sorted, then grouped by first appearance; the groups by their bytes, the largest first, and the
/// languages of apps by their title.
[[nodiscard]] std::shared_ptr<const Arrangement> arranged(std::shared_ptr<const Findings> findings, SortOrder sortOrder,
                                                          const InstallDate& installDate);

/// What of `all` a search for `query` (see searchForm) leaves: items by name and detail, languages as whole groups by
/// their title. Groups without an item are left out. An empty query leaves `all` itself.
[[nodiscard]] std::shared_ptr<const Arrangement> filtered(std::shared_ptr<const Arrangement> all,
                                                          const std::string& query);

/// What stands in a group's header, in the running language, as the scanner and the disk gave it: not yet safe to show.
[[nodiscard]] std::string groupTitle(const Findings& findings, const ArrangedGroup& group);

}  // namespace tavrin
