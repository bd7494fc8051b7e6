#include "KitWorld.h"
#include "TavrinClean/Kit/Arrangement.h"
#include "TavrinCore/Strings.h"

#include <gtest/gtest.h>

namespace tavrin::test {
namespace {

const InstallDate noDates;

std::shared_ptr<const Findings> findings(ModuleKind kind, std::vector<CleanableItem> items) {
    return std::make_shared<const Findings>(kind, std::move(items));
}

std::vector<std::string> sortedNames(const Findings& all, SortOrder order, const InstallDate& dates = noDates) {
    std::vector<std::string> names;
    for (const std::uint32_t item : sorted(all, order, dates))
        names.emplace_back(all[item].name());
    return names;
}

/// "title: name name" for each group.
std::vector<std::string> told(const Arrangement& arrangement) {
    std::vector<std::string> lines;
    for (const ArrangedGroup& group : arrangement.groups) {
        std::string line = groupTitle(*arrangement.findings, group) + ":";
        for (std::uint32_t at = group.begin; at < group.end; ++at)
            line += " " + std::string((*arrangement.findings)[arrangement.order[at]].name());
        lines.push_back(line);
    }
    return lines;
}

using Lines = std::vector<std::string>;

TEST(SortOrder, onlyModulesOfDatedFilesOfferDates) {
    for (const ModuleKind kind : allModuleKinds) {
        const bool dated = kind == ModuleKind::largeFiles || kind == ModuleKind::uninstaller ||
                           kind == ModuleKind::screenshots || kind == ModuleKind::downloadsJunk;
        const auto orders = availableSortOrders(kind);
        const std::vector<SortOrder> given(orders.begin(), orders.end());
        const std::vector<SortOrder> all(allSortOrders.begin(), allSortOrders.end());
        EXPECT_EQ(given, dated ? all : (std::vector{SortOrder::sizeDesc, SortOrder::sizeAsc, SortOrder::name}));
    }
}

TEST(SortOrder, rawValuesAreTheCasesNames) {
    EXPECT_EQ(rawValue(SortOrder::dateOldest), "dateOldest");
    for (const SortOrder order : allSortOrders)
        EXPECT_EQ(sortOrderFromRawValue(rawValue(order)), order);
    EXPECT_EQ(sortOrderFromRawValue("Name"), std::nullopt);
    EXPECT_EQ(label(SortOrder::name), S::moduleSortName());
    EXPECT_EQ(label(SortOrder::dateNewest), S::moduleSortDateNewest());
}

TEST(Arrangement, bySizeTiesKeepTheScannersOrder) {
    const auto all = findings(ModuleKind::systemJunk,
                              {finding("b", 1), finding("a", 1), finding("c", 9), finding("d", 1), finding("e", 9)});
    EXPECT_EQ(sortedNames(*all, SortOrder::sizeDesc), (Lines{"c", "e", "b", "a", "d"}));
    EXPECT_EQ(sortedNames(*all, SortOrder::sizeAsc), (Lines{"b", "a", "d", "c", "e"}));
}

TEST(Arrangement, byNameAsPeopleLookThemUp) {
    const auto all = findings(ModuleKind::systemJunk, {finding("banana", 1), finding("Apple", 1), finding("cherry", 1),
                                                       finding("other/apple", 1), finding("Banana", 1)});
    EXPECT_EQ(sortedNames(*all, SortOrder::name), (Lines{"Apple", "apple", "banana", "Banana", "cherry"}));
}

TEST(Arrangement, byDateFilesWithoutOneAreTheOldest) {
    const std::map<std::string, Date> dates{{"/home/me/new", Date::fromReference(20)},
                                            {"/home/me/old", Date::fromReference(10)}};
    const InstallDate installDate = [&dates](const URL& url) -> std::optional<Date> {
        const auto found = dates.find(url.path());
        return found != dates.end() ? std::optional(found->second) : std::nullopt;
    };
    const auto all = findings(ModuleKind::largeFiles,
                              {finding("none1", 1), finding("old", 1), finding("none2", 1), finding("new", 1)});
    EXPECT_EQ(sortedNames(*all, SortOrder::dateNewest, installDate), (Lines{"new", "old", "none1", "none2"}));
    EXPECT_EQ(sortedNames(*all, SortOrder::dateOldest, installDate), (Lines{"none1", "none2", "old", "new"}));
}

TEST(Arrangement, eachFileIsAskedForItsDateOnceAlsoAfterAClean) {
    int asked = 0;
    const InstallDate installDate = [&asked](const URL&) -> std::optional<Date> {
        ++asked;
        return std::nullopt;
    };
    const Findings all(ModuleKind::largeFiles, {finding("a", 1), finding("b", 1), finding("c", 1)});
    (void)sorted(all, SortOrder::dateNewest, installDate);
    (void)sorted(all, SortOrder::dateOldest, installDate);
    EXPECT_EQ(asked, 3);
    const Findings left(all, {0, 2});
    (void)sorted(left, SortOrder::dateNewest, installDate);
    EXPECT_EQ(asked, 3);
}

TEST(Arrangement, groupsAreCategoriesWithTheLargestFirst) {
    const auto all =
        findings(ModuleKind::systemJunk, {finding("l1", 5, ScanCategory::logs), finding("c1", 4), finding("c2", 3)});
    const auto arrangement = arranged(all, SortOrder::sizeDesc, noDates);
    EXPECT_EQ(told(*arrangement), (Lines{S::categoryUserCache() + ": c1 c2", S::categoryLogs() + ": l1"}));
    EXPECT_EQ(arrangement->groups.front().totalBytes, 7);
    EXPECT_EQ(all->groupId(arrangement->groups.front().group), "userCache");
    EXPECT_EQ(told(*arranged(all, SortOrder::sizeAsc, noDates)),
              (Lines{S::categoryUserCache() + ": c2 c1", S::categoryLogs() + ": l1"}));
}

TEST(Arrangement, groupsOfEqualBytesStandAsTheOrderMeetsThem) {
    const auto all = findings(ModuleKind::systemJunk, {finding("b", 5, ScanCategory::logs), finding("a", 5)});
    EXPECT_EQ(told(*arranged(all, SortOrder::sizeDesc, noDates)),
              (Lines{S::categoryLogs() + ": b", S::categoryUserCache() + ": a"}));
    EXPECT_EQ(told(*arranged(all, SortOrder::name, noDates)),
              (Lines{S::categoryUserCache() + ": a", S::categoryLogs() + ": b"}));
}

TEST(Arrangement, aDuplicatesTitleFollowsItsFirstMember) {
    const auto all = findings(ModuleKind::duplicates, {grouped(finding("z.txt", 5), "h1"),
                                                       grouped(finding("a.txt", 5), "h1"), finding("alone", 1)});
    EXPECT_EQ(
        told(*arranged(all, SortOrder::sizeDesc, noDates)),
        (Lines{S::moduleGroupDuplicate("z.txt") + ": z.txt a.txt", S::moduleGroupDuplicate("alone") + ": alone"}));
    EXPECT_EQ(told(*arranged(all, SortOrder::name, noDates)).front(),
              S::moduleGroupDuplicate("a.txt") + ": a.txt z.txt");
}

TEST(Arrangement, withoutAGroupAnItemStandsAlone) {
    const CleanableItem alone = finding("alone", 1, ScanCategory::similarImage);
    const auto all = findings(ModuleKind::similarImages, {alone, finding("too", 1, ScanCategory::similarImage)});
    EXPECT_EQ(all->groupCount(), 2U);
    EXPECT_EQ(all->groupId(0), alone.id.uuidString());
    EXPECT_EQ(told(*arranged(all, SortOrder::sizeDesc, noDates)).front(), S::moduleGroupSimilar(1) + ": alone");
}

TEST(Arrangement, languagesAreSortedByTheirTitle) {
    const auto language = [](std::string group, std::int64_t size) {
        return grouped(finding("x.lproj", size, ScanCategory::appLanguage), std::move(group));
    };
    const auto all = findings(ModuleKind::appLanguages, {language("french", 9), language("Arabic", 1),
                                                         language("German", 5), language("french", 2)});
    EXPECT_EQ(told(*arranged(all, SortOrder::sizeDesc, noDates)),
              (Lines{"Arabic: x.lproj", "french: x.lproj x.lproj", "German: x.lproj"}));
}

TEST(Arrangement, aLanguageWithoutAGroupIsCalledLanguage) {
    const auto all = findings(ModuleKind::appLanguages, {finding("x.lproj", 1, ScanCategory::appLanguage)});
    EXPECT_EQ(told(*arranged(all, SortOrder::name, noDates)), Lines{S::moduleGroupLanguage() + ": x.lproj"});
}

TEST(Arrangement, everyItemKnowsItsPlace) {
    const auto all = findings(ModuleKind::systemJunk, {finding("l", 1, ScanCategory::logs), finding("a", 2),
                                                       finding("b", 3), finding("m", 4, ScanCategory::logs)});
    const auto arrangement = arranged(all, SortOrder::name, noDates);
    for (std::uint32_t place = 0; place < arrangement->order.size(); ++place) {
        EXPECT_EQ(arrangement->places[arrangement->order[place]], place);
        const ArrangedGroup& group = arrangement->groups[arrangement->groupAt(place)];
        EXPECT_TRUE(group.begin <= place && place < group.end);
    }
}

struct Search : testing::Test {
    std::shared_ptr<const Arrangement> all = arranged(
        findings(ModuleKind::systemJunk, {finding("Caché.db", 5), detailed(finding("other", 3), "the CACHE of Foo"),
                                          finding("nothing", 2), finding("cache.log", 1, ScanCategory::logs)}),
        SortOrder::sizeDesc, noDates);

