#include "TavrinClean/Kit/ItemFacts.h"

#include "TavrinCore/LiveCacheCheck.h"
#include "TavrinCore/Platform/FileStatus.h"
#include "TavrinCore/Scanning/DateText.h"

#include <QMetaObject>
#include <utility>

namespace tavrin {
namespace {

/// More than anybody has in view; what is beyond is fetched anew when it comes back into view.
constexpr std::size_t kMostKnown = 4'096;

/// One look at the disk for a row. A link to a folder is no folder.
ItemFact factOf(const CleanableItem& item, const std::set<std::string>& running, const InstallDate& installDate) {
    ItemFact fact;
    const Result<FileStatus> status = fileStatus(item.url);
    fact.isDirectory = status && status->type == FileType::directory;
    if (installDate) {
        if (const std::optional<Date> date = installDate(item.url)) fact.dateText = dateText(*date);
    }
    fact.running = LiveCacheCheck::belongsToRunningApp(item, running);
    return fact;
}

}  // namespace

ItemFacts::ItemFacts(const ModuleServices& services, bool showsDates, QObject* parent)
    : QObject(parent), services_(&services), showsDates_(showsDates) {}

void ItemFacts::reset(std::shared_ptr<const Findings> findings) {
    findings_ = std::move(findings);
    known_.clear();
    asked_.clear();
    due_.clear();
}

const ItemFact* ItemFacts::find(std::uint32_t item) {
    const auto found = known_.find(item);
    if (found == known_.end()) {
        ask(item);
        return nullptr;
    }
    if (found->second.revision != revision_) ask(item);
    return &found->second.fact;
}

void ItemFacts::ask(std::uint32_t item) {
    if (!asked_.insert(item).second) return;
    due_.push_back(item);
    if (std::exchange(fetchIsDue_, true)) return;
    QMetaObject::invokeMethod(this, &ItemFacts::fetch, Qt::QueuedConnection);
}

void ItemFacts::fetch() {
    fetchIsDue_ = false;
    if (findings_ == nullptr || due_.empty()) return;
    services_->background->run(
        Background::Lane::rows, this,
        [findings = findings_, items = std::exchange(due_, {}), running = running_,
         installDate = showsDates_ ? services_->installDate : InstallDate()] {
            Facts facts;
            facts.reserve(items.size());
            for (const std::uint32_t item : items)
                facts.emplace_back(item, factOf((*findings)[item], running, installDate));
            return facts;
        },
        [this, findings = findings_, revision = revision_](const Facts& facts) { keep(findings, revision, facts); });
}

void ItemFacts::keep(const std::shared_ptr<const Findings>& findings, std::uint64_t revision, const Facts& facts) {
    if (findings != findings_) return;
    if (known_.size() > kMostKnown) known_.clear();
    std::vector<std::uint32_t> changed;
    changed.reserve(facts.size());
    for (const auto& [item, fact] : facts) {
        asked_.erase(item);
        const auto [place, isNew] = known_.try_emplace(item);
        if (isNew || place->second.fact != fact) changed.push_back(item);
        place->second = {.fact = fact, .revision = revision};
        // Another application has started or quit while this was on its way.
        if (revision != revision_) ask(item);
    }
    if (!changed.empty()) Q_EMIT arrived(changed);
}

void ItemFacts::refreshRunningApps() {
    services_->background->run(Background::Lane::work, this, services_->runningBundleIDs,
                               [this](std::set<std::string> running) {
                                   if (running == running_) return;
                                   running_ = std::move(running);
                                   ++revision_;
                                   Q_EMIT runningAppsChanged();
                               });
}

}  // namespace tavrin
