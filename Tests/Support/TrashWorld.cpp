#include "Support/TrashWorld.h"

#include "TavrinCore/Platform/Linux/TrashInfo.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <utility>

namespace tavrin::test {

TrashWorld::TrashWorld()
    : homeVariable_("HOME", home_.path().c_str()), dataVariable_("XDG_DATA_HOME", (home_ / "data").path().c_str()) {}

std::vector<std::string> TrashWorld::files() const {
    return namesIn(home_ / "data/Trash/files");
}

std::vector<std::string> TrashWorld::notes() const {
    return namesIn(home_ / "data/Trash/info");
}

std::string TrashWorld::notedOrigin(std::string_view name) const {
    const std::optional<TrashInfo> info = parseTrashInfo(contentsOf(note(name)));
    EXPECT_TRUE(info.has_value()) << name;
    return info ? info->path : std::string();
}

std::vector<std::string> namesIn(const URL& folder) {
    std::vector<std::string> names;
    std::error_code error;
    for (const auto& entry : std::filesystem::directory_iterator(folder.path(), error))
        names.push_back(entry.path().filename().native());
    std::ranges::sort(names);
    return names;
}

CleanableItem finding(const URL& url, std::vector<URL> related) {
    return {.id = UUID::random(),
            .url = url,
            .size = 1,
            .category = ScanCategory::userCache,
            .relatedURLs = std::move(related)};
}

std::vector<CleanableItem> findings(const std::vector<URL>& urls) {
    std::vector<CleanableItem> items;
    for (const URL& url : urls)
        items.push_back(finding(url));
    return items;
}

CleanResult clean(const std::vector<URL>& urls, const Cleaner& cleaner) {
    return cleaner.clean(
        findings(urls), [](const ScanProgress&) {}, neverCancelled);
}

}  // namespace tavrin::test
