// What happens to the list of records when a clean ends and when one is put back. Lists are newest first.
#pragma once

#include "TavrinCore/Cleaning/CleanupRecord.h"

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace tavrin {

/// What a clean that has ended hands over to be remembered.
struct FinishedClean {
    std::string module;
    std::optional<std::string> moduleKey;
    std::int64_t removedItems = 0;
    std::int64_t reclaimedBytes = 0;
    std::vector<TrashedEntry> restorable;
};

/// Puts a new record in front. A clean that removed nothing leaves no trace: then it does nothing and gives false.
bool addRecord(std::vector<CleanupRecord>& records, FinishedClean clean, Date date = Date::now(),
               UUID id = UUID::random());

/// After a restore of the record `id`, of which `pending` didn't come back. With nothing pending the whole clean is
/// undone and every record of that id goes. Otherwise it keeps what is pending, and its figures: they tell of the clean
/// as it was. What can never come back stays pending too, so the history forgets no path by itself. A record that is
/// gone meanwhile is no fault.
void settleRestore(std::vector<CleanupRecord>& records, const UUID& id, std::vector<TrashedEntry> pending);

/// Bytes that the disk really got back: those of the emptied Trash, since what only went to the Trash still takes its
/// space. A sum beyond 64 bits is a programming fault and ends the program with a word to stderr.
[[nodiscard]] std::int64_t totalReclaimed(const std::vector<CleanupRecord>& records);

}  // namespace tavrin
