#include "SymbolTable.h"

#include <algorithm>
#include <array>

namespace tavrin {
namespace {

// Sorted by key. The files are glyphs of the Phosphor set; those that begin with "own" are composed by us in its
// manner.
constexpr std::array symbols{
    SymbolFile{"app", "app-window"},
    SymbolFile{"app.badge", "own-app-badge"},
    SymbolFile{"app.badge.checkmark", "own-app-badge-check"},
    SymbolFile{"arrow.clockwise", "arrow-clockwise"},
    SymbolFile{"arrow.down.circle", "arrow-circle-down"},
    SymbolFile{"arrow.triangle.2.circlepath", "arrows-clockwise"},
    SymbolFile{"arrow.uturn.backward", "arrow-u-up-left"},
    SymbolFile{"arrow.uturn.backward.circle.fill", "own-u-turn-circle-fill"},
    SymbolFile{"bell.badge.fill", "bell-ringing-fill"},
    SymbolFile{"bolt.fill", "lightning-fill"},
    SymbolFile{"calendar", "calendar-blank"},
    SymbolFile{"camera.viewfinder", "own-camera-viewfinder"},
    SymbolFile{"chart.pie.fill", "chart-pie-fill"},
    SymbolFile{"checkmark", "check-bold"},
    SymbolFile{"checkmark.circle.fill", "check-circle-fill"},
    SymbolFile{"checkmark.seal", "seal-check"},
    SymbolFile{"checkmark.seal.fill", "seal-check-fill"},
    SymbolFile{"checkmark.shield.fill", "shield-check-fill"},
    SymbolFile{"checkmark.square.fill", "check-square-fill"},
    SymbolFile{"chevron.down", "caret-down"},
    SymbolFile{"chevron.right", "caret-right"},
    SymbolFile{"chevron.up.chevron.down", "caret-up-down"},
    SymbolFile{"circle", "circle"},
    SymbolFile{"clock.arrow.2.circlepath", "own-clock-arrows"},
    SymbolFile{"clock.arrow.circlepath", "clock-counter-clockwise"},
    SymbolFile{"doc", "file"},
    SymbolFile{"doc.on.doc", "copy"},
    SymbolFile{"doc.text", "file-text"},
    SymbolFile{"doc.zipper", "file-zip"},
    SymbolFile{"exclamationmark.circle.fill", "warning-circle-fill"},
    SymbolFile{"exclamationmark.triangle.fill", "warning-fill"},
    SymbolFile{"externaldrive", "hard-drive"},
    SymbolFile{"externaldrive.badge.timemachine", "own-drive-clock"},
    SymbolFile{"eye", "eye"},
    SymbolFile{"film", "film-strip"},
    SymbolFile{"folder", "folder"},
    SymbolFile{"folder.fill", "folder-fill"},
    SymbolFile{"gearshape", "gear-six"},
    SymbolFile{"globe", "globe"},
    SymbolFile{"hammer", "hammer"},
    SymbolFile{"info.circle.fill", "info-fill"},
    SymbolFile{"internaldrive.fill", "hard-drive-fill"},
    SymbolFile{"iphone", "device-mobile"},
    SymbolFile{"line.3.horizontal", "own-menu"},
    SymbolFile{"lock.rotation", "own-lock-rotation"},
    SymbolFile{"lock.shield", "own-lock-shield"},
    SymbolFile{"magnifyingglass", "magnifying-glass"},
    SymbolFile{"memorychip", "memory"},
    SymbolFile{"memorychip.fill", "memory-fill"},
    SymbolFile{"message", "chat"},
    SymbolFile{"minus", "minus-bold"},
    SymbolFile{"minus.square.fill", "minus-square-fill"},
    SymbolFile{"music.note", "music-note"},
    SymbolFile{"network", "network"},
    SymbolFile{"paperclip", "paperclip"},
    SymbolFile{"person.crop.circle.badge.checkmark", "user-circle-check"},
    SymbolFile{"photo", "image"},
    SymbolFile{"photo.on.rectangle.angled", "images"},
    SymbolFile{"power", "power"},
    SymbolFile{"safari", "compass"},
    SymbolFile{"shield.lefthalf.filled", "own-shield-half"},
    SymbolFile{"sparkles", "sparkle-fill"},
    SymbolFile{"square", "square"},
    SymbolFile{"square.grid.2x2", "squares-four"},
    SymbolFile{"square.stack.3d.up.fill", "stack-fill"},
    SymbolFile{"stop.fill", "stop-fill"},
    SymbolFile{"textformat", "text-aa"},
    SymbolFile{"trash", "trash"},
    SymbolFile{"trash.fill", "trash-fill"},
    SymbolFile{"trash.slash", "own-trash-slash"},
    SymbolFile{"trash.slash.fill", "own-trash-slash-fill"},
    SymbolFile{"xmark", "x"},
    SymbolFile{"xmark.bin", "own-trash-x"},
    SymbolFile{"xmark.circle", "x-circle"},
    SymbolFile{"xmark.circle.fill", "x-circle-fill"},
};
static_assert(std::ranges::is_sorted(symbols, {}, &SymbolFile::key));

}  // namespace

std::span<const SymbolFile> symbolFiles() {
    return symbols;
}

std::string_view symbolFile(std::string_view key) {
    const auto* found = std::ranges::lower_bound(symbols, key, {}, &SymbolFile::key);
    return found != symbols.end() && found->key == key ? found->file : std::string_view();
}

}  // namespace tavrin
