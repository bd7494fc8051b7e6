// What a module's screen shows, as ModuleScreenModel tells it; what it does stands in ModuleScreenModel.cpp.
#include "TavrinClean/Kit/ItemFacts.h"
#include "TavrinClean/Kit/ModuleScreenModel.h"
#include "TavrinClean/Kit/ModuleScreenTexts.h"
#include "TavrinClean/Kit/ModuleViewModel.h"
#include "TavrinClean/Kit/Text.h"
#include "TavrinCore/Scanning/ByteFormatter.h"
#include "TavrinCore/Strings.h"

#include <algorithm>

namespace tavrin {
namespace {

using FlowPhase = ModuleViewModel::Phase;

}  // namespace

QString ModuleScreenModel::title() const {
    return flow_.isNull() ? QString() : qtText(tavrin::title(flow_->kind()));
}

QString ModuleScreenModel::subtitle() const {
    return flow_.isNull() ? QString() : qtText(tavrin::subtitle(flow_->kind()));
}

QString ModuleScreenModel::symbol() const {
    return flow_.isNull() ? QString() : qtText(tavrin::symbol(flow_->kind()));
}

QString ModuleScreenModel::note() const {
    return flow_.isNull() ? QString() : qtText(moduleNote(flow_->kind()));
}

QString ModuleScreenModel::warning() const {
    const bool shown = phase() == Results && flow_->blockedFolders() >= 1;
    return shown ? qtText(S::moduleScanPartial(flow_->blockedFolders())) : QString();
}

ModuleScreenModel::Phase ModuleScreenModel::phase() const {
    if (flow_.isNull()) return Idle;
    switch (flow_->phase()) {
        case FlowPhase::idle:
            return Idle;
        case FlowPhase::scanning:
            return Scanning;
        case FlowPhase::results:
            return Results;
        case FlowPhase::cleaning:
            return Cleaning;
        case FlowPhase::done:
            return Done;
        case FlowPhase::failed:
            return Failed;
        case FlowPhase::needsAccess:
            break;
    }
    return NeedsAccess;
}

bool ModuleScreenModel::busy() const {
    return phase() == Scanning || phase() == Cleaning;
}

ModuleScreenModel::Layout ModuleScreenModel::layout() const {
    if (flow_.isNull()) return List;
    if (flow_->kind() == ModuleKind::similarImages) return Gallery;
    return flow_->kind() == ModuleKind::appLanguages ? Languages : List;
}

double ModuleScreenModel::fraction() const {
    return flow_.isNull() ? -1 : flow_->progress().fractionCompleted.value_or(-1);
}

QString ModuleScreenModel::progressText() const {
    return flow_.isNull() ? QString() : qtLine(flow_->progress().phase);
}

QString ModuleScreenModel::progressPath() const {
    return flow_.isNull() ? QString() : qtLine(flow_->progress().currentPath.value_or(""));
}

QString ModuleScreenModel::progressFound() const {
    const bool shown = !flow_.isNull() && flow_->progress().itemsFound >= 1;
    return shown ? qtText(S::moduleItemsFound(flow_->progress().itemsFound)) : QString();
}

int ModuleScreenModel::itemCount() const {
    return flow_.isNull() ? 0 : static_cast<int>(flow_->findings()->size());
}

QString ModuleScreenModel::itemCountText() const {
    return qtText(S::countItems(itemCount()));
}

bool ModuleScreenModel::nothingFound() const {
    return phase() == Results && itemCount() == 0;
}

bool ModuleScreenModel::nothingMatches() const {
    return shown_ != nullptr && itemCount() > 0 && !filtering_ && shown_->order.empty();
}

QStringList ModuleScreenModel::sortLabels() const {
    if (flow_.isNull()) return {};
    const auto orders = flow_->availableSortOrders();
    QStringList labels;
    labels.reserve(static_cast<qsizetype>(orders.size()));
    for (const SortOrder order : orders)
        labels.append(qtText(label(order)));
    return labels;
}

int ModuleScreenModel::sortIndex() const {
    if (flow_.isNull()) return 0;
    const auto orders = flow_->availableSortOrders();
    return static_cast<int>(std::ranges::find(orders, flow_->sortOrder()) - orders.begin());
}

bool ModuleScreenModel::showsFooter() const {
    return phase() == Results && itemCount() > 0;
}

int ModuleScreenModel::selectedCount() const {
    return flow_.isNull() ? 0 : static_cast<int>(flow_->selection().count());
}

QString ModuleScreenModel::selectedCountText() const {
    return qtText(S::moduleSelectedCount(selectedCount()));
}

QString ModuleScreenModel::selectedSizeText() const {
    return qtText(ByteFormatter::string(flow_.isNull() ? 0 : flow_->selection().bytes()));
}

bool ModuleScreenModel::canClean() const {
    return selectedCount() > 0;
}

QString ModuleScreenModel::doneSummary() const {
    if (flow_.isNull()) return {};
    const ModuleViewModel::Done& done = flow_->done();
    if (!done.failures.empty() && done.reclaimed < 1) return {};
    return qtText(tavrin::doneSummary(flow_->kind(), done.removed, done.reclaimed));
}

bool ModuleScreenModel::doneWithFailures() const {
    return !flow_.isNull() && !flow_->done().failures.empty();
}

bool ModuleScreenModel::doneReclaimed() const {
    return !flow_.isNull() && flow_->done().reclaimed >= 1;
}

QString ModuleScreenModel::failuresTitle() const {
    return qtText(S::cleanFailuresTitle(flow_.isNull() ? 0 : std::ssize(flow_->done().failures)));
}

QString ModuleScreenModel::errorText() const {
    return flow_.isNull() ? QString() : qtText(S::moduleError(lineText(flow_->failure())));
}

}  // namespace tavrin
