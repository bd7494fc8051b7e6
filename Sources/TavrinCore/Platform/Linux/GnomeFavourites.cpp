// GSettings ends the program that asks for a schema or a key which isn't installed, so both are looked up first.
#define G_SETTINGS_ENABLE_BACKEND
#include "TavrinCore/Platform/Linux/GnomeFavourites.h"

#include <gio/gio.h>
#include <gio/gsettingsbackend.h>

#include <string>
#include <utility>

namespace tavrin {
namespace {

constexpr const char* kSchema = "org.gnome.shell";
constexpr const char* kFavourites = "favorite-apps";
/// The favourite's own name in its tile, to be written back.
constexpr const char* kIdentifier = "desktop-entry";

struct Release {
    void operator()(GSettings* settings) const { g_object_unref(settings); }
    void operator()(GSettingsBackend* backend) const { g_object_unref(backend); }
    void operator()(GSettingsSchema* schema) const { g_settings_schema_unref(schema); }
    void operator()(GSettingsSchemaKey* key) const { g_settings_schema_key_unref(key); }
    void operator()(GSettingsSchemaSource* source) const { g_settings_schema_source_unref(source); }
    void operator()(GVariant* value) const { g_variant_unref(value); }
};
template <class T>
using Owned = std::unique_ptr<T, Release>;

/// Null where no schema is installed at all.
Owned<GSettingsSchemaSource> schemaSource(const std::optional<URL>& folder) {
    if (folder) {
        const char* path = folder->path().c_str();
        return Owned<GSettingsSchemaSource>(g_settings_schema_source_new_from_directory(path, nullptr, FALSE, nullptr));
    }
    GSettingsSchemaSource* source = g_settings_schema_source_get_default();
    return Owned<GSettingsSchemaSource>(source != nullptr ? g_settings_schema_source_ref(source) : nullptr);
}

bool isListOfTexts(GSettingsSchema* schema) {
    if (g_settings_schema_has_key(schema, kFavourites) == FALSE) return false;
    const Owned<GSettingsSchemaKey> key(g_settings_schema_get_key(schema, kFavourites));
    return g_variant_type_equal(g_settings_schema_key_get_value_type(key.get()), G_VARIANT_TYPE_STRING_ARRAY) != FALSE;
}

PropertyList dictionary(std::string_view key, PropertyList value) {
    PropertyList::Dictionary entries;
    entries.emplace(key, std::move(value));
    return PropertyList(std::move(entries));
}

class GnomeFavourites final : public DockStore {
  public:
    GnomeFavourites(Owned<GSettings> settings, std::vector<URL> desktopEntries)
        : settings_(std::move(settings)), desktopEntries_(std::move(desktopEntries)) {}

    std::optional<PropertyList> tiles() override {
        const Owned<GVariant> stored(g_settings_get_user_value(settings_.get(), kFavourites));
        if (stored == nullptr) return std::nullopt;
        PropertyList::Array tiles;
        for (gsize i = 0; i < g_variant_n_children(stored.get()); ++i) {
            const Owned<GVariant> favourite(g_variant_get_child_value(stored.get(), i));
            tiles.push_back(tile(g_variant_get_string(favourite.get(), nullptr)));
        }
        return PropertyList(std::move(tiles));
    }

    void setTiles(const PropertyList::Array& tiles) override {
        std::vector<const char*> favourites;
        for (const PropertyList& tile : tiles)
            favourites.push_back(tile.string(kIdentifier)->c_str());
        favourites.push_back(nullptr);
        // Refused where the machine's administrator has settled the favourites.
        if (g_settings_set_strv(settings_.get(), kFavourites, favourites.data()) != FALSE) g_settings_sync();
    }

    void restartDock() override {}

  private:
    [[nodiscard]] PropertyList tile(const std::string& identifier) const {
        PropertyList url(appOf(identifier).absoluteString());
        PropertyList::Dictionary entries;
        entries.emplace(kIdentifier, PropertyList(identifier));
        entries.emplace(dockTile::tileData, dictionary(dockTile::fileData, dictionary(dockTile::url, std::move(url))));
        return PropertyList(std::move(entries));
    }

    [[nodiscard]] URL appOf(const std::string& identifier) const {
        if (const std::optional<URL> file = desktopEntryFile(identifier, desktopEntries_))
            return appOfDesktopEntry(*file);
        return desktopEntries_.front().appendingPathComponent(identifier);
    }

    Owned<GSettings> settings_;
    /// Never empty.
    std::vector<URL> desktopEntries_;
};

}  // namespace

std::unique_ptr<DockStore> gnomeFavourites(const GnomePlaces& places) {
    const Owned<GSettingsSchemaSource> source = schemaSource(places.schemas);
    if (source == nullptr) return nullptr;
    const Owned<GSettingsSchema> schema(g_settings_schema_source_lookup(source.get(), kSchema, TRUE));
    if (schema == nullptr || !isListOfTexts(schema.get())) return nullptr;
    const Owned<GSettingsBackend> backend(
        places.settings ? g_keyfile_settings_backend_new(places.settings->path().c_str(), "/", nullptr) : nullptr);
    Owned<GSettings> settings(g_settings_new_full(schema.get(), backend.get(), nullptr));
    return std::make_unique<GnomeFavourites>(std::move(settings), places.desktopEntries);
}

}  // namespace tavrin
