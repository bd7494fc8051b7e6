// Each desktop has a program of its own for screen captures, and each program a file of settings. The first that names
// a folder is believed. The desktop whose program has no such setting keeps none.
#include "TavrinCore/Platform/ScreenCapture.h"

#include "TavrinCore/Models/PercentEncoding.h"
#include "TavrinCore/Models/URL.h"
#include "TavrinCore/Platform/Folders.h"
#include "TavrinCore/Platform/ReadFile.h"

#include <array>
#include <cstddef>
#include <string_view>

namespace tavrin {
namespace {

constexpr std::size_t kMaxSettingsBytes = std::size_t{1} << 20U;

struct Setting {
    /// Below the folder of the users' settings.
    std::string_view file;
    /// Of the file; empty for what stands before the first one.
    std::string_view section;
    std::string_view key;
};

constexpr std::array<Setting, 3> kSettings{{
    {"spectaclerc", "ImageSave", "imageSaveLocation"},
    {"spectaclerc", "Save", "defaultSaveLocation"},  // before version 23.08
    {"xfce4/xfce4-screenshooter", "", "screenshot_dir"},
}};

std::string_view nextLine(std::string_view& rest) {
    const std::size_t end = rest.find('\n');
    const std::string_view line = rest.substr(0, end);
    rest = end == std::string_view::npos ? std::string_view() : rest.substr(end + 1);
    return line;
}

/// The value behind `key`, or behind "key[$e]", which says that variables in it are to be replaced.
std::optional<std::string_view> valueIn(std::string_view settings, std::string_view section, std::string_view key) {
    std::string_view current;
    while (!settings.empty()) {
        const std::string_view line = nextLine(settings);
        if (line.starts_with('[') && line.ends_with(']')) {
            current = line.substr(1, line.size() - 2);
            continue;
        }
        const std::size_t equals = line.find('=');
        if (current != section || equals == std::string_view::npos) continue;
        std::string_view name = line.substr(0, equals);
        if (name.ends_with("[$e]")) name.remove_suffix(4);
        if (name == key) return line.substr(equals + 1);
    }
    return std::nullopt;
}

/// Programs write a path or an absolute URL, and say "$HOME" for the home, in a URL too. Nil for what is no folder on
/// this machine.
std::optional<std::string> pathFrom(std::string_view value) {
    constexpr std::string_view home = "$HOME";
    constexpr std::string_view scheme = "file://";
    std::optional<std::string> decoded;
    if (value.starts_with(scheme) && value.substr(scheme.size()).starts_with(home)) {
        decoded = percentDecoded(value.substr(scheme.size()));
        if (!decoded) return std::nullopt;
        value = *decoded;
    }
    const auto isOrBelow = [value](std::string_view folder) {
        return value.starts_with(folder) && (value.size() == folder.size() || value[folder.size()] == '/');
    };
    if (isOrBelow(home)) return "~" + std::string(value.substr(home.size()));
    if (value.starts_with('/') || isOrBelow("~")) return std::string(value);
    const std::optional<URL> url = URL::fromAbsoluteString(value);
    return url ? std::optional(url->path()) : std::nullopt;
}

}  // namespace

std::optional<std::string> screenCaptureLocation() {
    for (const auto& [file, section, key] : kSettings) {
        const Result<std::string> settings =
            readSmallFile(configurationFolder().appendingPathComponent(file), kMaxSettingsBytes);
        if (!settings) continue;
        const std::optional<std::string_view> value = valueIn(*settings, section, key);
        if (!value) continue;
        if (std::optional<std::string> path = pathFrom(*value)) return path;
    }
    return std::nullopt;
}

}  // namespace tavrin
