#include "Support/LockedFolder.h"
#include "Support/OrdinaryUser.h"
#include "Support/PropertyLists.h"
#include "Support/RecordedScan.h"
#include "Support/TestFolder.h"
#include "TavrinCore/ScannerFactory.h"
#include "TavrinCore/Scanning/FileSystemUtils.h"
#include "TavrinCore/Scanning/LoginItemsScanner.h"
#include "TavrinCore/Scanning/ScannerDefaults.h"
#include "TavrinCore/Strings.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/stat.h>

#include <string>
#include <vector>

namespace tavrin {
namespace {

using test::BinaryPropertyList;
using test::LockedFolder;
using test::OrdinaryUser;
using test::record;
using test::RecordedScan;
using test::setMode;
using test::TestFolder;
using test::xmlPropertyList;
using testing::ElementsAre;
using testing::IsEmpty;
using AgentInfo = LoginItemsScanner::AgentInfo;

const std::string kMissing = "/no/such/place/tool";

std::string string(const std::string& text) {
    return "<string>" + text + "</string>";
}

std::string entry(const std::string& key, const std::string& value) {
    return "<key>" + key + "</key>" + value;
}

URL agent(const TestFolder& world, const std::string& name, const std::string& entries) {
    return world.file("Agents/" + name, xmlPropertyList("<dict>" + entries + "</dict>"));
}

AgentInfo inspected(const TestFolder& world, const std::string& entries) {
    return LoginItemsScanner::inspectAgent(agent(world, "inspected.plist", entries));
}

LoginItemsScanner scannerOf(const TestFolder& world) {
    return LoginItemsScanner(false, std::vector{world / "Agents"});
}

TEST(InspectAgent, tellsLabelProgramAndWhenItRuns) {
    const TestFolder world;
    const URL program = world.file("bin/my tool");
    EXPECT_EQ(inspected(world, entry("Label", string("com.example.agent")) + entry("Program", string(program.path())) +
                                   entry("RunAtLoad", "<true/>")),
              (AgentInfo{"com.example.agent \u00b7 \u2192 my tool \u00b7 " + S::detailRunsAtLogin(), false}));
}

TEST(InspectAgent, leavesOutWhatIsAbsent) {
    const TestFolder world;
    EXPECT_EQ(inspected(world, entry("RunAtLoad", "<true/>")), (AgentInfo{S::detailRunsAtLogin(), false}));
    EXPECT_EQ(inspected(world, entry("Label", string("com.example"))), (AgentInfo{"com.example", false}));
    EXPECT_EQ(inspected(world, entry("Program", string("tool"))), (AgentInfo{"\u2192 tool", false}));
    EXPECT_EQ(inspected(world, entry("RunAtLoad", "<false/>")), (AgentInfo{"", false}));
    EXPECT_EQ(inspected(world, entry("RunAtLoad", "<integer>1</integer>")), (AgentInfo{"", false}));
    EXPECT_EQ(inspected(world, entry("Label", "<integer>1</integer>")), (AgentInfo{"", false}));
}

TEST(InspectAgent, theProgramWinsOverTheArguments) {
    const TestFolder world;
    const URL program = world.file("tool");
    const std::string arguments = entry("ProgramArguments", "<array>" + string(kMissing) + "</array>");
    EXPECT_FALSE(inspected(world, entry("Program", string(program.path())) + arguments).isBroken);
    EXPECT_TRUE(inspected(world, arguments).isBroken);
}

TEST(InspectAgent, aProgramThatIsNoStringLeavesItToTheArguments) {
    const TestFolder world;
    const AgentInfo info =
        inspected(world, entry("Program", "<true/>") +
                             entry("ProgramArguments", "<array>" + string(kMissing) + string("-x") + "</array>"));
    EXPECT_EQ(info, (AgentInfo{"\u2192 tool", true}));
}

TEST(InspectAgent, argumentsThatAreEmptyOrNotAllStringsGiveNoProgram) {
    const TestFolder world;
    EXPECT_EQ(inspected(world, entry("ProgramArguments", "<array/>")), (AgentInfo{"", false}));
    EXPECT_EQ(inspected(world, entry("ProgramArguments", "<array>" + string(kMissing) + "<true/></array>")),
              (AgentInfo{"", false}));
    EXPECT_EQ(inspected(world, entry("ProgramArguments", string(kMissing))), (AgentInfo{"", false}));
}

TEST(InspectAgent, onlyAnAbsolutePathWithNothingThereIsBroken) {
    const TestFolder world;
    EXPECT_TRUE(inspected(world, entry("Program", string(kMissing))).isBroken);
    EXPECT_FALSE(inspected(world, entry("Program", string("no/such/tool"))).isBroken);
    EXPECT_FALSE(inspected(world, entry("Program", string(""))).isBroken);
    EXPECT_FALSE(inspected(world, entry("Program", string(world.folder("folder").path()))).isBroken);
    EXPECT_TRUE(inspected(world, entry("Program", string(world.link("dangling", "nowhere").path()))).isBroken);
}

TEST(InspectAgent, theNameOfAProgramIsItsLastComponent) {
    const TestFolder world;
    EXPECT_EQ(inspected(world, entry("Program", string("a/b/tool//"))).detail, "\u2192 tool");
    EXPECT_EQ(inspected(world, entry("Program", string("/"))), (AgentInfo{"\u2192 /", false}));
}

TEST(InspectAgent, readsTheBinaryFormToo) {
    const TestFolder world;
    BinaryPropertyList list;
    const auto key = list.string("Program");
    const auto value = list.string(kMissing);
    const URL file = world.file("a.plist", list.bytes(list.dictionary({key}, {value})));
    EXPECT_EQ(LoginItemsScanner::inspectAgent(file), (AgentInfo{"\u2192 tool", true}));
}

TEST(InspectAgent, aPathWithAZeroByteMakesItNoPropertyList) {
    const TestFolder world;
    BinaryPropertyList list;
    const auto key = list.string("Program");
    const auto value = list.string(std::string_view("/no/such\0tool", 13));
    const URL file = world.file("a.plist", list.bytes(list.dictionary({key}, {value})));
    EXPECT_EQ(LoginItemsScanner::inspectAgent(file), (AgentInfo{S::detailStartupAgent(), false}));
}

TEST(InspectAgent, whatIsNoPropertyListIsNeverBroken) {
    const TestFolder world;
    const AgentInfo unknown{S::detailStartupAgent(), false};
    const auto ofBytes = [&](const std::string& bytes) {
        return LoginItemsScanner::inspectAgent(world.file("x.plist", bytes));
    };
    EXPECT_EQ(ofBytes(""), unknown);
    EXPECT_EQ(ofBytes("rubbish"), unknown);
    EXPECT_EQ(ofBytes(xmlPropertyList("<array>" + string(kMissing) + "</array>")), unknown);
    EXPECT_EQ(ofBytes(xmlPropertyList("<dict>" + entry("Program", string(kMissing)))), unknown);
    EXPECT_EQ(ofBytes(test::propertyListBomb(12)), unknown);
    EXPECT_EQ(ofBytes("{\"Program\": \"" + kMissing + "\"}"), unknown);
    EXPECT_EQ(LoginItemsScanner::inspectAgent(world.folder("folder.plist")), unknown);
    EXPECT_EQ(LoginItemsScanner::inspectAgent(world / "missing.plist"), unknown);
    const URL fifo = world / "fifo.plist";
    ASSERT_EQ(::mkfifo(fifo.path().c_str(), 0600), 0);
    EXPECT_EQ(LoginItemsScanner::inspectAgent(fifo), unknown) << "and nobody waits at it";
}

TEST(InspectAgent, whatMayNotBeReadIsNeverBroken) {
    const TestFolder world;
    const URL file = agent(world, "a.plist", entry("Program", string(kMissing)));
    setMode(file, 0000);
    const OrdinaryUser user;
    EXPECT_EQ(LoginItemsScanner::inspectAgent(file), (AgentInfo{S::detailStartupAgent(), false}));
}

TEST(InspectAgent, aProgramThatMayNotBeSeenIsNotBroken) {
    const TestFolder world;
    const URL program = world.file("closed/tool");
    const URL file = agent(world, "a.plist", entry("Program", string(program.path())));
    const LockedFolder locked(world / "closed");
    EXPECT_FALSE(LoginItemsScanner::inspectAgent(file).isBroken);
}

TEST(LoginItemsScanner, aBrokenItemStartsSelectedAndSaysWhy) {
    const TestFolder world;
    const URL file = agent(world, "com.example.gone.plist",
                           entry("Label", string("com.example.gone")) + entry("Program", string(kMissing)));

    const CleanableItem item = record(scannerOf(world)).items.at(0);

    EXPECT_EQ(item.url, file);
    EXPECT_EQ(item.size, FileSystemUtils::size(file));
    EXPECT_EQ(item.category, ScanCategory::startupItem);
    EXPECT_TRUE(item.isSelected);
    EXPECT_EQ(item.detail, S::detailBrokenStartupItem());
    EXPECT_EQ(item.groupID, std::nullopt);
    EXPECT_FALSE(item.isGroupKeeper);
    EXPECT_THAT(item.relatedURLs, IsEmpty());
}

TEST(LoginItemsScanner, aWorkingItemStartsUnselectedWithItsDetail) {
    const TestFolder world;
    agent(world, "com.apple.works.plist", entry("Label", string("com.apple.works")));
    const CleanableItem item = record(scannerOf(world)).items.at(0);
    EXPECT_FALSE(item.isSelected);
    EXPECT_EQ(item.detail, "com.apple.works") << "no maker is left out";
}

TEST(LoginItemsScanner, onlyWhatBearsTheExtensionRightInTheFolderIsListed) {
    const TestFolder world;
    agent(world, "good.plist", "");
    agent(world, "loud.PLIST", "");
    agent(world, "note.plist.bak", "");
    agent(world, ".hidden.plist", "");
    agent(world, "below/deep.plist", "");
    world.file("Agents/folder.plist/inside");
    EXPECT_THAT(record(scannerOf(world)).names(), testing::UnorderedElementsAre("good.plist", "folder.plist"));
}

TEST(LoginItemsScanner, theBrokenOnesComeFirstAndBothHalvesByName) {
    const TestFolder world;
    agent(world, "Alpha.plist", "");
    agent(world, "beta.plist", "");
    agent(world, "Zulu.plist", entry("Program", string(kMissing)));
    agent(world, "yankee.plist", entry("Program", string(kMissing)));
    EXPECT_THAT(record(scannerOf(world)).names(),
                ElementsAre("yankee.plist", "Zulu.plist", "Alpha.plist", "beta.plist"));
}

TEST(LoginItemsScanner, sendsNoReportButTheLast) {
    const TestFolder world;
    agent(world, "a.plist", "");
    agent(world, "b.plist", entry("Program", string(kMissing)));
    const RecordedScan scan = record(scannerOf(world));
    EXPECT_THAT(scan.reports, ElementsAre(ScanProgress{.phase = S::scanDone(),
                                                       .itemsFound = 2,
                                                       .bytesFound = scan.items[0].size + scan.items[1].size,
                                                       .fractionCompleted = 1.0}));
}

TEST(LoginItemsScanner, aMissingFolderGivesAnEmptyListWithoutAnError) {
    const TestFolder world;
    const RecordedScan scan = record(scannerOf(world));
    EXPECT_EQ(scan.failure, std::nullopt);
    EXPECT_THAT(scan.items, IsEmpty());
    EXPECT_THAT(scan.reports, ElementsAre(ScanProgress{.phase = S::scanDone(), .fractionCompleted = 1.0}));
}

TEST(LoginItemsScanner, aRefusedFolderIsToldOrFailsTheScan) {
    const TestFolder world;
    agent(world, "a.plist", "");
    const URL closed = world.folder("closed");
    setMode(closed, 0000);
    const OrdinaryUser user;

    const RecordedScan both = record(LoginItemsScanner(false, std::vector{closed, world / "Agents"}));
    EXPECT_EQ(both.items.size(), 1U);
    EXPECT_EQ(both.reports.back().phase, S::fdaTitle());
    EXPECT_EQ(both.reports.back().blockedFolders, 1);

    const RecordedScan alone = record(LoginItemsScanner(false, std::vector{closed}));
    EXPECT_EQ(alone.failure, ScanError::accessDenied(closed));
    EXPECT_THAT(alone.reports, IsEmpty());
    setMode(closed, 0700);
}

TEST(LoginItemsScanner, aCancelIsNoticedBeforeEachFolder) {
    const TestFolder world;
    agent(world, "a.plist", "");
    int polls = 0;
    const LoginItemsScanner scanner(false, std::vector{world / "missing", world / "Agents"});
    EXPECT_EQ(record(scanner, [&] { return ++polls > 1; }).failure, ScanError::cancelled());
    polls = 0;
    EXPECT_EQ(record(scanner, [&] { return ++polls > 2; }).failure, std::nullopt) << "not for each file";
}

TEST(LoginItemsScanner, theRootsAreTheUsersOwnAndTheSystemsOnlyWhenPrivileged) {
    const TestFolder world;
    const test::ScopedVariable home("HOME", world.path().c_str());
    const URL own = world / "Library/LaunchAgents";
    EXPECT_THAT(LoginItemsScanner(false).roots(), ElementsAre(own));
    EXPECT_THAT(LoginItemsScanner(true).roots(),
                ElementsAre(own, URL::fromPath("/Library/LaunchAgents/"), URL::fromPath("/Library/LaunchDaemons/")));
    EXPECT_THAT(LoginItemsScanner(true, std::vector{world.url()}).roots(), ElementsAre(world.url()));
}

TEST(ScannerFactory, makesTheLoginItemsScannerOverTheUsersOwnFolder) {
    const TestFolder world;
    const test::ScopedVariable home("HOME", world.path().c_str());
    world.file("Library/LaunchAgents/a.plist", xmlPropertyList("<dict/>"));
    EXPECT_FALSE(scannerDefaults::LoginItems::includePrivileged);
    EXPECT_THAT(record(*ScannerFactory::makeScanner(ModuleKind::loginItems)).names(), ElementsAre("a.plist"));
}

}  // namespace
}  // namespace tavrin
