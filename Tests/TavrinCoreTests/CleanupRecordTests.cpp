#include "TavrinCore/Cleaning/CleanupRecord.h"
#include "TavrinCore/Models/ModuleKind.h"
#include "TavrinCore/Strings.h"

#include <gtest/gtest.h>

namespace tavrin {
namespace {

CleanupRecord record(std::optional<std::string> moduleKey) {
    return {.id = UUID::random(), .date = {}, .module = "as written", .moduleKey = std::move(moduleKey), .entries = {}};
}

TEST(CleanupRecord, aModulesKeyShowsItsTitleInTheRunningLanguage) {
    for (ModuleKind kind : allModuleKinds)
        EXPECT_EQ(record(std::string(rawValue(kind))).displayName(), title(kind));
}

TEST(CleanupRecord, theTwoSpecialKeysShowTheirOwnTitles) {
    EXPECT_EQ(record("smartScan").displayName(), S::smartTitle());
    EXPECT_EQ(record("emptyTrash").displayName(), S::trashHistoryLabel());
    EXPECT_EQ(S::trashHistoryLabel(), S::useEnglish() ? "Empty Trash (permanent)" : "Vaciar Papelera (permanente)");
}

TEST(CleanupRecord, withoutAKeyOrWithAnUnknownOneItShowsTheTitleAsWritten) {
    for (const std::optional<std::string>& key :
         {std::optional<std::string>(), std::optional<std::string>(""), std::optional<std::string>("SystemJunk"),
          std::optional<std::string>("aModuleOfTomorrow")})
        EXPECT_EQ(record(key).displayName(), "as written");
}

}  // namespace
}  // namespace tavrin
