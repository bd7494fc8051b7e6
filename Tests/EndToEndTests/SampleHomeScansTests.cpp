// What the scanners find in the sample home: something for each, and nothing that was made to look like it.
#include "EndToEndTests/SampleHome.h"
#include "Support/TestFolder.h"
#include "TavrinCore/ScannerFactory.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <array>
#include <ctime>
#include <set>
#include <string>

namespace tavrin::test {
namespace {

using testing::Contains;
using testing::IsSupersetOf;
using testing::Not;

/// Findings that must be there, and the things beside them that only look like some. All are relative to the home.
struct Expectation {
    ModuleKind kind;
    std::set<std::string> found;
    std::set<std::string> passedOver;
};

const std::array<Expectation, 8> kExpectations{{
    {ModuleKind::systemJunk, {"Library/Caches/loose file.cache"}, {"Library/Caches/.hidden-cache"}},
    {ModuleKind::largeFiles,
     {"Documents/Archive of 2011.tar", "Public/long ago.txt", ".local/share/Trash/files/old report.pdf"},
     {"Documents/only says that it is large.img", "Public/.hidden and old.txt", "Public/long ago, but read.txt",
      "Public/a year less a day.txt", "Library/Keychains", ".local/share/Trash/files/.hidden note"}},
    {ModuleKind::developerJunk,
     {"src/level 1/level 2/level 3/level 4/level 5/level 6/node_modules"},
     {"src/level 1/level 2/level 3/level 4/level 5/level 6/level 7/node_modules", "src/odd/a file/Pods",
      "src/odd/linked/node_modules", "src/odd/empty/node_modules", "Library/Caches/org.carthage.CarthageKit"}},
    {ModuleKind::mailAttachments,
     {"Library/Mail/V10/account-1/Attachments"},
     {"Library/Mail/V10/account-1/Exported.mbox/Attachments", "Library/Mail/V10/account-2/notes/Attachments",
      "Library/Mail/V10/account-2/empty/Attachments"}},
    {ModuleKind::screenshots,
     {"Pictures/Capturas/Screenshot 2026-01-01 at 12.00.00 (0).png"},
     {"Desktop/My screenshot.png", "Desktop/.Screenshot hidden.png", "Desktop/Screen Recording.mp4",
      "Pictures/Capturas/holiday.png"}},
    {ModuleKind::downloadsJunk,
     {"Downloads/came today.dmg", "Downloads/ninety-one days.txt"},
     {"Downloads/old but read lately.pdf", "Downloads/eighty-nine days.txt", "Downloads/unpacked.zip",
      "Downloads/Old App.app", "Downloads/nothing in it.dmg", "Downloads/.half of it.zip"}},
    {ModuleKind::browserCaches,
     {"Library/Application Support/Google/Chrome/Default/Cache"},
     {"Library/Caches/Vivaldi", "Library/Application Support/Google/Chrome/Default/Login Data",
      "Library/Application Support/Google/Chrome/Linked/Cache",
      "Library/Application Support/Google/Chrome/.hidden/Cache"}},
    {ModuleKind::iosBackups,
     {"Library/Application Support/MobileSync/Backup/00008110-000A1B2C3D4E5F60"},
     {"Library/Application Support/MobileSync/Backup/loose file"}},
}};

/// Of all findings and of what goes with them.
std::set<std::string> pathsFoundBy(ModuleKind kind, const URL& home) {
    std::set<std::string> paths;
    for (const CleanableItem& item : ScannerFactory::makeScanner(kind)->scan([](const ScanProgress&) {})) {
        paths.insert(item.url.path().substr(home.path().size() + 1));
        for (const URL& related : item.relatedURLs)
            paths.insert(related.path().substr(home.path().size() + 1));
    }
    return paths;
}

/// In the sample home's own zone of time. Ages count back from it.
std::string today() {
    const std::time_t now = std::time(nullptr);
    std::tm parts{};
    ::gmtime_r(&now, &parts);
    std::array<char, 16> text{};
    return {text.data(), std::strftime(text.data(), text.size(), "%Y-%m-%d", &parts)};
}

TEST(SampleHomeScans, findWhatIsThereForThemAndNothingThatOnlyLooksLikeItAndChangeNothing) {
    const TestFolder world;
    const URL home = world / "home";
    makeSampleHome(home, {"--today", today()});
    const std::string before = homeManifest(home);
    const ScopedVariable homeVariable("HOME", home.path().c_str());
    const ScopedVariable dataVariable("XDG_DATA_HOME", nullptr);
    const ScopedVariable settingsVariable("XDG_CONFIG_HOME", nullptr);

    for (const Expectation& expected : kExpectations) {
        SCOPED_TRACE(rawValue(expected.kind));
        const std::set<std::string> paths = pathsFoundBy(expected.kind, home);
        EXPECT_THAT(paths, IsSupersetOf(expected.found));
        for (const std::string& path : expected.passedOver)
            EXPECT_THAT(paths, Not(Contains(path)));
    }

    EXPECT_EQ(pathsFoundBy(ModuleKind::messagesAttachments, home).size(), 8U)
        << "neither the hidden film nor the one that only says that it is large";
    EXPECT_TRUE(before == homeManifest(home));
}

}  // namespace
}  // namespace tavrin::test
