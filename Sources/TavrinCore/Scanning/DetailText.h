// What the lines under the findings' names are put together from.
#pragma once

#include "TavrinCore/Models/Date.h"
#include "TavrinCore/Models/URL.h"
#include "TavrinCore/Scanning/DateText.h"

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

namespace tavrin {

/// Between the parts of such a line.
inline constexpr std::string_view detailSeparator = " \u00b7 ";

/// A name that somebody else chose, for such a line: safe in one row, and no longer than a file's name may be.
[[nodiscard]] inline std::string detailName(std::string_view name) {
    constexpr std::size_t longest = 255;
    if (name.size() <= longest) return lineText(name);
    std::size_t end = longest;
    // Not in the middle of a character of several bytes.
    while (end > 0 && (static_cast<unsigned char>(name[end]) & 0xC0U) == 0x80U)
        --end;
    return lineText(name.substr(0, end)) + "\u2026";
}

/// `first` and `second` with the separator between them.
[[nodiscard]] inline std::string joinedDetail(std::string_view first, std::string_view second) {
    return std::string(first).append(detailSeparator).append(second);
}

/// `text`, and behind it the day where there is one.
[[nodiscard]] inline std::string detailWithDate(std::string_view text, const std::optional<Date>& date) {
    return date ? joinedDetail(text, dateText(*date)) : std::string(text);
}

}  // namespace tavrin
