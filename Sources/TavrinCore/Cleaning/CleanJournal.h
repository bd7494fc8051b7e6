// What a clean under way has moved so far, noted beside the history path by path. The history itself learns of a clean
// when it has ended; a process that is killed before that, or a power cut, would leave what was moved in the Trash and
// in nobody's records.
//
// One file for each clean, "unfinished-UUID.json" in the folder of the history. Each of its lines is a history of one
// record (HistoryCodec.h) with one entry; all have the id of the record that the clean will get. A line begins with its
// line feed, so that one that was cut off by a full disk costs no other.
#pragma once

#include "TavrinCore/Cleaning/CleanupRecord.h"
#include "TavrinCore/Platform/AppendedFile.h"

#include <chrono>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace tavrin {

/// Of every file in the folder of the history: the paths of a user's files are nobody else's business.
inline constexpr unsigned kHistoryFileMode = 0600;

/// Made on one thread, then used on another; never on two at once.
class CleanJournal {
  public:
    /// What the record of the clean will be called; see CleanupRecord.
    CleanJournal(const URL& folder, std::string module, std::optional<std::string> moduleKey);

    /// Of the record that the clean will get.
    [[nodiscard]] const UUID& id() const { return line_.id; }
    /// Where it stands from the first note on; whoever has the record in safety removes it.
    [[nodiscard]] const URL& url() const { return url_; }

    /// That this has gone to the Trash, `bytes` of it. Right after the move: whatever ends the process from here on,
    /// the next start knows. A disk that refuses is no reason to stop a clean, and is not told.
    void note(const TrashedEntry& entry, std::int64_t bytes);

  private:
    URL url_;
    CleanupRecord line_;
    std::unique_ptr<AppendedFile> file_;
    bool isTried_ = false;
    std::chrono::steady_clock::time_point synced_;
};

/// A clean whose process ended before the history knew of it.
struct UnfinishedClean {
    URL journal;
    /// With the id that the history would have got, and the date of the last move. Nil when nothing in it can be read.
    std::optional<CleanupRecord> record;
};

/// Those in the folder of the history, in no order. Nobody may be cleaning meanwhile.
[[nodiscard]] std::vector<UnfinishedClean> unfinishedCleans(const URL& folder);

}  // namespace tavrin
