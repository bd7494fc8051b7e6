// Which row shows what, when groups can be closed and rows opened.
#pragma once

#include "TavrinClean/Kit/Arrangement.h"

#include <cstdint>
#include <memory>
#include <utility>
#include <vector>

namespace tavrin {

struct RowRef {
    enum class Kind : std::uint8_t {
        group,
        item,
        /// A row below an opened item.
        extra,
    };
    Kind kind = Kind::group;
    /// Index into Arrangement::groups.
    std::uint32_t group = 0;
    /// Index into Arrangement::order, for an item and for what stands below it.
    std::uint32_t place = 0;
    /// Which of the rows below the item.
    int extra = 0;

    friend bool operator==(const RowRef&, const RowRef&) = default;
};

/// Made anew with each change, which costs as much as there are groups; asking costs a few steps of a binary search.
class RowLayout {
  public:
    RowLayout() = default;
    /// `collapsed` says for each group of the arrangement whether it is closed. `extras` are the rows below opened
    /// items: places in the order and how many rows each.
    RowLayout(std::shared_ptr<const Arrangement> arrangement, std::vector<bool> collapsed,
              const std::vector<std::pair<std::uint32_t, int>>& extras);

    [[nodiscard]] int rowCount() const { return rowCount_; }
    [[nodiscard]] RowRef at(int row) const;
    [[nodiscard]] bool isCollapsed(std::uint32_t group) const { return collapsed_[group]; }

    [[nodiscard]] int rowOfGroup(std::uint32_t group) const;
    /// -1 for an item of a closed group.
    [[nodiscard]] int rowOfPlace(std::uint32_t place) const;
    /// The rows that a group's members take, and what is opened below them; 0 when it is closed.
    [[nodiscard]] int rowsBelowGroup(std::uint32_t group) const;

  private:
    struct Extra {
        /// The opened item's row as if nothing were opened.
        int baseRow = 0;
        int rows = 0;
        /// Of all extras before this one.
        int before = 0;
    };

    /// The real row of a row as if nothing were opened.
    [[nodiscard]] int shifted(int baseRow) const;

    std::shared_ptr<const Arrangement> arrangement_;
    std::vector<bool> collapsed_;
    /// Each group's header row as if nothing were opened, and one past the last.
    std::vector<int> baseRows_{0};
    std::vector<Extra> extras_;
    int rowCount_ = 0;
};

}  // namespace tavrin
