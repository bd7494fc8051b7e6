// The catalogue of the fifteen modules and the two sections of the sidebar that they stand in.
#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace tavrin {

/// In the order of every list of modules.
enum class ModuleKind : std::uint8_t {
    systemJunk,
    duplicates,
    largeFiles,
    uninstaller,
    similarImages,
    appLanguages,
    loginItems,
    developerJunk,
    mailAttachments,
    screenshots,
    downloadsJunk,
    browserCaches,
    iosBackups,
    messagesAttachments,
    unusedApps,
};

enum class ModuleSection : std::uint8_t {
    cleanup,
    space,
};

inline constexpr std::array allModuleKinds{
    ModuleKind::systemJunk,      ModuleKind::duplicates,          ModuleKind::largeFiles,    ModuleKind::uninstaller,
    ModuleKind::similarImages,   ModuleKind::appLanguages,        ModuleKind::loginItems,    ModuleKind::developerJunk,
    ModuleKind::mailAttachments, ModuleKind::screenshots,         ModuleKind::downloadsJunk, ModuleKind::browserCaches,
    ModuleKind::iosBackups,      ModuleKind::messagesAttachments, ModuleKind::unusedApps,
};
inline constexpr std::array allModuleSections{ModuleSection::cleanup, ModuleSection::space};

/// The stable key: the case's own name. The history file keeps it; a title is never stored as a key.
[[nodiscard]] std::string_view rawValue(ModuleKind kind);
[[nodiscard]] std::string_view rawValue(ModuleSection section);
/// The module with that raw value, compared exactly; nil when there is none.
[[nodiscard]] std::optional<ModuleKind> moduleKindFromRawValue(std::string_view rawValue);
[[nodiscard]] std::optional<ModuleSection> moduleSectionFromRawValue(std::string_view rawValue);

[[nodiscard]] ModuleSection section(ModuleKind kind);
/// Texts of the running language.
[[nodiscard]] const std::string& title(ModuleKind kind);
[[nodiscard]] const std::string& subtitle(ModuleKind kind);
[[nodiscard]] const std::string& title(ModuleSection section);
/// The key of the module's symbol in the icon set.
[[nodiscard]] std::string_view symbol(ModuleKind kind);

}  // namespace tavrin
