// The flow of one module: from idle through a scan, findings with ticks, a clean, to its summary.
#pragma once

#ifndef Q_MOC_RUN
#include "TavrinClean/Kit/Arrangement.h"
#include "TavrinClean/Kit/ManagedAtomicFlag.h"
#include "TavrinClean/Kit/ModuleServices.h"
#include "TavrinClean/Kit/ProgressMailbox.h"
#include "TavrinClean/Kit/Selection.h"
#include "TavrinCore/Models/Models.h"
#endif

#include <QObject>
#include <QPointer>
#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <vector>

namespace tavrin {

class CleanJournal;
class HistoryModel;
struct CleanOutcome;
struct ScanOutcome;

/// One group of results, for those who want them all at once; screens read an Arrangement.
struct ResultGroup {
    std::string id;
    std::string title;
    std::vector<CleanableItem> items;
    std::int64_t totalBytes = 0;
    std::int64_t selectedCount = 0;
};

/// Confined to the main thread. Scans, cleans, sorting and all else that takes time run off it, and come back as one
/// call on it; signals are sent once everything that belongs together has changed.
class ModuleViewModel : public QObject {
    Q_OBJECT

  public:
    enum class Phase {
        /// Nothing scanned, or the scan was cancelled, or the findings were let go.
        idle,
        scanning,
        /// There may be none.
        results,
        cleaning,
        done,
        failed,
        /// The right to read a protected place is missing.
        needsAccess,
    };
    /// What `done` tells.
    struct Done {
        std::int64_t reclaimed = 0;
        std::int64_t removed = 0;
        std::vector<CleanFailure> failures = {};

        friend bool operator==(const Done&, const Done&) = default;
    };

    ModuleViewModel(ModuleKind kind, const ModuleServices& services, QObject* parent = nullptr);
    /// Tells what runs to stop. What it brings back is dropped.
    ~ModuleViewModel() override;

    /// Not owned. Without one, cleans leave no record.
    void setHistory(HistoryModel* history);
    /// Told after each scan and each clean that came to results: the bytes of all findings.
    std::function<void(ModuleKind, std::int64_t)> onReclaimableChange;

    [[nodiscard]] ModuleKind kind() const { return kind_; }
    [[nodiscard]] Phase phase() const { return phase_; }
    [[nodiscard]] const Done& done() const { return done_; }
    /// The words of the error behind `failed`.
    [[nodiscard]] const std::string& failure() const { return failure_; }
    [[nodiscard]] const ScanProgress& progress() const { return progress_; }
    /// Folders that the last scan couldn't read.
    [[nodiscard]] std::int64_t blockedFolders() const { return blockedFolders_; }
    [[nodiscard]] SortOrder sortOrder() const { return sortOrder_; }

    // Findings, ticks and the order they are listed in. Never null.

    [[nodiscard]] const std::shared_ptr<const Findings>& findings() const { return findings_; }
    [[nodiscard]] const Selection& selection() const { return selection_; }
    /// All findings. Follows `sortOrder` a moment later.
    [[nodiscard]] const std::shared_ptr<const Arrangement>& arrangement() const { return arrangement_; }
    [[nodiscard]] bool isArranging() const { return arrangement_->sortOrder != sortOrder_; }
    [[nodiscard]] const ModuleServices& services() const { return *services_; }

    // The same as values, ticks included, worked out on each call: for short lists.

    [[nodiscard]] std::vector<CleanableItem> items() const;
    [[nodiscard]] std::vector<CleanableItem> selectedItems() const;
    [[nodiscard]] std::vector<CleanableItem> sortedItems() const;
    [[nodiscard]] std::vector<ResultGroup> groupedResults() const;

    /// The paths that a clean would touch, not the rows.
    [[nodiscard]] std::int64_t selectedPathCount() const { return selection_.paths(); }
    [[nodiscard]] std::int64_t totalBytes() const { return findings_->totalBytes(); }
    [[nodiscard]] std::span<const SortOrder> availableSortOrders() const { return tavrin::availableSortOrders(kind_); }

    /// Cancels what runs and scans anew.
    void startScan();
    /// Tells what runs to stop, and changes nothing else: a scan reaches `idle` when it has unwound, a clean `done`
    /// with what was done by then.
    void cancel();
    /// Cleans what is ticked; does nothing when nothing is.
    void clean();

    void toggle(const CleanableItem& item) { toggle(item.id); }
    void toggle(const UUID& id);
    /// Ticking passes keepers over, unticking doesn't.
    void setAll(bool selected, const std::string& groupID);
    void setAll(bool selected);
    void setSortOrder(SortOrder order);

    /// Lets the findings go, unless a scan or a clean runs.
    void evict();

  Q_SIGNALS:
    void phaseChanged();
    void progressChanged();
    /// Other findings: everything about them is new.
    void itemsChanged();
    void selectionChanged(const tavrin::SelectionChange& change);
    /// The same findings in another order.
    void arrangementChanged();
    void sortOrderChanged();

  private:
    void scanEnded(std::uint64_t generation, ScanOutcome outcome);
    void scanFailed(const ScanOutcome& outcome);
    [[nodiscard]] std::shared_ptr<CleanJournal> journal() const;
    void cleanEnded(CleanOutcome outcome);
    void keep(CleanOutcome& outcome);
    void tell(const CleanOutcome& outcome);
    void replaceFindings(std::shared_ptr<const Findings> findings, std::shared_ptr<const Arrangement> arrangement,
                         Selection selection);
    void clearFindings();
    void rearrange();
    void setPhase(Phase phase);
    [[nodiscard]] CancellationCallback cancellation() const;

    ModuleKind kind_;
    const ModuleServices* services_;
    QPointer<HistoryModel> history_;
    Phase phase_ = Phase::idle;
    Done done_;
    std::string failure_;
    ScanProgress progress_;
    std::int64_t blockedFolders_ = 0;
    SortOrder sortOrder_ = SortOrder::sizeDesc;
    std::shared_ptr<const Findings> findings_;
    std::shared_ptr<const Arrangement> arrangement_;
    Selection selection_;
    ProgressMailbox mailbox_;
    std::shared_ptr<ManagedAtomicFlag> cancelFlag_;
    std::uint64_t scanGeneration_ = 0;
};

}  // namespace tavrin
