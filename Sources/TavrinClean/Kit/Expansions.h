// The rows that a person has opened, and what lies in each.
#pragma once

#include "TavrinCore/Models/Models.h"

#include <cstdint>
#include <map>
#include <optional>
#include <vector>

namespace tavrin {

/// One entry of an opened row.
struct DirChild {
    URL url;
    std::int64_t size = 0;
    bool isDirectory = false;

    friend bool operator==(const DirChild&, const DirChild&) = default;
};

/// What lies in a finding, the largest first: the finding itself and what goes with it, or else the entries of its
/// folder without the hidden ones. Measures everything, so it takes its time; empty once cancelled.
[[nodiscard]] std::vector<DirChild> childrenOf(const CleanableItem& item, const CancellationCallback& isCancelled);

/// Items by their index in the findings.
class Expansions {
  public:
    /// At most this many entries are shown, whatever a folder holds.
    static constexpr std::size_t shownChildren = 50;

    [[nodiscard]] bool isOpen(std::uint32_t item) const;
    /// The entries, or nil while they are being read.
    [[nodiscard]] const std::optional<std::vector<DirChild>>* find(std::uint32_t item) const;
    /// Rows below an opened item: its entries and a line when there are more, or one line that says why there are none.
    /// 0 for a closed one.
    [[nodiscard]] int rows(std::uint32_t item) const;
    /// The items that are open.
    [[nodiscard]] std::vector<std::uint32_t> open() const;

    /// True when its entries must be read now: it is opened for the first time.
    [[nodiscard]] bool toggle(std::uint32_t item);
    void setChildren(std::uint32_t item, std::vector<DirChild> children);
    void clear() { entries_.clear(); }

  private:
    struct Entry {
        bool isOpen = false;
        std::optional<std::vector<DirChild>> children;
    };

    std::map<std::uint32_t, Entry> entries_;
};

}  // namespace tavrin
