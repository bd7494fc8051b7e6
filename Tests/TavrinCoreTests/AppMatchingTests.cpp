#include "TavrinCore/Scanning/AppMatching.h"
#include "TavrinCore/Scanning/TextCase.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <random>
#include <set>
#include <string>

namespace tavrin {
namespace {

using enum AppMatching::MatchStrength;
using AppIdentity = AppMatching::AppIdentity;
using Owners = std::vector<std::optional<std::size_t>>;

constexpr std::array kSharedFolders{
    "google",        "adobe",
    "microsoft",     "mozilla",
    "apple",         "oracle",
    "java",          "jetbrains",
    "logitech",      "logi",
    "intel",         "nvidia",
    "amd",           "autodesk",
    "corel",         "avid",
    "citrix",        "cisco",
    "vmware",        "unity",
    "epic games",    "blackmagic design",
    "steam",         "wondershare",
    "elgato",        "razer",
    "roblox",        "mail",
    "music",         "tv",
    "photos",        "safari",
    "notes",         "reminders",
    "calendar",      "calendars",
    "contacts",      "addressbook",
    "messages",      "facetime",
    "books",         "maps",
    "podcasts",      "news",
    "freeform",      "shortcuts",
    "preview",       "finder",
    "dock",          "siri",
    "spotlight",     "icloud",
    "mobilesync",    "syncservices",
    "crashreporter", "knowledge",
};

TEST(SharedVendorFolders, areFiftySixAndNoAppClaimsThemByName) {
    EXPECT_EQ(std::set<std::string>(kSharedFolders.begin(), kSharedFolders.end()).size(), 56U);
    for (const char* name : kSharedFolders) {
        EXPECT_TRUE(AppMatching::isSharedVendorFolder(name)) << name;
        EXPECT_EQ(AppMatching::strength(name, name, std::nullopt), none) << name;
        EXPECT_EQ(AppMatching::strength(name, name, "com.example.other"), none) << name;
    }
}

TEST(SharedVendorFolders, areKnownInAnyCaseAndOnlyWhole) {
    EXPECT_TRUE(AppMatching::isSharedVendorFolder("Blackmagic Design"));
    EXPECT_TRUE(AppMatching::isSharedVendorFolder("iCloud"));
    EXPECT_FALSE(AppMatching::isSharedVendorFolder("googles"));
    EXPECT_FALSE(AppMatching::isSharedVendorFolder("goo"));
    EXPECT_FALSE(AppMatching::isSharedVendorFolder(""));
}

TEST(MatchStrength, isOrderedByItsRawValue) {
    EXPECT_EQ(static_cast<int>(none), 0);
    EXPECT_EQ(static_cast<int>(byName), 1);
    EXPECT_EQ(static_cast<int>(byBundleID), 2);
    EXPECT_LT(none, byName);
    EXPECT_LT(byName, byBundleID);
}

TEST(MatchStrength, anEmptyCandidateOrNameIsNeverMatched) {
    EXPECT_EQ(AppMatching::strength("", "", std::nullopt), none);
    EXPECT_EQ(AppMatching::strength("", "Foo", "com.foo"), none);
    EXPECT_EQ(AppMatching::strength("com.foo", "", "com.foo"), none);
}

TEST(MatchStrength, bothSidesAreLowerCased) {
    EXPECT_EQ(AppMatching::strength("Foo", "foo", std::nullopt), byName);
    EXPECT_EQ(AppMatching::strength("ñANDÚ", "Ñandú", std::nullopt), byName);
    EXPECT_EQ(AppMatching::strength("cafe\u0301", "Café", std::nullopt), byName);
    EXPECT_EQ(AppMatching::strength("a\xFF", "A\xFF", std::nullopt), byName);
    EXPECT_EQ(AppMatching::strength("a\xFE", "A\xFF", std::nullopt), none);
}

TEST(MatchStrength, theBundleIDAndWhatExtendsItAreStrongest) {
    EXPECT_EQ(AppMatching::strength("com.foo.app", "Foo", "com.foo.app"), byBundleID);
    EXPECT_EQ(AppMatching::strength("COM.foo.app.Helper.plist", "Foo", "com.Foo.App"), byBundleID);
    EXPECT_EQ(AppMatching::strength("com.foo.appextra", "Foo", "com.foo.app"), none);
    EXPECT_EQ(AppMatching::strength("com.foo", "Foo", "com.foo.app"), none);
}

TEST(MatchStrength, theBundleIDComesBeforeTheSharedFolders) {
    EXPECT_EQ(AppMatching::strength("com.google.chrome.helper", "Chrome", "com.google.Chrome"), byBundleID);
    EXPECT_EQ(AppMatching::strength("google", "Google", "google"), byBundleID);
}

TEST(MatchStrength, theWholeNameMatchesByName) {
    EXPECT_EQ(AppMatching::strength("Chrome", "Chrome", "com.google.Chrome"), byName);
}

TEST(MatchStrength, sharedFoldersBelongToNobody) {
    EXPECT_EQ(AppMatching::strength("google", "Google", std::nullopt), none);
    EXPECT_EQ(AppMatching::strength("google.chrome.cache", "Google", std::nullopt), none);
    EXPECT_EQ(AppMatching::strength(".google.chrome.cache", ".google", std::nullopt), none);
    EXPECT_EQ(AppMatching::strength("Photos", "Photos", "com.example.photos"), none);
}

TEST(MatchStrength, anAppWithABundleIDGetsNoLooseMatch) {
    EXPECT_EQ(AppMatching::strength("foo.bar.plist", "Foo", "com.foo.app"), none);
    EXPECT_EQ(AppMatching::strength("foo.bar.plist", "Foo", std::nullopt), byName);
    EXPECT_EQ(AppMatching::strength("foo.bar.plist", "Foo", ""), byName);
}

TEST(MatchStrength, aLooseMatchNeedsTwoDots) {
    EXPECT_EQ(AppMatching::strength("foo.plist", "Foo", std::nullopt), none);
    EXPECT_EQ(AppMatching::strength("foo.", "Foo", std::nullopt), none);
    EXPECT_EQ(AppMatching::strength("foo..", "Foo", std::nullopt), byName);
    EXPECT_EQ(AppMatching::strength("foobar.baz.plist", "Foo", std::nullopt), none);
    EXPECT_EQ(AppMatching::strength("...", ".", std::nullopt), byName);
}

TEST(MatchStrength, matchesAppSaysWhetherThereIsAny) {
    EXPECT_TRUE(AppMatching::matchesApp("Foo", "foo", std::nullopt));
    EXPECT_TRUE(AppMatching::matchesApp("com.foo.x", "foo", "com.foo"));
    EXPECT_FALSE(AppMatching::matchesApp("bar", "foo", "com.foo"));
}

TEST(AssignOwners, withoutAppsNobodyOwnsAnything) {
    EXPECT_EQ(AppMatching::assignOwners({"foo", "", "com.foo"}, {}),
              (Owners{std::nullopt, std::nullopt, std::nullopt}));
}

TEST(AssignOwners, withoutCandidatesThereIsNoAnswer) {
    EXPECT_EQ(AppMatching::assignOwners({}, {{"Foo", "com.foo"}}), Owners{});
}

TEST(AssignOwners, theStrongestMatchOwns) {
    const std::vector<AppIdentity> apps{{"com.foo.app", std::nullopt}, {"Foo", "com.foo.app"}, {"Bar", "com.bar"}};
    EXPECT_EQ(AppMatching::assignOwners({"com.foo.app", "Bar", "com.bar.x", "baz"}, apps),
              (Owners{1, 2, 2, std::nullopt}));
}

TEST(AssignOwners, ofTwoTheOneWhoseNameStandsInItsBundleIDOwns) {
    const std::vector<AppIdentity> apps{{"foo", "com.other.tool"}, {"Foo", "com.FOO.app"}};
    EXPECT_EQ(AppMatching::assignOwners({"foo"}, apps), Owners{1});
    const std::vector<AppIdentity> spaced{{"my tool", "com.x.y"}, {"My Tool", "com.my-tool.app"}};
    EXPECT_EQ(AppMatching::assignOwners({"My Tool"}, spaced), Owners{1});
}

TEST(AssignOwners, aTieThatNothingDecidesLeavesTheFolder) {
    const std::vector<AppIdentity> both{{"Foo", "com.foo.app"}, {"Foo", "org.foo.app"}};
    EXPECT_EQ(AppMatching::assignOwners({"foo"}, both), Owners{std::nullopt});
    const std::vector<AppIdentity> neither{{"Foo", "com.a"}, {"Foo", std::nullopt}, {"foo", ""}};
    EXPECT_EQ(AppMatching::assignOwners({"foo"}, neither), Owners{std::nullopt});
    const std::vector<AppIdentity> marks{{"!!", "com.a"}, {"!!", "com.!!.b"}};
    EXPECT_EQ(AppMatching::assignOwners({"!!"}, marks), Owners{std::nullopt});
}

TEST(AssignOwners, bundleIDsThatExtendOneAnotherTie) {
    const std::vector<AppIdentity> apps{{"Foo", "com.foo"}, {"Foo Helper", "com.foo.helper"}};
    EXPECT_EQ(AppMatching::assignOwners({"com.foo.helper.cache"}, apps), Owners{0});
    EXPECT_EQ(AppMatching::assignOwners({"com.foo.helper"}, {{"A", "com.foo"}, {"B", "com.foo.helper"}}),
              Owners{std::nullopt});
}

// The same, as plainly as it can be said: every app for every candidate.

bool nameStandsInBundleID(const AppIdentity& app) {
    const std::string name = lettersAndDigits(comparisonForm(app.name));
    if (name.empty() || !app.bundleID) return false;
    std::string piece;
    for (char c : comparisonForm(*app.bundleID) + ".") {
        if (c != '.') {
            piece.push_back(c);
            continue;
        }
        if (lettersAndDigits(piece) == name) return true;
        piece.clear();
    }
    return false;
}

std::optional<std::size_t> plainOwner(const std::string& candidate, const std::vector<AppIdentity>& apps) {
    AppMatching::MatchStrength highest = none;
    std::vector<std::size_t> best;
    for (std::size_t i = 0; i < apps.size(); ++i) {
        const auto strength = AppMatching::strength(candidate, apps[i].name, apps[i].bundleID);
        if (strength == none || strength < highest) continue;
        if (strength > highest) best.clear();
        highest = strength;
        best.push_back(i);
    }
    if (best.size() > 1) std::erase_if(best, [&](std::size_t i) { return !nameStandsInBundleID(apps[i]); });
    return best.size() == 1 ? std::optional(best.front()) : std::nullopt;
}

TEST(AssignOwners, givesWhatTryingEveryAppGives) {
    std::mt19937 random(56);
    const std::array pieces{"foo", "Foo", "bar", "google", "É",  "e\u0301", "x y",
                            "!",   "com", ".",   ".",      "..", "\xFF",    ""};
    const auto text = [&] {
        std::string made;
        for (std::size_t count = random() % 5; count > 0; --count)
            made += pieces[random() % pieces.size()];
        return made;
    };
    std::size_t owned = 0;
    std::size_t tied = 0;
    for (int round = 0; round < 60; ++round) {
        std::vector<AppIdentity> apps(random() % 40);
        for (AppIdentity& app : apps) {
            app.name = text();
            if (random() % 3 != 0) app.bundleID = text();
        }
        std::vector<std::string> candidates(40);
        for (std::string& candidate : candidates)
            candidate = text();
        const Owners owners = AppMatching::assignOwners(candidates, apps);
        ASSERT_EQ(owners.size(), candidates.size());
        for (std::size_t i = 0; i < candidates.size(); ++i) {
            ASSERT_EQ(owners[i], plainOwner(candidates[i], apps)) << candidates[i];
            if (owners[i]) ++owned;
            if (!owners[i] && std::ranges::any_of(apps, [&](const AppIdentity& app) {
                    return AppMatching::matchesApp(candidates[i], app.name, app.bundleID);
                }))
                ++tied;
        }
    }
    EXPECT_GT(owned, 100U);
    EXPECT_GT(tied, 50U);
}

TEST(AppMatching, assignmentAsksEverySomeHundredCandidatesAndStopsOnceCancelled) {
    const std::vector<AppMatching::AppIdentity> apps{{"Foo", std::nullopt}};
    const std::vector<std::string> candidates(5'000, "Foo");
    int polls = 0;
    EXPECT_EQ(AppMatching::assignOwners(candidates, apps, [&] { return ++polls < 0; }),
              std::vector(candidates.size(), std::optional<std::size_t>(0)));
    EXPECT_GE(polls, 10);

    const auto owners = AppMatching::assignOwners(candidates, apps, [&] { return true; });
    EXPECT_EQ(owners, std::vector(candidates.size(), std::optional<std::size_t>()));
}

}  // namespace
}  // namespace tavrin
