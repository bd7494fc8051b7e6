// The orders in which results can be listed.
#pragma once

#include "TavrinCore/Models/ModuleKind.h"

#include <array>
#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>

namespace tavrin {

enum class SortOrder : std::uint8_t {
    sizeDesc,
    sizeAsc,
    dateNewest,
    dateOldest,
    name,
};

inline constexpr std::array allSortOrders{SortOrder::sizeDesc, SortOrder::sizeAsc, SortOrder::dateNewest,
                                          SortOrder::dateOldest, SortOrder::name};

/// The case's own name.
[[nodiscard]] std::string_view rawValue(SortOrder order);
[[nodiscard]] std::optional<SortOrder> sortOrderFromRawValue(std::string_view rawValue);
/// A text of the running language.
[[nodiscard]] const std::string& label(SortOrder order);

/// Whether the dates on which files arrived mean something in this module: it then shows them and sorts by them.
[[nodiscard]] bool showsInstallDates(ModuleKind kind);
/// The orders that a module offers, in their own order.
[[nodiscard]] std::span<const SortOrder> availableSortOrders(ModuleKind kind);

}  // namespace tavrin
