#include "TavrinCore/Cleaning/HistoryList.h"

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <utility>

namespace tavrin {

bool addRecord(std::vector<CleanupRecord>& records, FinishedClean clean, Date date, UUID id) {
    if (clean.removedItems < 1) return false;
    records.insert(records.begin(), CleanupRecord{.id = id,
                                                  .date = date,
                                                  .module = std::move(clean.module),
                                                  .moduleKey = std::move(clean.moduleKey),
                                                  .itemCount = clean.removedItems,
                                                  .reclaimedBytes = clean.reclaimedBytes,
                                                  .entries = std::move(clean.restorable)});
    return true;
}

void settleRestore(std::vector<CleanupRecord>& records, const UUID& id, std::vector<TrashedEntry> pending) {
    if (pending.empty()) {
        // By value: the id may be that of a record in this very list.
        std::erase_if(records, [id](const CleanupRecord& record) { return record.id == id; });
        return;
    }
    const auto found = std::ranges::find(records, id, &CleanupRecord::id);
    if (found != records.end()) found->entries = std::move(pending);
}

std::int64_t totalReclaimed(const std::vector<CleanupRecord>& records) {
    std::int64_t total = 0;
    for (const CleanupRecord& record : records) {
        if (record.moduleKey != CleanupRecord::emptyTrashKey) continue;
        if (__builtin_add_overflow(total, record.reclaimedBytes, &total)) {
            std::fputs("The sum of all bytes ever reclaimed doesn't fit into 64 bits.\n", stderr);
            std::abort();
        }
    }
    return total;
}

}  // namespace tavrin
