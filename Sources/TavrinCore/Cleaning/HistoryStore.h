// The history on the disk: history.json in this program's folder of the user's application support.
//
// It is written to survive damage. A bad record costs that record; a bad file is kept aside as history-damaged.json;
// and no failure here ever stops a clean or a start, so nothing is thrown and nobody has to look at what comes back.
//
// One process is expected to use it, from one thread.
#pragma once

#include "TavrinCore/Cleaning/CleanJournal.h"
#include "TavrinCore/Cleaning/CleanupRecord.h"

#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace tavrin {

class HistoryStore {
  public:
    /// Settles the two places and makes the folder. Where the user's application support can't be had, it lies in
    /// "Library/Application Support" of the home; where even that can't be made, loads find nothing and saves fail.
    HistoryStore();

    [[nodiscard]] const URL& fileURL() const { return fileURL_; }
    /// The latest file that was damaged or couldn't be read, byte for byte. There is never more than this one.
    [[nodiscard]] const URL& damagedURL() const { return damagedURL_; }

    /// The records of the file, newest first. None for a missing file or one without a byte: the first start.
    ///
    /// Of a damaged file, a copy is put aside and what is whole comes back; when that is anything, it is also written
    /// to the file. Otherwise the file stays as it is until the next save. So does one that can't be read, such as one
    /// that belongs to another user: that save puts it aside, since nobody knows what it holds.
    ///
    /// Cleans whose process ended in the middle of them stand among the records, with what they had moved by then.
    [[nodiscard]] std::vector<CleanupRecord> load();

    /// Writes the whole list in place of the file, or leaves the file untouched and gives false. A caller may go on
    /// either way: the next save tries again.
    bool save(const std::vector<CleanupRecord>& records);  // NOLINT(modernize-use-nodiscard)

    /// For a clean that begins now. When it has ended, its record gets the journal's id, and `settle` is told.
    [[nodiscard]] std::shared_ptr<CleanJournal> journal(std::string module, std::optional<std::string> moduleKey) const;
    /// The record of that clean stands in the caller's list, or there is nothing to record: the journal goes with the
    /// next save that the disk takes.
    void settle(const CleanJournal& journal) { settled_.push_back(journal.url()); }

  private:
    [[nodiscard]] std::vector<CleanupRecord> loadFile();
    void takeUnfinished(std::vector<CleanupRecord>& records);

    URL fileURL_;
    URL damagedURL_;
    /// Something stands in the file's place that this has never read.
    bool isUnread_ = false;
    /// Journals of cleans that the list of records tells of.
    std::vector<URL> settled_;
};

}  // namespace tavrin
