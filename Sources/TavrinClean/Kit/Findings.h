// The findings of one scan, and what is worked out about them once.
#pragma once

#include "TavrinClean/Kit/ComputedOnce.h"
#include "TavrinCore/Models/Models.h"

#include <cstddef>
#include <cstdint>
#include <functional>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

namespace tavrin {

/// When a file arrived where it is; nil when the file system doesn't say.
using InstallDate = std::function<std::optional<Date>(const URL&)>;

/// Never changes once made, so threads share it without a lock; ticks are kept apart (Selection). An item is known by
/// its index here. Flat arrays stand beside the items for what is done to all of them at once: 200,000 items lie too
/// far apart in memory to be walked within a frame.
///
/// Making one takes tens of milliseconds for that many, so it is done off the main thread.
class Findings {
  public:
    Findings(ModuleKind kind, std::vector<CleanableItem> items);
    /// Those items of `base` that are `left`, in the same order. Dates that were read stay read.
    Findings(const Findings& base, const std::vector<std::uint32_t>& left);

    [[nodiscard]] ModuleKind kind() const { return kind_; }
    [[nodiscard]] std::uint32_t size() const { return static_cast<std::uint32_t>(items_.size()); }
    [[nodiscard]] const CleanableItem& operator[](std::uint32_t item) const { return items_[item]; }
    [[nodiscard]] const std::vector<CleanableItem>& items() const { return items_; }

    /// Of all items, ticked or not.
    [[nodiscard]] std::int64_t totalBytes() const { return totalBytes_; }
    [[nodiscard]] bool hasApplications() const { return hasApplications_; }
    [[nodiscard]] std::int64_t bytes(std::uint32_t item) const { return bytes_[item]; }
    /// The item's own path and those that go with it.
    [[nodiscard]] std::uint32_t pathCount(std::uint32_t item) const { return pathCounts_[item]; }
    [[nodiscard]] bool isKeeper(std::uint32_t item) const { return keepers_[item] != 0; }

    [[nodiscard]] std::uint32_t groupCount() const { return static_cast<std::uint32_t>(groupIds_.size()); }
    [[nodiscard]] std::uint32_t groupOf(std::uint32_t item) const { return groups_[item]; }
    /// The key of a group: the scanner's group where the module has them, else the category.
    [[nodiscard]] const std::string& groupId(std::uint32_t group) const { return *groupIds_[group]; }
    [[nodiscard]] std::optional<std::uint32_t> groupWithId(const std::string& id) const;
    [[nodiscard]] std::optional<std::uint32_t> itemWithId(const UUID& id) const;

    // Worked out when first asked for, which may take a while; off the main thread for long lists.

    /// The item's place among all names as people sort them; equal names share one.
    [[nodiscard]] const std::vector<std::uint32_t>& nameRanks() const;
    /// When each item arrived, the distant past for those that tell nothing. Each file is asked once.
    [[nodiscard]] const std::vector<Date>& installDates(const InstallDate& installDate) const;
    /// For each item, whether `query` (see searchForm) is part of its name or of its detail.
    [[nodiscard]] std::vector<bool> matching(const std::string& query) const;
    /// Works out what searching and sorting will ask for.
    void prepare(const InstallDate& installDate) const;

  private:
    struct SearchText {
        std::string bytes;
        std::vector<std::size_t> begins;
    };

    void index();
    [[nodiscard]] std::uint32_t groupFor(const CleanableItem& item);
    [[nodiscard]] const SearchText& searchText() const;

    ModuleKind kind_;
    std::vector<CleanableItem> items_;
    std::int64_t totalBytes_ = 0;
    bool hasApplications_ = false;
    std::vector<std::int64_t> bytes_;
    std::vector<std::uint32_t> pathCounts_;
    std::vector<std::uint8_t> keepers_;
    std::vector<std::uint32_t> groups_;
    std::unordered_map<std::string, std::uint32_t> groupsById_;
    std::vector<const std::string*> groupIds_;
    /// The first bytes of each id, which are random enough, sorted.
    std::vector<std::pair<std::uint64_t, std::uint32_t>> ids_;
    ComputedOnce<std::vector<std::uint32_t>> nameRanks_;
    ComputedOnce<std::vector<Date>> installDates_;
    ComputedOnce<SearchText> searchText_;
};

/// What is searched for, and in: without white space around it, without regard to case and to how accents are stored.
[[nodiscard]] std::string searchForm(std::string_view query);

}  // namespace tavrin
