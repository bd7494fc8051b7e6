#include "TavrinClean/Kit/DockCleaner.h"

#include "TavrinCore/Scanning/FileSystemUtils.h"

namespace tavrin {
namespace {

std::optional<URL> appURL(const DockTile& tile) {
    if (!tile.urlString) return std::nullopt;
    const std::optional<URL> url = URL::fromAbsoluteString(*tile.urlString);
    return url ? std::optional(url->standardizedFileURL()) : std::nullopt;
}

}  // namespace

std::size_t DockCleaner::removeEntries(const std::set<std::string>& removedAppPaths) {
    const std::unique_ptr<DockStore> store = systemDockStore();
    return store != nullptr ? removeEntries(removedAppPaths, *store, FileSystemUtils::exists) : 0;
}

std::size_t DockCleaner::removeEntries(const std::set<std::string>& removedAppPaths, DockStore& store,
                                       const std::function<bool(const URL&)>& exists) {
    const std::optional<std::vector<DockTile>> tiles = store.tiles();
    if (!tiles) return 0;
    std::vector<DockTile> kept;
    for (const DockTile& tile : *tiles) {
        const std::optional<URL> app = appURL(tile);
        if (!app || (!removedAppPaths.contains(app->path()) && exists(*app))) kept.push_back(tile);
    }
    const std::size_t dropped = tiles->size() - kept.size();
    if (dropped > 0) {
        store.setTiles(kept);
        store.restartDock();
    }
    return dropped;
}

}  // namespace tavrin
