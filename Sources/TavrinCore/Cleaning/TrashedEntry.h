// The record of one move to the Trash: all that is needed to undo it.
#pragma once

#include "TavrinCore/Models/URL.h"

#include <cstddef>
#include <functional>

namespace tavrin {

struct TrashedEntry {
    /// Where the item was.
    URL original;
    /// Where the Trash put it.
    URL trashed;

    friend bool operator==(const TrashedEntry&, const TrashedEntry&) = default;
};

}  // namespace tavrin

template <>
struct std::hash<tavrin::TrashedEntry> {
    std::size_t operator()(const tavrin::TrashedEntry& entry) const noexcept {
        return std::hash<tavrin::URL>{}(entry.original) * 31 + std::hash<tavrin::URL>{}(entry.trashed);
    }
};
