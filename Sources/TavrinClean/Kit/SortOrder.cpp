#include "TavrinClean/Kit/SortOrder.h"

#include "TavrinCore/Strings.h"

#include <algorithm>
#include <cstddef>

namespace tavrin {
namespace {

constexpr std::array<std::string_view, allSortOrders.size()> kRawValues{"sizeDesc", "sizeAsc", "dateNewest",
                                                                        "dateOldest", "name"};
constexpr std::array kWithoutDates{SortOrder::sizeDesc, SortOrder::sizeAsc, SortOrder::name};

}  // namespace

std::string_view rawValue(SortOrder order) {
    return kRawValues.at(static_cast<std::size_t>(order));
}

std::optional<SortOrder> sortOrderFromRawValue(std::string_view rawValue) {
    const auto* found = std::ranges::find(kRawValues, rawValue);
    if (found == kRawValues.end()) return std::nullopt;
    return allSortOrders.at(static_cast<std::size_t>(found - kRawValues.begin()));
}

const std::string& label(SortOrder order) {
    switch (order) {
        case SortOrder::sizeDesc:
            return S::moduleSortSizeDesc();
        case SortOrder::sizeAsc:
            return S::moduleSortSizeAsc();
        case SortOrder::dateNewest:
            return S::moduleSortDateNewest();
        case SortOrder::dateOldest:
            return S::moduleSortDateOldest();
        case SortOrder::name:
            break;
    }
    return S::moduleSortName();
}

bool showsInstallDates(ModuleKind kind) {
    return kind == ModuleKind::largeFiles || kind == ModuleKind::uninstaller || kind == ModuleKind::screenshots ||
           kind == ModuleKind::downloadsJunk;
}

std::span<const SortOrder> availableSortOrders(ModuleKind kind) {
    if (showsInstallDates(kind)) return allSortOrders;
    return kWithoutDates;
}

}  // namespace tavrin
