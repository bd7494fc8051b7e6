#include "TavrinCore/Models/Models.h"

#include <gtest/gtest.h>

#include <set>

namespace tavrin {
namespace {

CleanableItem finding(const URL& url) {
    return {.id = UUID::random(), .url = url, .size = 1, .category = ScanCategory::logs};
}

TEST(ModuleKind, aRawValueIsComparedExactly) {
    EXPECT_EQ(moduleKindFromRawValue("systemjunk"), std::nullopt);
    EXPECT_EQ(moduleKindFromRawValue(""), std::nullopt);
    EXPECT_EQ(moduleKindFromRawValue("systemJunk"), ModuleKind::systemJunk);
    for (ModuleKind kind : allModuleKinds)
        EXPECT_EQ(moduleKindFromRawValue(rawValue(kind)), kind);
}

TEST(ModuleKind, theCatalogueHasFifteenModulesInTheirOrder) {
    const std::vector<std::string_view> expected{
        "systemJunk",    "duplicates",    "largeFiles",    "uninstaller",         "similarImages",
        "appLanguages",  "loginItems",    "developerJunk", "mailAttachments",     "screenshots",
        "downloadsJunk", "browserCaches", "iosBackups",    "messagesAttachments", "unusedApps"};
    std::vector<std::string_view> values;
    for (ModuleKind kind : allModuleKinds)
        values.push_back(rawValue(kind));
    EXPECT_EQ(values, expected);
}

TEST(ModuleKind, sevenModulesGiveSpaceAndTheOthersCleanUp) {
    const std::set<ModuleKind> space{
        ModuleKind::duplicates,    ModuleKind::largeFiles, ModuleKind::similarImages,      ModuleKind::screenshots,
        ModuleKind::downloadsJunk, ModuleKind::iosBackups, ModuleKind::messagesAttachments};
    for (ModuleKind kind : allModuleKinds)
        EXPECT_EQ(section(kind) == ModuleSection::space, space.contains(kind)) << rawValue(kind);
}

TEST(ModuleKind, everyModuleHasTwoTextsAndASymbolOfItsOwn) {
    std::set<std::string> texts;
    std::set<std::string_view> symbols;
    for (ModuleKind kind : allModuleKinds) {
        EXPECT_TRUE(texts.insert(title(kind)).second);
        EXPECT_TRUE(texts.insert(subtitle(kind)).second);
        EXPECT_TRUE(symbols.insert(symbol(kind)).second);
    }
    EXPECT_EQ(symbol(ModuleKind::similarImages), "photo.on.rectangle.angled");
}

TEST(ModuleSection, thereAreTwoInTheirOrder) {
    ASSERT_EQ(allModuleSections.size(), 2U);
    EXPECT_EQ(rawValue(allModuleSections[0]), "cleanup");
    EXPECT_EQ(rawValue(allModuleSections[1]), "space");
    EXPECT_EQ(moduleSectionFromRawValue("space"), ModuleSection::space);
    EXPECT_EQ(moduleSectionFromRawValue("Space"), std::nullopt);
}

TEST(ScanCategory, thereAreTwentyTwoInTheirOrder) {
    const std::vector<std::string_view> expected{
        "systemCache",  "userCache",    "logs",         "tempFiles",         "appLeftovers",   "derivedData",
        "duplicate",    "largeFile",    "oldFile",      "downloads",         "trash",          "application",
        "similarImage", "appLanguage",  "startupItem",  "developerCache",    "buildArtifacts", "mailAttachment",
        "screenshot",   "browserCache", "deviceBackup", "messagesAttachment"};
    std::vector<std::string_view> values;
    for (ScanCategory category : allScanCategories) {
        values.push_back(rawValue(category));
        EXPECT_EQ(scanCategoryFromRawValue(rawValue(category)), category);
        EXPECT_FALSE(displayName(category).empty());
    }
    EXPECT_EQ(values, expected);
    EXPECT_EQ(scanCategoryFromRawValue("cache"), std::nullopt);
}

TEST(CleanableItem, theNameOfAURLThatEndsInASlashIsTheFoldersName) {
    EXPECT_EQ(finding(URL::fromPath("/a/com.foo.app/")).name(), "com.foo.app");
}

TEST(CleanableItem, twoFindingsOfOnePathAreUnequal) {
    const URL url = URL::fromPath("/a");
    const CleanableItem first = finding(url);
    EXPECT_EQ(first, CleanableItem(first));
    EXPECT_NE(first, finding(url));
}

TEST(ScanError, carriesTheRootThatWasDeniedAndNoWords) {
    const URL root = URL::fromPath("/a/");
    EXPECT_EQ(ScanError::accessDenied(root).root(), root);
    EXPECT_EQ(ScanError::cancelled().root(), std::nullopt);
    EXPECT_NE(ScanError::cancelled(), ScanError::accessDenied(root));
}

}  // namespace
}  // namespace tavrin
