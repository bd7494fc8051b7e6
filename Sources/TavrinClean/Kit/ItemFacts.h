// What the rows in view must ask the disk and the system for, fetched in the background.
#pragma once

#ifndef Q_MOC_RUN
#include "TavrinClean/Kit/Findings.h"
#include "TavrinClean/Kit/ModuleServices.h"
#endif

#include <QObject>
#include <cstdint>
#include <memory>
#include <set>
#include <string>
#include <unordered_map>
#include <vector>

namespace tavrin {

struct ItemFact {
    bool isDirectory = false;
    /// The day it arrived; empty where the module doesn't show it or nothing is known.
    std::string dateText = {};
    /// Its app runs.
    bool running = false;

    friend bool operator==(const ItemFact&, const ItemFact&) = default;
};

/// Of one screen, on the main thread. Only what is asked for is fetched, all that is asked for in one turn of the event
/// loop together: a list of 200,000 rows asks for the twenty that are in view.
class ItemFacts : public QObject {
    Q_OBJECT

  public:
    ItemFacts(const ModuleServices& services, bool showsDates, QObject* parent = nullptr);

    /// Other findings: nothing is known of them.
    void reset(std::shared_ptr<const Findings> findings);
    /// What is known of an item. Null when nothing is yet: then it is fetched, and `arrived` tells.
    [[nodiscard]] const ItemFact* find(std::uint32_t item);

    /// Asks again which applications run. What is known of items stays until it is known anew.
    void refreshRunningApps();
    [[nodiscard]] const std::set<std::string>& runningApps() const { return running_; }

  Q_SIGNALS:
    void arrived(const std::vector<std::uint32_t>& items);
    void runningAppsChanged();

  private:
    struct Known {
        ItemFact fact;
        /// Of the running applications that it was worked out with.
        std::uint64_t revision = 0;
    };
    using Facts = std::vector<std::pair<std::uint32_t, ItemFact>>;

    void ask(std::uint32_t item);
    void fetch();
    void keep(const std::shared_ptr<const Findings>& findings, std::uint64_t revision, const Facts& facts);

    const ModuleServices* services_;
    bool showsDates_;
    std::shared_ptr<const Findings> findings_;
    std::set<std::string> running_;
    std::uint64_t revision_ = 0;
    std::unordered_map<std::uint32_t, Known> known_;
    /// Due or on their way.
    std::set<std::uint32_t> asked_;
    /// Those of them that the next fetch takes along.
    std::vector<std::uint32_t> due_;
    bool fetchIsDue_ = false;
};

}  // namespace tavrin
