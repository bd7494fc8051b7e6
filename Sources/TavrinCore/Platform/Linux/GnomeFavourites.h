// The favourites in the dash of GNOME Shell, as a dock.
#pragma once

#include "TavrinCore/Platform/DockStore.h"
#include "TavrinCore/Platform/Linux/DesktopEntry.h"

#include <memory>
#include <optional>
#include <vector>

namespace tavrin {

/// Where the favourites are looked for. Left alone, it is the user's own desktop.
struct GnomePlaces {
    /// A folder with compiled schemas, instead of those of the system.
    std::optional<URL> schemas = std::nullopt;
    /// A key file with the settings, instead of the user's database.
    std::optional<URL> settings = std::nullopt;
    std::vector<URL> desktopEntries = desktopEntryFolders();
};

/// Null where the shell's schema isn't installed, or has no such list. Favourites that the user never touched are the
/// desktop's own, and count as nothing stored.
///
/// A favourite is the identifier of a desktop entry. One that has no entry any more points to where the user's own
/// would stand, so its app is gone. The shell shows each change by itself.
[[nodiscard]] std::unique_ptr<DockStore> gnomeFavourites(const GnomePlaces& places = {});

}  // namespace tavrin
