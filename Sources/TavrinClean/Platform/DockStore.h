// Where the desktop keeps which apps stand in its Dock.
#pragma once

#include <cstddef>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace tavrin {

struct DockTile {
    /// Which of the store's entries this is, so that it can be written back as it was.
    std::size_t entry = 0;
    /// The file URL of its app, as written; nil for a spacer and for what has another shape.
    std::optional<std::string> urlString;

    friend bool operator==(const DockTile&, const DockTile&) = default;
};

class DockStore {
  public:
    virtual ~DockStore() = default;

    /// Nil when there are none, or they aren't in the shape that is known.
    [[nodiscard]] virtual std::optional<std::vector<DockTile>> tiles() = 0;
    /// Keeps these and no others.
    virtual void setTiles(const std::vector<DockTile>& kept) = 0;
    /// Has the Dock read them; waits for that.
    virtual void restartDock() = 0;

  protected:
    DockStore() = default;
    DockStore(const DockStore&) = default;
    DockStore& operator=(const DockStore&) = default;
};

/// Null where the system has no such store.
[[nodiscard]] std::unique_ptr<DockStore> systemDockStore();

}  // namespace tavrin
