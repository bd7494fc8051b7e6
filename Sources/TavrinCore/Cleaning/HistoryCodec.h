// The text of history.json, both ways.
//
// An array of objects, newest first, in JSON with two spaces of indentation:
//
//   "id"             the UUID, upper case
//   "date"           seconds since 2001-01-01 00:00:00 UTC, with as many digits as bring the same double back
//   "module"         text
//   "moduleKey"      text; left out when nil
//   "itemCount"      integer
//   "reclaimedBytes" integer
//   "entries"        array of {"original", "trashed"}, file URLs in absolute form, so that any bytes survive
//
// Slashes are written as "\/". A reader takes keys in any order, passes over those it doesn't know, and takes "/" as
// well.
#pragma once

#include "TavrinCore/Cleaning/CleanupRecord.h"

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace tavrin {

struct DecodedHistory {
    /// The records without a defect, in the text's order. A defect of any kind costs its record, never another one.
    /// Empty when the text is no JSON array.
    std::vector<CleanupRecord> records;
    /// The text is a JSON array, and nothing in it was dropped.
    bool isIntact = false;
};

/// Takes any bytes: never throws on their account, and neither nesting nor size makes it hold more than a few times
/// their number. Bytes that aren't UTF-8 and numbers beyond a double cost the record in which they stand.
[[nodiscard]] DecodedHistory decodeHistory(std::string_view text);

/// Nil when a date is not finite, which JSON can't say. What isn't UTF-8 in a title or key becomes U+FFFD.
[[nodiscard]] std::optional<std::string> encodeHistory(const std::vector<CleanupRecord>& records);

}  // namespace tavrin
