// Where the desktop's dock keeps its app tiles.
#pragma once

#include "TavrinCore/Scanning/PropertyList.h"

#include <memory>
#include <optional>
#include <string_view>

namespace tavrin {

/// A tile is a dictionary. Down these three keys it holds the file URL of its app; a spacer has none. Whatever else it
/// holds is the store's own, and comes back with it.
namespace dockTile {
inline constexpr std::string_view tileData = "tile-data";
inline constexpr std::string_view fileData = "file-data";
inline constexpr std::string_view url = "_CFURLString";
}  // namespace dockTile

/// On one thread from its making to its end; any thread will do, and each call may wait for other programs.
class DockStore {
  public:
    virtual ~DockStore() = default;
    DockStore(const DockStore&) = delete;
    DockStore& operator=(const DockStore&) = delete;

    /// What is stored for the tiles, in their order: an array of dictionaries, unless somebody broke it. Nil where the
    /// user has nothing stored.
    [[nodiscard]] virtual std::optional<PropertyList> tiles() = 0;
    /// Stores these instead, and returns when that is done. Each is one that tiles() gave. A refusal is swallowed.
    virtual void setTiles(const PropertyList::Array& tiles) = 0;
    /// Has the dock show what is stored. A failure is swallowed: it does so when it starts the next time.
    virtual void restartDock() = 0;

  protected:
    DockStore() = default;
};

/// The dock of the user's desktop; null where there is none that this program knows.
///
/// On macOS the Dock's own preferences. On Linux the favourites of GNOME Shell, in its dash; the tile of a favourite
/// points to the app that its desktop entry starts.
[[nodiscard]] std::unique_ptr<DockStore> systemDockStore();

}  // namespace tavrin
