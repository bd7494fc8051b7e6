#include "TavrinClean/Kit/ModuleScreenModel.h"

#include "TavrinClean/Kit/ItemData.h"
#include "TavrinClean/Kit/ItemFacts.h"
#include "TavrinClean/Kit/ModuleScreenTexts.h"
#include "TavrinClean/Kit/ModuleViewModel.h"
#include "TavrinClean/Kit/Text.h"
#include "TavrinCore/LiveCacheCheck.h"
#include "TavrinCore/Scanning/ByteFormatter.h"
#include "TavrinCore/Strings.h"

#include <algorithm>
#include <utility>

namespace tavrin {
namespace {

using FlowPhase = ModuleViewModel::Phase;

/// Nothing listed yet of findings that have just arrived.
std::shared_ptr<const Arrangement> nothingOf(const std::shared_ptr<const Findings>& findings, std::string query) {
    auto arrangement = std::make_shared<Arrangement>();
    arrangement->findings = findings;
    arrangement->query = std::move(query);
    arrangement->places.assign(findings->size(), Arrangement::nowhere);
    return arrangement;
}

std::int64_t runningAmong(const Findings& findings, const std::vector<std::uint8_t>& ticks,
                          const std::set<std::string>& running) {
    std::int64_t count = 0;
    for (std::uint32_t item = 0; item < findings.size(); ++item) {
        const bool isTickedApp = ticks[item] != 0 && findings[item].category == ScanCategory::application;
        if (isTickedApp && LiveCacheCheck::belongsToRunningApp(findings[item], running)) ++count;
    }
    return count;
}

}  // namespace

ModuleScreenModel::ModuleScreenModel(QObject* parent) : QObject(parent) {}

ModuleScreenModel::~ModuleScreenModel() = default;

void ModuleScreenModel::setStore(ModuleStore* store) {
    if (store == store_ || !store_.isNull()) return;
    store_ = store;
    Q_EMIT storeChanged();
    openWhenReady();
}

void ModuleScreenModel::setModuleKey(const QString& key) {
    if (key == moduleKey_ || !moduleKey_.isEmpty()) return;
    moduleKey_ = key;
    Q_EMIT moduleKeyChanged();
    openWhenReady();
}

void ModuleScreenModel::openWhenReady() {
    const auto kind = moduleKindFromRawValue(moduleKey_.toStdString());
    if (store_.isNull() || !kind) return;
    flow_ = &store_->viewModel(*kind);
    facts_ = std::make_unique<ItemFacts>(flow_->services(), showsInstallDates(*kind));
    facts_->reset(flow_->findings());
    if (layout() == List) {
        rows_ = std::make_unique<ResultsModel>(*flow_, *facts_);
    } else {
        groups_ = std::make_unique<GroupsModel>(*flow_);
    }
    shown_ = flow_->arrangement();
    failures_.show(flow_->done().failures);
    connectFlow();
    facts_->refreshRunningApps();
    Q_EMIT opened();
    Q_EMIT phaseChanged();
    Q_EMIT progressChanged();
    Q_EMIT itemsChanged();
    Q_EMIT sortIndexChanged();
    Q_EMIT selectionChanged();
    Q_EMIT shownChanged();
}

void ModuleScreenModel::connectFlow() {
    ModuleViewModel* flow = flow_;
    connect(flow, &ModuleViewModel::phaseChanged, this, &ModuleScreenModel::flowPhaseChanged);
    connect(flow, &ModuleViewModel::progressChanged, this, &ModuleScreenModel::progressChanged);
    connect(flow, &ModuleViewModel::itemsChanged, this, &ModuleScreenModel::flowItemsChanged);
    connect(flow, &ModuleViewModel::selectionChanged, this, &ModuleScreenModel::flowSelectionChanged);
    connect(flow, &ModuleViewModel::arrangementChanged, this, &ModuleScreenModel::showArrangement);
    connect(flow, &ModuleViewModel::sortOrderChanged, this, &ModuleScreenModel::sortIndexChanged);
    if (rows_ == nullptr) return;
    connect(facts_.get(), &ItemFacts::arrived, rows_.get(), &ResultsModel::factsChanged);
    connect(facts_.get(), &ItemFacts::runningAppsChanged, rows_.get(), &ResultsModel::runningAppsChanged);
}

void ModuleScreenModel::flowPhaseChanged() {
    if (flow_->phase() == FlowPhase::done) failures_.show(flow_->done().failures);
    if (flow_->phase() != FlowPhase::results) dismissClean();
    Q_EMIT phaseChanged();
}

void ModuleScreenModel::flowItemsChanged() {
    // What stood here belongs to findings that are gone; with a search, the new ones follow in a moment.
    const std::string query = searchForm(searchText_.toStdString());
    auto arrangement = query.empty() ? flow_->arrangement() : nothingOf(flow_->findings(), query);
    facts_->reset(flow_->findings());
    shown_ = arrangement;
    filtering_ = !query.empty();
    if (rows_ != nullptr) rows_->reset(arrangement);
    if (groups_ != nullptr) groups_->show(arrangement);
    Q_EMIT itemsChanged();
    Q_EMIT shownChanged();
    facts_->refreshRunningApps();
    showArrangement();
}

void ModuleScreenModel::flowSelectionChanged(const SelectionChange& change) {
    if (rows_ != nullptr) rows_->selectionChanged(change);
    if (groups_ != nullptr) groups_->selectionChanged(change);
    // A screen reader reaches the rows behind the question, whose figures would no longer be those of the answer.
    dismissClean();
    Q_EMIT selectionChanged();
}

void ModuleScreenModel::showArrangement() {
    const std::uint64_t number = ++*search_;
    const std::string query = searchForm(searchText_.toStdString());
    std::shared_ptr<const Arrangement> all = flow_->arrangement();
    filtering_ = !query.empty();
    if (query.empty()) return show(std::move(all));
    flow_->services().background->run(
        Background::Lane::quick, this,
        [all, query, number, latest = search_]() -> std::shared_ptr<const Arrangement> {
            // Whoever types on is answered for what stands there in the end.
            return *latest == number ? filtered(all, query) : nullptr;
        },
        [this, number](std::shared_ptr<const Arrangement> arrangement) {
            if (number != *search_) return;
            filtering_ = false;
            show(std::move(arrangement));
        });
}

void ModuleScreenModel::show(std::shared_ptr<const Arrangement> arrangement) {
    shown_ = arrangement;
    if (rows_ != nullptr) rows_->show(arrangement);
    if (groups_ != nullptr) groups_->show(arrangement);
    Q_EMIT shownChanged();
}

void ModuleScreenModel::setSearchText(const QString& text) {
    if (text == searchText_) return;
    searchText_ = text;
    Q_EMIT searchTextChanged();
    if (!flow_.isNull()) showArrangement();
}

void ModuleScreenModel::setSortIndex(int index) {
    if (flow_.isNull()) return;
    const auto orders = flow_->availableSortOrders();
    if (index < 0 || index >= static_cast<int>(orders.size())) return;
    flow_->setSortOrder(orders[static_cast<std::size_t>(index)]);
}

void ModuleScreenModel::startScan() {
    if (!flow_.isNull()) flow_->startScan();
}

void ModuleScreenModel::stop() {
    if (!flow_.isNull()) flow_->cancel();
}

void ModuleScreenModel::toggle(const QString& itemId) {
    const auto id = UUID::fromString(itemId.toStdString());
    if (!flow_.isNull() && id) flow_->toggle(*id);
}

void ModuleScreenModel::toggleGroup(const QString& groupId) {
    if (flow_.isNull()) return;
    const auto group = groupWithHandle(*flow_->findings(), groupId);
    const auto place = group ? shown_->placeOfGroup(*group) : std::nullopt;
    if (!place) return;
    const ArrangedGroup& arranged = shown_->groups[*place];
    const auto begin = shown_->order.begin();
    const bool allTicked = std::all_of(begin + arranged.begin, begin + arranged.end,
                                       [this](std::uint32_t item) { return flow_->selection().contains(item); });
    flow_->setAll(!allTicked, flow_->findings()->groupId(*group));
}

void ModuleScreenModel::toggleKept(const QString& groupId) {
    if (flow_.isNull()) return;
    const auto group = groupWithHandle(*flow_->findings(), groupId);
    if (!group) return;
    const Findings& findings = *flow_->findings();
    bool kept = true;
    for (std::uint32_t item = 0; item < findings.size() && kept; ++item)
        kept = findings.groupOf(item) != *group || !flow_->selection().contains(item);
    flow_->setAll(kept, findings.groupId(*group));
}

void ModuleScreenModel::selectAll() {
    if (!flow_.isNull()) flow_->setAll(true);
}

void ModuleScreenModel::selectNone() {
    if (!flow_.isNull()) flow_->setAll(false);
}

void ModuleScreenModel::toggleCollapsed(const QString& groupId) {
    if (rows_ != nullptr) rows_->toggleCollapsed(groupId);
}

void ModuleScreenModel::toggleExpanded(const QString& itemId) {
    if (rows_ != nullptr) rows_->toggleExpanded(itemId);
}

void ModuleScreenModel::askToClean() {
    if (!canClean() || phase() != Results) return;
    if (!flow_->findings()->hasApplications()) return presentConfirmation(0);
    flow_->services().background->run(
        Background::Lane::quick, this,
        [findings = flow_->findings(), ticks = flow_->selection().ticks(), running = facts_->runningApps()] {
            return runningAmong(*findings, ticks, running);
        },
        [this](std::int64_t running) { presentConfirmation(running); });
}

void ModuleScreenModel::presentConfirmation(std::int64_t runningApps) {
    if (!canClean() || phase() != Results) return;
    const Selection& selection = flow_->selection();
    confirmMessage_ = qtText(tavrin::confirmMessage(flow_->kind(), selection.paths(), selection.bytes(), runningApps));
    confirming_ = true;
    Q_EMIT confirmingChanged();
}

void ModuleScreenModel::dismissClean() {
    if (!std::exchange(confirming_, false)) return;
    Q_EMIT confirmingChanged();
}

void ModuleScreenModel::clean() {
    if (flow_.isNull() || phase() != Results) return;
    dismissClean();
    flow_->clean();
}

void ModuleScreenModel::refreshRunningApps() {
    if (facts_ != nullptr) facts_->refreshRunningApps();
}

void ModuleScreenModel::showInFinder(const QString& url) {
    const auto file = URL::fromAbsoluteString(url.toStdString());
    if (!flow_.isNull() && file) flow_->services().showInFileBrowser(*file);
}

void ModuleScreenModel::openAccessSettings() {
    if (!flow_.isNull()) flow_->services().openAccessSettings();
}

}  // namespace tavrin
