#include "TavrinCore/DockCleaner.h"

#include "TavrinCore/Scanning/FileSystemUtils.h"

#include <algorithm>
#include <iterator>
#include <memory>
#include <optional>

namespace tavrin {
namespace {

/// Standardised; nil for a tile that names no file.
std::optional<URL> appPath(const PropertyList& tile) {
    const PropertyList* tileData = tile.value(dockTile::tileData);
    const PropertyList* fileData = tileData != nullptr ? tileData->value(dockTile::fileData) : nullptr;
    const std::string* text = fileData != nullptr ? fileData->string(dockTile::url) : nullptr;
    if (text == nullptr) return std::nullopt;
    // Some programs write the path of a URL alone, with its escapes.
    const std::optional<URL> url = URL::fromAbsoluteString(text->starts_with('/') ? "file://" + *text : *text);
    return url ? std::optional(url->standardizedFileURL()) : std::nullopt;
}

bool areDictionaries(const PropertyList::Array& tiles) {
    return std::ranges::all_of(tiles, [](const PropertyList& tile) { return tile.dictionary() != nullptr; });
}

}  // namespace

std::int64_t DockCleaner::removeEntries(const std::set<std::string>& removedAppPaths) {
    const std::unique_ptr<DockStore> store = systemDockStore();
    return store != nullptr ? removeEntries(removedAppPaths, *store) : 0;
}

bool DockCleaner::mayExist(const URL& url) {
    return !FileSystemUtils::isGone(url);
}

std::int64_t DockCleaner::removeEntries(const std::set<std::string>& removedAppPaths, DockStore& store,
                                        const FileExists& fileExists) {
    const std::optional<PropertyList> stored = store.tiles();
    const PropertyList::Array* tiles = stored ? stored->array() : nullptr;
    if (tiles == nullptr || !areDictionaries(*tiles)) return 0;

    PropertyList::Array kept;
    std::ranges::copy_if(*tiles, std::back_inserter(kept), [&](const PropertyList& tile) {
        const std::optional<URL> app = appPath(tile);
        return !app || (!removedAppPaths.contains(app->path()) && fileExists(*app));
    });
    const std::size_t dropped = tiles->size() - kept.size();
    if (dropped == 0) return 0;

    store.setTiles(kept);
    store.restartDock();
    return static_cast<std::int64_t>(dropped);
}

}  // namespace tavrin
