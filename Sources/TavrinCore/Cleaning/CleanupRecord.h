// What is remembered of one clean: what it was, what it freed, and where each path went.
#pragma once

#include "TavrinCore/Cleaning/TrashedEntry.h"
#include "TavrinCore/Models/Date.h"
#include "TavrinCore/Models/UUID.h"

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace tavrin {

/// A plain value. Once made, only `entries` changes, when a part of the clean has been put back.
struct CleanupRecord {
    /// The keys of the two cleans that belong to no single module.
    static constexpr std::string_view smartScanKey = "smartScan";
    static constexpr std::string_view emptyTrashKey = "emptyTrash";

    /// Fresh for each record.
    UUID id;
    /// When the clean finished.
    Date date;
    /// The title in the language of that run: what to show when `moduleKey` says nothing.
    std::string module;
    /// The raw value of a ModuleKind, or one of the two keys above; the same in every language. Nil in old records.
    std::optional<std::string> moduleKey;
    /// Paths that went away.
    std::int64_t itemCount = 0;
    /// Their bytes. They come free only when the Trash is emptied.
    std::int64_t reclaimedBytes = 0;
    /// What can still be put back.
    std::vector<TrashedEntry> entries;

    /// What the user sees: the title behind `moduleKey` in the running language. A key that this version doesn't know,
    /// or none, shows `module` as it was written.
    [[nodiscard]] const std::string& displayName() const;

    friend bool operator==(const CleanupRecord&, const CleanupRecord&) = default;
};

}  // namespace tavrin
