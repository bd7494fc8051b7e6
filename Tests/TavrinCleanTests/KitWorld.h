// A world for flows: a scanner that finds what the test says, a cleaner on a disk that only records, and everything
// that was asked of the services.
#pragma once

#include "Support/RecordingFileEffects.h"
#include "Support/TestFolder.h"
#include "TavrinClean/Kit/HistoryModel.h"
#include "TavrinClean/Kit/ModuleServices.h"

#include <cstdint>
#include <functional>
#include <future>
#include <map>
#include <memory>
#include <set>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace tavrin::test {

using Scan = std::function<std::vector<CleanableItem>(const ProgressCallback&, const CancellationCallback&)>;

/// A finding at /home/me/`name`, unless that is a whole path. Its detail is nil, and it isn't ticked.
[[nodiscard]] CleanableItem finding(std::string_view name, std::int64_t size,
                                    ScanCategory category = ScanCategory::userCache);
[[nodiscard]] CleanableItem ticked(CleanableItem item);
[[nodiscard]] CleanableItem keeper(CleanableItem item);
[[nodiscard]] CleanableItem grouped(CleanableItem item, std::string group);
[[nodiscard]] CleanableItem detailed(CleanableItem item, std::string detail);
[[nodiscard]] std::vector<std::string> namesOf(const std::vector<CleanableItem>& items);

/// The Contents/Info.plist of an app with this identifier.
[[nodiscard]] std::string infoPlist(const std::string& bundleID);

/// Something that waits in the background until the test lets it go.
class Gate {
  public:
    void open() { promise_.set_value(); }
    void pass() const { future_.wait(); }

  private:
    std::promise<void> promise_;
    std::shared_future<void> future_ = promise_.get_future().share();
};

/// Services whose every question is answered by a field, and recorded. Members are read in the background: settle()
/// before looking at them or changing them.
class KitWorld {
  public:
    KitWorld();
    /// What a model still has on its way arrives before the services go.
    ~KitWorld();
    KitWorld(const KitWorld&) = delete;
    KitWorld& operator=(const KitWorld&) = delete;

    /// The scans to come, one after the other; the last one is repeated.
    std::vector<Scan> scans;
    void finds(const std::vector<CleanableItem>& items);

    RecordingFileEffects disk;
    std::set<std::string> running;
    int timesAskedWhatRuns = 0;
    std::map<std::string, Date> dates;
    std::vector<std::string> datesAsked;
    std::vector<std::pair<std::string, std::string>> banners;
    std::vector<std::set<std::string>> tidiedDocks;
    std::vector<URL> shownInFileBrowser;
    int accessSettingsOpened = 0;
    int notificationsRequested = 0;
    /// Called before each clean, in the background.
    std::function<void(const ProgressCallback&, const CancellationCallback&)> beforeClean;
    std::vector<std::vector<CleanableItem>> cleaned;

    ModuleServices services;

    /// Until nothing runs any more and everything that came back has arrived.
    void settle();
    /// Lets the event loop turn until `isTrue`; fails the test when that takes half a minute.
    void waitUntil(const std::function<bool()>& isTrue);

  private:
    std::size_t nextScan_ = 0;
};

/// A history in a folder of the test's own.
struct HistoryWorld {
    TestFolder folder;
    ScopedVariable dataHome{"XDG_DATA_HOME", folder.path().c_str()};
};

}  // namespace tavrin::test