    [[nodiscard]] Lines found(std::string_view query) const { return told(*filtered(all, searchForm(query))); }
};

TEST_F(Search, blanksAloneLeaveEverythingAsItIs) {
    for (const char* blanks : {" \t ", "\u00A0", "\u2003\u3000", "\u0085\u2028"})
        EXPECT_EQ(filtered(all, searchForm(blanks)), all);
}

TEST_F(Search, namesAndDetailsAreFoundWithoutRegardToCase) {
    EXPECT_EQ(found("  cAchE "), (Lines{S::categoryUserCache() + ": other", S::categoryLogs() + ": cache.log"}));
    EXPECT_EQ(found("\u3000foo\u00A0"), Lines{S::categoryUserCache() + ": other"});
}

TEST_F(Search, anAccentIsFoundHoweverItIsStored) {
    EXPECT_EQ(found("CACHÉ"), Lines{S::categoryUserCache() + ": Caché.db"});
    EXPECT_EQ(found("cache\u0301"), Lines{S::categoryUserCache() + ": Caché.db"});
}

TEST_F(Search, aGroupsBytesAreOfWhatIsLeftAndItsTitleStays) {
    const auto result = filtered(all, searchForm("foo"));
    ASSERT_EQ(result->groups.size(), 1U);
    EXPECT_EQ(result->groups.front().totalBytes, 3);
    EXPECT_EQ(result->groups.front().count(), 1U);
    EXPECT_EQ(result->groups.front().fullCount, 3U);
    EXPECT_EQ(result->places[0], Arrangement::nowhere);
}

TEST_F(Search, whatMatchesNothingLeavesNoGroups) {
    EXPECT_TRUE(filtered(all, searchForm("zzz"))->groups.empty());
}

TEST_F(Search, aNameAndADetailAreNotReadAsOne) {
    EXPECT_TRUE(found("otherthe").empty());
    EXPECT_TRUE(found("foonothing").empty());
}

TEST(SearchOfLanguages, keepsWholeGroupsByTheirTitle) {
    const auto language = [](const std::string& name, std::string group) {
        return grouped(finding(name, 1, ScanCategory::appLanguage), std::move(group));
    };
    const auto all =
        arranged(findings(ModuleKind::appLanguages, {language("fr.lproj", "French"), language("fr_CA.lproj", "French"),
                                                     language("french.lproj", "German")}),
                 SortOrder::sizeDesc, noDates);
    EXPECT_EQ(told(*filtered(all, searchForm("fren"))), Lines{"French: fr.lproj fr_CA.lproj"});
}

TEST(SearchOfPictures, theTitleStillCountsAllOfThem) {
    const auto picture = [](const std::string& name) {
        return grouped(finding(name, 1, ScanCategory::similarImage), "g");
    };
    const auto all = arranged(findings(ModuleKind::similarImages, {picture("a.jpg"), picture("b.jpg")}),
                              SortOrder::sizeDesc, noDates);
    EXPECT_EQ(told(*filtered(all, searchForm("b."))), Lines{S::moduleGroupSimilar(2) + ": b.jpg"});
}

TEST(Findings, anItemIsFoundByItsIdAlsoWhenIdsBeginAlike) {
    std::array<std::uint8_t, 16> bytes{};
    std::vector<CleanableItem> items;
    for (std::uint8_t i = 0; i < 5; ++i) {
        bytes[15] = i;
        CleanableItem item{.id = UUID(bytes), .url = URL(), .size = 0, .category = ScanCategory::logs};
        items.push_back(item);
    }
    const Findings all(ModuleKind::systemJunk, items);
    for (std::uint32_t i = 0; i < 5; ++i)
        EXPECT_EQ(all.itemWithId(items[i].id), i);
    EXPECT_EQ(all.itemWithId(UUID::random()), std::nullopt);
}

}  // namespace
}  // namespace tavrin::test
