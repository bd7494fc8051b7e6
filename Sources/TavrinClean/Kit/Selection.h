// Which findings are ticked, and what that comes to.
#pragma once

#include "TavrinClean/Kit/Findings.h"

#include <cstdint>
#include <memory>
#include <vector>

namespace tavrin {

/// How much of a selection has changed.
struct SelectionChange {
    enum class Extent : std::uint8_t {
        item,
        group,
        all,
    };
    Extent extent = Extent::all;
    /// The item or the group, by its index in the findings.
    std::uint32_t index = 0;
};

/// The sums are kept up with each tick, so asking costs nothing however long the list is.
class Selection {
  public:
    Selection() = default;
    /// As the scanner proposes.
    explicit Selection(std::shared_ptr<const Findings> findings);

    [[nodiscard]] bool contains(std::uint32_t item) const { return ticks_[item] != 0; }
    [[nodiscard]] std::uint32_t count() const { return count_; }
    [[nodiscard]] std::int64_t bytes() const { return bytes_; }
    /// The paths that would move: more than the ticked items where some bring others along.
    [[nodiscard]] std::int64_t paths() const { return paths_; }
    [[nodiscard]] const std::vector<std::uint8_t>& ticks() const { return ticks_; }

    void set(std::uint32_t item, bool selected);
    /// Ticks all but the keepers, or unticks all, keepers included.
    void setAll(bool selected);
    /// The same within one group.
    void setGroup(std::uint32_t group, bool selected);

  private:
    std::shared_ptr<const Findings> findings_;
    std::vector<std::uint8_t> ticks_;
    std::uint32_t count_ = 0;
    std::int64_t bytes_ = 0;
    std::int64_t paths_ = 0;
};

}  // namespace tavrin
