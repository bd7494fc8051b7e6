#include "FakeFindings.h"

#include "TavrinCore/Scanning/LanguageNames.h"
#include "TavrinCore/Strings.h"

#include <chrono>
#include <cstdint>
#include <fstream>
#include <string>
#include <string_view>
#include <utility>

namespace tavrin::test {
namespace fs = std::filesystem;
namespace {

constexpr std::int64_t kilobyte = 1000;
constexpr std::int64_t megabyte = 1000 * kilobyte;

void file(const fs::path& path, std::size_t bytes = 2000) {
    fs::create_directories(path.parent_path());
    std::ofstream(path) << std::string(bytes, 'x');
}

URL folderAt(const fs::path& path) {
    return URL::fromPath(path.native(), true);
}

URL fileAt(const fs::path& path) {
    return URL::fromPath(path.native(), false);
}

CleanableItem item(URL url, std::int64_t size, ScanCategory category, bool selected,
                   std::optional<std::string> detail = {}, std::optional<std::string> group = {}, bool keeper = false) {
    return {UUID::random(), std::move(url), size, category, selected, std::move(detail), std::move(group), keeper, {}};
}

std::vector<CleanableItem> systemJunk(const fs::path& folder) {
    const fs::path caches = folder / "Caches";
    std::vector<CleanableItem> found{
        item(folderAt(caches / "com.example.browser"), 812 * megabyte, ScanCategory::userCache, true, "Caches"),
        item(folderAt(caches / "com.example.music"), 304 * megabyte, ScanCategory::userCache, true, "Caches"),
        item(folderAt(caches / "org.example.editor"), 96 * megabyte, ScanCategory::userCache, true, "Caches"),
        item(folderAt(caches / "empty.folder"), 12 * kilobyte, ScanCategory::userCache, true, "Caches"),
        item(fileAt(caches / "a name\nwith a line break and \xE2\x80\xAE turned round.db"), 4 * kilobyte,
             ScanCategory::userCache, true, "Caches"),
        item(folderAt(folder / "Logs" / "Editor"), 48 * megabyte, ScanCategory::logs, true, "Logs"),
        item(fileAt(folder / "Logs" / "install.log"), 3 * megabyte, ScanCategory::logs, false, "Logs"),
        item(folderAt(folder / "DerivedData" / "Harbour-abcdef"), 1240 * megabyte, ScanCategory::derivedData, true),
    };
    return found;
}

std::vector<CleanableItem> duplicates(const fs::path& folder) {
    const auto set = [&folder](const char* name, std::int64_t size, const char* group) {
        return std::vector{
            item(fileAt(folder / "Documents" / name), size, ScanCategory::duplicate, false, S::detailOriginalKept(),
                 group, true),
            item(fileAt(folder / "Downloads" / name), size, ScanCategory::duplicate, true, S::detailDuplicateOf(name),
                 group),
            item(fileAt(folder / "Desktop" / name), size, ScanCategory::duplicate, true, S::detailDuplicateOf(name),
                 group),
        };
    };
    std::vector<CleanableItem> found = set("notes.txt", 840 * kilobyte, "one");
    for (CleanableItem& other : set("report.pdf", 12 * megabyte, "two"))
        found.push_back(std::move(other));
    return found;
}

std::vector<CleanableItem> similarImages(const fs::path& folder) {
    std::vector<CleanableItem> found;
    for (int group = 0; group < 3; ++group) {
        for (int number = 0; number < 4 + 3 * group; ++number) {
            const std::string name = "holiday-" + std::to_string(group) + "-" + std::to_string(number) + ".png";
            found.push_back(item(fileAt(folder / "Pictures" / name), (9 - number % 9) * megabyte / (group + 1),
                                 ScanCategory::similarImage, false, {}, "set" + std::to_string(group), number == 0));
        }
    }
    return found;
}

std::vector<CleanableItem> appLanguages(const fs::path& folder) {
    std::vector<CleanableItem> found;
    for (const std::string_view code : {"de", "ar", "zh-Hans", "ja"}) {
        const std::string language = languageName(code, runningLanguage());
        for (int app = 0; app < 3; ++app) {
            const fs::path path = folder / "Applications" / ("App" + std::to_string(app) + ".app") / "Contents" /
                                  "Resources" / (std::string(code) + ".lproj");
            found.push_back(item(folderAt(path), (app + 1) * megabyte, ScanCategory::appLanguage, code != "ar",
                                 "App" + std::to_string(app), language));
        }
    }
    return found;
}

std::vector<CleanableItem> mailAttachments(const fs::path& folder) {
    return {
        item(fileAt(folder / "Mail" / "contract.pdf"), 14 * megabyte, ScanCategory::mailAttachment, false, {},
             "Outlook · Work"),
        item(fileAt(folder / "Mail" / "holiday-0-0.png"), 6 * megabyte, ScanCategory::mailAttachment, false, {},
             "Mail"),
        item(fileAt(folder / "Mail" / "budget.xlsx"), 480 * kilobyte, ScanCategory::mailAttachment, false, {}, "Mail"),
    };
}

std::vector<CleanableItem> uninstaller(const fs::path& folder) {
    std::vector<CleanableItem> found{
        item(folderAt(folder / "Applications" / "App0.app"), 640 * megabyte, ScanCategory::application, false,
             S::detailIncludesRelated(2, "48 MB")),
        item(folderAt(folder / "Applications" / "App1.app"), 210 * megabyte, ScanCategory::application, false,
             S::detailNoRelatedFiles()),
    };
    found.front().relatedURLs = {folderAt(folder / "Caches" / "com.example.browser"),
                                 folderAt(folder / "Logs" / "Editor")};
    return found;
}

std::vector<CleanableItem> screenshots(const fs::path& folder) {
    std::vector<CleanableItem> found;
    for (int number = 0; number < 4; ++number) {
        const std::string name = "holiday-0-" + std::to_string(number) + ".png";
        found.push_back(
            item(fileAt(folder / "Pictures" / name), (4 - number) * megabyte, ScanCategory::screenshot, false));
    }
    return found;
}

void date(const fs::path& folder) {
    using namespace std::chrono;
    const auto day = sys_seconds(sys_days(2026y / March / 14) + hours(9));
    const auto time = file_clock::from_sys(day);
    for (const auto& entry : fs::recursive_directory_iterator(folder))
        fs::last_write_time(entry.path(), time);
}

}  // namespace

void makeFiles(const fs::path& folder) {
    // Each of another size, so that they stand in one order wherever they lie.
    for (std::size_t number = 0; number < 53; ++number)
        file(folder / "Caches" / "com.example.browser" / ("entry-" + std::to_string(number)), 8192 * (53 - number));
    fs::create_directories(folder / "Caches" / "empty.folder");
    for (const char* name : {"Caches/com.example.music/blob", "Caches/org.example.editor/state/tabs",
                             "Logs/Editor/today.log", "Logs/install.log", "DerivedData/Harbour-abcdef/Build/object.o",
                             "Documents/notes.txt", "Downloads/notes.txt", "Desktop/notes.txt", "Documents/report.pdf",
                             "Downloads/report.pdf", "Desktop/report.pdf", "Mail/contract.pdf", "Mail/budget.xlsx"})
        file(folder / name);
    file(folder / "Caches" / "a name\nwith a line break and \xE2\x80\xAE turned round.db");
    fs::create_directories(folder / "Pictures");
    for (int group = 0; group < 3; ++group) {
        for (int number = 0; number < 10; ++number) {
            const std::string name = "holiday-" + std::to_string(group) + "-" + std::to_string(number) + ".png";
            fs::copy_file(fs::path(FIXTURES) / "picture.png", folder / "Pictures" / name);
        }
    }
    fs::copy_file(fs::path(FIXTURES) / "picture.png", folder / "Mail" / "holiday-0-0.png");
    for (int app = 0; app < 3; ++app) {
        const fs::path resources =
            folder / "Applications" / ("App" + std::to_string(app) + ".app") / "Contents" / "Resources";
        for (const char* name : {"de.lproj", "ar.lproj", "zh-Hans.lproj", "ja.lproj"})
            file(resources / name / "Main.strings");
    }
    date(folder);
}

std::vector<CleanableItem> findingsFor(ModuleKind kind, const fs::path& folder) {
    switch (kind) {
        case ModuleKind::duplicates:
            return duplicates(folder);
        case ModuleKind::similarImages:
            return similarImages(folder);
        case ModuleKind::appLanguages:
            return appLanguages(folder);
        case ModuleKind::mailAttachments:
            return mailAttachments(folder);
        case ModuleKind::uninstaller:
            return uninstaller(folder);
        case ModuleKind::screenshots:
            return screenshots(folder);
        default:
            return systemJunk(folder);
    }
}

std::vector<CleanableItem> manyFindings(std::size_t count) {
    std::vector<CleanableItem> found;
    found.reserve(count);
    for (std::size_t number = 0; number < count; ++number) {
        const std::string name = "com.example.cache-" + std::to_string(number);
        found.push_back(
            item(URL::fromPath("/nowhere/Caches/" + name, true), static_cast<std::int64_t>(number) * 100 + 1,
                 number % 3 == 0 ? ScanCategory::logs : ScanCategory::userCache, number % 2 == 0, "Caches"));
    }
    return found;
}

}  // namespace tavrin::test
