#include "TavrinCore/Models/Models.h"

#include "TavrinCore/Strings.h"

#include <algorithm>
#include <array>

namespace tavrin {
namespace {

struct ModuleRow {
    ModuleKind kind;
    std::string_view rawValue;
    ModuleSection section;
    const std::string& (*title)();
    const std::string& (*subtitle)();
    std::string_view symbol;
};

using enum ModuleKind;
constexpr auto cleanup = ModuleSection::cleanup;
constexpr auto space = ModuleSection::space;

// clang-format off
constexpr std::array<ModuleRow, 15> kModules{{
    {systemJunk, "systemJunk", cleanup, S::moduleSystemJunkTitle, S::moduleSystemJunkSubtitle, "trash"},
    {duplicates, "duplicates", space, S::moduleDuplicatesTitle, S::moduleDuplicatesSubtitle, "doc.on.doc"},
    {largeFiles, "largeFiles", space, S::moduleLargeFilesTitle, S::moduleLargeFilesSubtitle, "externaldrive"},
    {uninstaller, "uninstaller", cleanup, S::moduleUninstallerTitle, S::moduleUninstallerSubtitle, "xmark.bin"},
    {similarImages, "similarImages", space, S::moduleSimilarImagesTitle, S::moduleSimilarImagesSubtitle, "photo.on.rectangle.angled"},
    {appLanguages, "appLanguages", cleanup, S::moduleAppLanguagesTitle, S::moduleAppLanguagesSubtitle, "globe"},
    {loginItems, "loginItems", cleanup, S::moduleLoginItemsTitle, S::moduleLoginItemsSubtitle, "power"},
    {developerJunk, "developerJunk", cleanup, S::moduleDeveloperJunkTitle, S::moduleDeveloperJunkSubtitle, "hammer"},
    {mailAttachments, "mailAttachments", cleanup, S::moduleMailAttachmentsTitle, S::moduleMailAttachmentsSubtitle, "paperclip"},
    {screenshots, "screenshots", space, S::moduleScreenshotsTitle, S::moduleScreenshotsSubtitle, "camera.viewfinder"},
    {downloadsJunk, "downloadsJunk", space, S::moduleDownloadsJunkTitle, S::moduleDownloadsJunkSubtitle, "arrow.down.circle"},
    {browserCaches, "browserCaches", cleanup, S::moduleBrowserCachesTitle, S::moduleBrowserCachesSubtitle, "safari"},
    {iosBackups, "iosBackups", space, S::moduleIOSBackupsTitle, S::moduleIOSBackupsSubtitle, "iphone"},
    {messagesAttachments, "messagesAttachments", space, S::moduleMessagesAttachmentsTitle, S::moduleMessagesAttachmentsSubtitle, "message"},
    {unusedApps, "unusedApps", cleanup, S::moduleUnusedAppsTitle, S::moduleUnusedAppsSubtitle, "app.badge"},
}};
// clang-format on

struct CategoryRow {
    ScanCategory category;
    std::string_view rawValue;
    const std::string& (*displayName)();
};

using C = ScanCategory;
constexpr std::array<CategoryRow, 22> kCategories{{
    {C::systemCache, "systemCache", S::categorySystemCache},
    {C::userCache, "userCache", S::categoryUserCache},
    {C::logs, "logs", S::categoryLogs},
    {C::tempFiles, "tempFiles", S::categoryTempFiles},
    {C::appLeftovers, "appLeftovers", S::categoryAppLeftovers},
    {C::derivedData, "derivedData", S::categoryDerivedData},
    {C::duplicate, "duplicate", S::categoryDuplicate},
    {C::largeFile, "largeFile", S::categoryLargeFile},
    {C::oldFile, "oldFile", S::categoryOldFile},
    {C::downloads, "downloads", S::categoryDownloads},
    {C::trash, "trash", S::categoryTrash},
    {C::application, "application", S::categoryApplication},
    {C::similarImage, "similarImage", S::categorySimilarImage},
    {C::appLanguage, "appLanguage", S::categoryAppLanguage},
    {C::startupItem, "startupItem", S::categoryStartupItem},
    {C::developerCache, "developerCache", S::categoryDeveloperCache},
    {C::buildArtifacts, "buildArtifacts", S::categoryBuildArtifacts},
    {C::mailAttachment, "mailAttachment", S::categoryMailAttachment},
    {C::screenshot, "screenshot", S::categoryScreenshot},
    {C::browserCache, "browserCache", S::categoryBrowserCache},
    {C::deviceBackup, "deviceBackup", S::categoryDeviceBackup},
    {C::messagesAttachment, "messagesAttachment", S::categoryMessagesAttachment},
}};

// A row is found by its case's number, so the tables and the enumerations must stand in one order.
static_assert(std::ranges::equal(kModules, allModuleKinds, {}, &ModuleRow::kind));
static_assert(std::ranges::equal(kCategories, allScanCategories, {}, &CategoryRow::category));

const ModuleRow& row(ModuleKind kind) {
    return kModules.at(static_cast<std::size_t>(kind));
}
const CategoryRow& row(ScanCategory category) {
    return kCategories.at(static_cast<std::size_t>(category));
}

}  // namespace

std::string_view rawValue(ModuleKind kind) {
    return row(kind).rawValue;
}
std::optional<ModuleKind> moduleKindFromRawValue(std::string_view rawValue) {
    const auto found = std::ranges::find(kModules, rawValue, &ModuleRow::rawValue);
    if (found == kModules.end()) return std::nullopt;
    return found->kind;
}
ModuleSection section(ModuleKind kind) {
    return row(kind).section;
}
const std::string& title(ModuleKind kind) {
    return row(kind).title();
}
const std::string& subtitle(ModuleKind kind) {
    return row(kind).subtitle();
}
std::string_view symbol(ModuleKind kind) {
    return row(kind).symbol;
}

std::string_view rawValue(ModuleSection section) {
    return section == ModuleSection::cleanup ? "cleanup" : "space";
}
std::optional<ModuleSection> moduleSectionFromRawValue(std::string_view text) {
    for (ModuleSection section : allModuleSections) {
        if (rawValue(section) == text) return section;
    }
    return std::nullopt;
}
const std::string& title(ModuleSection section) {
    return section == ModuleSection::cleanup ? S::sectionCleanup() : S::sectionSpace();
}

std::string_view rawValue(ScanCategory category) {
    return row(category).rawValue;
}
std::optional<ScanCategory> scanCategoryFromRawValue(std::string_view rawValue) {
    const auto found = std::ranges::find(kCategories, rawValue, &CategoryRow::rawValue);
    if (found == kCategories.end()) return std::nullopt;
    return found->category;
}
const std::string& displayName(ScanCategory category) {
    return row(category).displayName();
}

const char* ScanError::what() const noexcept {
    return kind_ == Kind::cancelled ? "cancelled" : "accessDenied";
}

}  // namespace tavrin
