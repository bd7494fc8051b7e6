#include "TavrinCore/Cleaning/CleanJournal.h"

#include "TavrinCore/Cleaning/HistoryCodec.h"
#include "TavrinCore/Platform/ReadFile.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <iterator>
#include <limits>
#include <string_view>
#include <system_error>
#include <utility>

namespace tavrin {
namespace {

constexpr std::string_view kPrefix = "unfinished-";
constexpr std::string_view kSuffix = ".json";
/// A million paths: far beyond any clean, and within what a program may hold.
constexpr std::size_t kMaxBytes = std::size_t{1} << 29U;
/// What a power cut may cost. To wait for the disk after each path would make a clean of many small ones a long one.
constexpr std::chrono::seconds kBetweenSyncs(1);

bool isJournal(std::string_view name) {
    return name.starts_with(kPrefix) && name.ends_with(kSuffix);
}

void merge(std::optional<CleanupRecord>& whole, CleanupRecord&& line) {
    if (!whole) {
        whole = std::move(line);
        return;
    }
    whole->date = std::max(whole->date, line.date);
    if (__builtin_add_overflow(whole->reclaimedBytes, line.reclaimedBytes, &whole->reclaimedBytes))
        whole->reclaimedBytes = std::numeric_limits<std::int64_t>::max();
    std::ranges::move(line.entries, std::back_inserter(whole->entries));
}

std::optional<CleanupRecord> readJournal(const URL& url) {
    const Result<std::string> bytes = readSmallFile(url, kMaxBytes);
    std::optional<CleanupRecord> whole;
    std::string_view rest = bytes ? std::string_view(*bytes) : std::string_view();
    while (!rest.empty()) {
        const std::size_t end = std::min(rest.find('\n'), rest.size());
        for (CleanupRecord& line : decodeHistory(rest.substr(0, end)).records)
            merge(whole, std::move(line));
        rest.remove_prefix(std::min(end + 1, rest.size()));
    }
    if (whole) whole->itemCount = std::ssize(whole->entries);
    return whole;
}

}  // namespace

CleanJournal::CleanJournal(const URL& folder, std::string module, std::optional<std::string> moduleKey)
    : line_{.id = UUID::random(),
            .date = {},
            .module = std::move(module),
            .moduleKey = std::move(moduleKey),
            .itemCount = 1,
            .reclaimedBytes = 0,
            .entries = {}} {
    url_ = folder.appendingPathComponent(std::string(kPrefix) + line_.id.uuidString() + std::string(kSuffix));
}

void CleanJournal::note(const TrashedEntry& entry, std::int64_t bytes) {
    if (!std::exchange(isTried_, true)) file_ = AppendedFile::make(url_, kHistoryFileMode);
    if (file_ == nullptr) return;
    line_.date = Date::now();
    line_.reclaimedBytes = bytes;
    line_.entries = {entry};
    std::optional<std::string> text = encodeHistory({line_});
    if (!text) return;
    // Those of the layout: within a text they are written as "\n".
    std::erase(*text, '\n');
    file_->append("\n" + *text);
    const auto now = std::chrono::steady_clock::now();
    if (now - synced_ < kBetweenSyncs) return;
    file_->sync();
    synced_ = now;
}

std::vector<UnfinishedClean> unfinishedCleans(const URL& folder) {
    std::vector<UnfinishedClean> found;
    std::error_code error;
    for (std::filesystem::directory_iterator entry(folder.path(), error), end; !error && entry != end;
         entry.increment(error)) {
        const std::string name = entry->path().filename().native();
        if (!isJournal(name)) continue;
        URL journal = folder.appendingPathComponent(name);
        std::optional<CleanupRecord> record = readJournal(journal);
        found.push_back({std::move(journal), std::move(record)});
    }
    return found;
}

}  // namespace tavrin
