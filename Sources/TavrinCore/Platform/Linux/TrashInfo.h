// The note that stands beside each item in the Trash and tells where it came from: a .trashinfo file as the
// freedesktop.org Trash specification 1.0 describes it.
#pragma once

#include "TavrinCore/Models/Date.h"
#include "TavrinCore/Platform/Linux/SystemCalls.h"
#include "TavrinCore/Platform/SystemError.h"

#include <ctime>
#include <optional>
#include <string>
#include <string_view>

namespace tavrin {

struct TrashInfo {
    static constexpr std::string_view suffix = ".trashinfo";

    /// Bytes, as the file system has them: absolute in the home's Trash, below the mount point in the others.
    std::string path;
    /// Nil where it is missing or can't be read.
    std::optional<Date> deleted;

    friend bool operator==(const TrashInfo&, const TrashInfo&) = default;
};

/// The whole file for an item that is deleted at `now`; the standard asks for local time.
[[nodiscard]] std::string trashInfoText(std::string_view path, std::time_t now);

/// Reads what any program wrote. Nil without the heading or without a path; what else stands in it is passed over.
[[nodiscard]] std::optional<TrashInfo> parseTrashInfo(std::string_view text);

/// Makes the file, which must not exist (EEXIST), with these contents, or leaves nothing behind.
[[nodiscard]] Outcome writeTrashInfo(SystemCalls& calls, int infoFolder, const std::string& fileName,
                                     std::string_view text);

}  // namespace tavrin
