// The history of cleans, shared by the flows that write it and the screens that show it.
#pragma once

#ifndef Q_MOC_RUN
#include "TavrinCore/Cleaning/Cleaner.h"
#include "TavrinCore/Cleaning/CleanupRecord.h"
#include "TavrinCore/Cleaning/HistoryStore.h"
#endif

#include <QObject>
#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <vector>

namespace tavrin {

class Background;

/// Confined to the main thread. Every change is written to the file at once, on the main thread, so that the order of
/// writes is the order of changes; a disk that refuses changes nothing here, and the next write tries again.
class HistoryModel : public QObject {
    Q_OBJECT
    Q_PROPERTY(int count READ count NOTIFY recordsChanged FINAL)

  public:
    using Restore = std::function<RestoreResult(std::span<const TrashedEntry>)>;

    /// Loads the file. `restore` moves entries back and is called off the main thread.
    explicit HistoryModel(Background& background, Restore restore = {}, QObject* parent = nullptr);
    ~HistoryModel() override;

    /// Newest first.
    [[nodiscard]] const std::vector<CleanupRecord>& records() const { return records_; }
    [[nodiscard]] int count() const { return static_cast<int>(records_.size()); }
    /// Bytes that the disk really got back: those of the emptied Trash.
    [[nodiscard]] std::int64_t totalReclaimed() const;
    [[nodiscard]] const URL& fileURL() const { return store_.fileURL(); }
    [[nodiscard]] const URL& damagedURL() const { return store_.damagedURL(); }

    /// A clean begins: what it moves is noted there as it goes, so that nothing is forgotten if its end never comes.
    [[nodiscard]] std::shared_ptr<CleanJournal> journal(const std::string& module,
                                                        const std::optional<std::string>& moduleKey) const;
    /// A clean has ended, and its journal has done its work. One that removed nothing leaves no record.
    void add(const std::string& module, const std::optional<std::string>& moduleKey, const CleanResult& result,
             const std::shared_ptr<CleanJournal>& journal = nullptr);
    /// Forgets every record. Nothing leaves the Trash.
    void clear();
    /// Puts a record's entries back, off the main thread; `done` is called on it, unless `owner` is gone by then. The
    /// record is settled in any case. Not twice at once: a second run over the same entries would report as gone what
    /// the first has just put back.
    void restore(const CleanupRecord& record, QObject* owner, std::function<void(const RestoreResult&)> done);
    /// The records that are being put back, the latest last, whichever screen asked for it.
    [[nodiscard]] const std::vector<UUID>& restoring() const { return restoring_; }
    [[nodiscard]] bool isRestoring(const UUID& id) const;

  Q_SIGNALS:
    void recordsChanged();
    void restoringChanged();

  private:
    void settle(const UUID& id, const RestoreResult& result);
    void save();

    Background* background_;
    Restore restore_;
    HistoryStore store_;
    std::vector<CleanupRecord> records_;
    std::vector<UUID> restoring_;
};

}  // namespace tavrin
