#include "TavrinCore/Cleaning/HistoryStore.h"

#include "TavrinCore/Cleaning/HistoryCodec.h"
#include "TavrinCore/Platform/AtomicFile.h"
#include "TavrinCore/Platform/Folders.h"
#include "TavrinCore/Platform/ReadFile.h"

#include <algorithm>
#include <cstddef>
#include <filesystem>
#include <optional>
#include <string>
#include <system_error>
#include <utility>

namespace tavrin {
namespace {

/// Some four million paths: far beyond any history, and within what a program may hold.
constexpr std::size_t kMaxBytes = std::size_t{1} << 30U;

/// Once it has been made, with those above it, where it was missing.
bool existsOrMade(const URL& folder) {
    std::error_code error;
    std::filesystem::create_directories(folder.path(), error);
    return !error;
}

/// Made where they are missing; whether this program's own could be made shows when something is written to it.
URL historyFolder() {
    URL support = applicationSupportFolder();
    if (!existsOrMade(support)) support = homeFolder().appendingPathComponent("Library/Application Support", true);
    URL folder = support.appendingPathComponent("Tavrin Clean", true);
    (void)existsOrMade(folder);
    return folder;
}

/// The copy is safe on the disk before anybody writes over the original.
void keepAside(const std::string& bytes, const URL& damagedURL) {
    std::error_code ignored;
    std::filesystem::remove(damagedURL.path(), ignored);
    (void)writeAtomically(damagedURL, bytes, kHistoryFileMode);
}

/// What can't be read can still be renamed.
void moveAside(const URL& fileURL, const URL& damagedURL) {
    std::error_code ignored;
    std::filesystem::remove(damagedURL.path(), ignored);
    std::filesystem::rename(fileURL.path(), damagedURL.path(), ignored);
}

}  // namespace

HistoryStore::HistoryStore() {
    const URL folder = historyFolder();
    fileURL_ = folder.appendingPathComponent("history.json");
    damagedURL_ = folder.appendingPathComponent("history-damaged.json");
}

std::vector<CleanupRecord> HistoryStore::load() {
    std::vector<CleanupRecord> records = loadFile();
    takeUnfinished(records);
    return records;
}

std::vector<CleanupRecord> HistoryStore::loadFile() {
    const Result<std::string> bytes = readSmallFile(fileURL_, kMaxBytes);
    isUnread_ = !bytes && !bytes.error().meansMissing();
    if (!bytes || bytes->empty()) return {};
    DecodedHistory history = decodeHistory(*bytes);
    if (history.isIntact) return std::move(history.records);
    keepAside(*bytes, damagedURL_);
    if (!history.records.empty()) save(history.records);
    return std::move(history.records);
}

bool HistoryStore::save(const std::vector<CleanupRecord>& records) {
    const std::optional<std::string> text = encodeHistory(records);
    if (text && std::exchange(isUnread_, false)) moveAside(fileURL_, damagedURL_);
    if (!text || !writeAtomically(fileURL_, *text, kHistoryFileMode)) return false;
    std::error_code ignored;
    for (const URL& journal : std::exchange(settled_, {}))
        std::filesystem::remove(journal.path(), ignored);
    return true;
}

std::shared_ptr<CleanJournal> HistoryStore::journal(std::string module, std::optional<std::string> moduleKey) const {
    return std::make_shared<CleanJournal>(fileURL_.deletingLastPathComponent(), std::move(module),
                                          std::move(moduleKey));
}

/// A journal of which the list tells already is one that couldn't be removed in time.
void HistoryStore::takeUnfinished(std::vector<CleanupRecord>& records) {
    for (UnfinishedClean& clean : unfinishedCleans(fileURL_.deletingLastPathComponent())) {
        if (!clean.record) continue;
        settled_.push_back(std::move(clean.journal));
        if (std::ranges::find(records, clean.record->id, &CleanupRecord::id) != records.end()) continue;
        const auto older = std::ranges::find_if(
            records, [&clean](const CleanupRecord& record) { return record.date <= clean.record->date; });
        records.insert(older, std::move(*clean.record));
    }
    if (!settled_.empty()) save(records);
}

}  // namespace tavrin
