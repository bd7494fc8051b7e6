// What the lines under the findings' names are put together from.
#pragma once

#include "TavrinCore/Models/Date.h"
#include "TavrinCore/Scanning/DateText.h"

#include <optional>
#include <string>
#include <string_view>

namespace tavrin {

/// Between the parts of such a line.
inline constexpr std::string_view detailSeparator = " \u00b7 ";

/// `first` and `second` with the separator between them.
[[nodiscard]] inline std::string joinedDetail(std::string_view first, std::string_view second) {
    return std::string(first).append(detailSeparator).append(second);
}

/// `text`, and behind it the day where there is one.
[[nodiscard]] inline std::string detailWithDate(std::string_view text, const std::optional<Date>& date) {
    return date ? joinedDetail(text, dateText(*date)) : std::string(text);
}

}  // namespace tavrin
