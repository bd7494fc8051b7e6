// From the core's text to the toolkit's.
#pragma once

#include "TavrinCore/Models/URL.h"

#include <QString>
#include <optional>
#include <string>
#include <string_view>

namespace tavrin {

/// The program's own words, which are UTF-8.
[[nodiscard]] inline QString qtText(std::string_view text) {
    return QString::fromUtf8(text.data(), static_cast<qsizetype>(text.size()));
}

/// What came from the disk, or may hold what did: made safe for one line.
[[nodiscard]] inline QString qtLine(std::string_view bytes) {
    return qtText(lineText(bytes));
}

}  // namespace tavrin
