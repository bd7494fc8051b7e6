#include "KitWorld.h"

#include "Support/PropertyLists.h"

#include <gtest/gtest.h>

#include <QCoreApplication>
#include <QDeadlineTimer>
#include <QEventLoop>
#include <algorithm>

namespace tavrin::test {
namespace {

class FakeScanner final : public Scanner {
  public:
    FakeScanner(ModuleKind kind, Scan scan) : kind_(kind), scan_(std::move(scan)) {}

    [[nodiscard]] ModuleKind kind() const override { return kind_; }
    [[nodiscard]] std::vector<CleanableItem> scan(const ProgressCallback& progress,
                                                  const CancellationCallback& isCancelled) const override {
        return scan_(progress, isCancelled);
    }

  private:
    ModuleKind kind_;
    Scan scan_;
};

}  // namespace

CleanableItem finding(std::string_view name, std::int64_t size, ScanCategory category) {
    const URL url =
        name.starts_with('/') ? URL::fromPath(name) : URL::fromPath("/home/me").appendingPathComponent(name);
    return {.id = UUID::random(), .url = url, .size = size, .category = category};
}

CleanableItem ticked(CleanableItem item) {
    item.isSelected = true;
    return item;
}

CleanableItem keeper(CleanableItem item) {
    item.isGroupKeeper = true;
    return item;
}

CleanableItem grouped(CleanableItem item, std::string group) {
    item.groupID = std::move(group);
    return item;
}

CleanableItem detailed(CleanableItem item, std::string detail) {
    item.detail = std::move(detail);
    return item;
}

std::vector<std::string> namesOf(const std::vector<CleanableItem>& items) {
    std::vector<std::string> names;
    for (const CleanableItem& item : items)
        names.emplace_back(item.name());
    return names;
}

std::string infoPlist(const std::string& bundleID) {
    return xmlPropertyList("<dict><key>CFBundleIdentifier</key><string>" + bundleID + "</string></dict>");
}

KitWorld::KitWorld() {
    services.background = std::make_shared<Background>();
    services.makeScanner = [this](ModuleKind kind) -> std::unique_ptr<Scanner> {
        const Scan& scan = scans.at(std::min(nextScan_, scans.size() - 1));
        ++nextScan_;
        return std::make_unique<FakeScanner>(kind, scan);
    };
    services.clean = [this](std::span<const CleanableItem> items, const ProgressCallback& progress,
                            const CancellationCallback& isCancelled, const TrashedCallback& onTrashed) {
        cleaned.emplace_back(items.begin(), items.end());
        if (beforeClean) beforeClean(progress, isCancelled);
        return Cleaner(disk).clean(items, progress, isCancelled, onTrashed);
    };
    services.restore = [this](std::span<const TrashedEntry> entries) { return Cleaner(disk).restore(entries); };
    services.notify = [this](const std::string& title, const std::string& body) { banners.emplace_back(title, body); };
    services.requestNotifications = [this] { ++notificationsRequested; };
    services.runningBundleIDs = [this] {
        ++timesAskedWhatRuns;
        return running;
    };
    services.tidyDock = [this](const std::set<std::string>& paths) { tidiedDocks.push_back(paths); };
    services.installDate = [this](const URL& url) -> std::optional<Date> {
        datesAsked.push_back(url.path());
        const auto found = dates.find(url.path());
        return found != dates.end() ? std::optional(found->second) : std::nullopt;
    };
    services.showInFileBrowser = [this](const URL& url) { shownInFileBrowser.push_back(url); };
    services.openAccessSettings = [this] { ++accessSettingsOpened; };
}

KitWorld::~KitWorld() {
    services.background->drain();
}

void KitWorld::finds(const std::vector<CleanableItem>& items) {
    for (const CleanableItem& item : items) {
        disk.standing.insert(item.url.path());
        for (const URL& related : item.relatedURLs)
            disk.standing.insert(related.path());
    }
    scans.push_back([items](const auto&, const auto&) { return items; });
}

void KitWorld::settle() {
    // What has arrived may ask for more in a later turn of the event loop.
    for (int turn = 0; turn < 4; ++turn) {
        services.background->drain();
        QCoreApplication::processEvents();
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    }
    services.background->drain();
}

void KitWorld::waitUntil(const std::function<bool()>& isTrue) {
    QDeadlineTimer deadline(30'000);
    while (!isTrue() && !deadline.hasExpired())
        QCoreApplication::processEvents(QEventLoop::AllEvents, 20);
    ASSERT_TRUE(isTrue()) << "it never came about";
}

}  // namespace tavrin::test
