// Desktop entries, the files by which a Linux desktop knows its apps (freedesktop.org Desktop Entry Specification 1.5).
#pragma once

#include "TavrinCore/Models/URL.h"

#include <optional>
#include <string_view>
#include <vector>

namespace tavrin {

/// The folders with the desktop entries of the user's apps, most important first; they need not exist. Beside those
/// that the environment names, the ones into which Flatpak and Snap put theirs: a program may well be started without
/// them in its environment, and must not take their apps for gone.
[[nodiscard]] std::vector<URL> desktopEntryFolders();

/// The file of the entry with this identifier ("org.example.App.desktop"); nil where none of `folders` has it. A dash
/// in an identifier may stand for a subfolder.
[[nodiscard]] std::optional<URL> desktopEntryFile(std::string_view identifier, const std::vector<URL>& folders);

/// What the entry starts: the program's absolute path, or the whole .app that it lies in. The entry itself where it
/// starts its program by the search path, or can't be read. The program need not exist.
[[nodiscard]] URL appOfDesktopEntry(const URL& file);

}  // namespace tavrin
