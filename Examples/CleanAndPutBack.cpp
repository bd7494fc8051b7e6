// The whole road of one clean, through the public interface of the core, on a home that is given:
//
//   scan -> look at the findings -> clean -> what the Trash says -> history -> put back -> is every byte where it was?
//
// Usage: clean-and-put-back HOME. It touches that folder alone, and ends with 0 only if all that it claims is true.
// scripts/make-sample-home makes a home for it. LANGUAGE=es turns the core's own words to Spanish.
#include "TavrinCore/Cleaning/Cleaner.h"
#include "TavrinCore/Cleaning/HistoryList.h"
#include "TavrinCore/Cleaning/HistoryStore.h"
#include "TavrinCore/ScannerFactory.h"
#include "TavrinCore/Scanning/ByteFormatter.h"
#include "TerminalText.h"
#include "TreeManifest.h"

#include <algorithm>
#include <chrono>
#include <cstdlib>
#include <exception>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <iterator>
#include <map>
#include <optional>
#include <set>
#include <stdexcept>
#include <string>
#include <vector>

namespace {

using namespace tavrin;
using example::changesOfMoving;
using example::differences;
using example::ExpectedChanges;
using example::manifestOf;
using example::terminalText;
using example::TreeManifest;

/// Prints claims with their truth, and remembers whether all of them held.
class Claims {
  public:
    void check(bool isTrue, const std::string& claim) {
        std::cout << (isTrue ? "  true:   " : "  FALSE:  ") << claim << '\n';
        allTrue_ = allTrue_ && isTrue;
    }
    [[nodiscard]] bool allTrue() const { return allTrue_; }

  private:
    bool allTrue_ = true;
};

constexpr std::size_t kNameLength = 90;

void headline(const std::string& text) {
    std::cout << '\n' << text << '\n';
}

std::string counted(std::size_t number, const std::string& what) {
    return std::to_string(number) + ' ' + what;
}

/// One line for each step, and for what goes on longer than a moment. Reports are whole pictures: passing one over does
/// no harm.
class ProgressLines {
  public:
    void operator()(const ScanProgress& progress) {
        const auto now = std::chrono::steady_clock::now();
        const bool isLast = progress.fractionCompleted == 1.0;
        if (progress.phase == phase_ && !isLast && now - shown_ < std::chrono::milliseconds(250)) return;
        phase_ = progress.phase;
        shown_ = now;
        const auto percent = static_cast<int>(progress.fractionCompleted.value_or(0) * 100);
        std::cout << "  " << percent << "% " << progress.phase;
        if (progress.itemsFound > 0)
            std::cout << " (" << progress.itemsFound << ", " << ByteFormatter::string(progress.bytesFound) << ')';
        std::cout << '\n';
    }

  private:
    std::string phase_;
    std::chrono::steady_clock::time_point shown_;
};

// Where things lie.

/// What the program itself keeps in a home: its history, and the Trash.
const std::set<std::string> kOwnFolders{".local/share/Trash", ".local/share/Tavrin Clean"};

/// Everything in this process is about `home` from here on: the core asks the environment, each time.
URL moveInto(const char* folder) {
    URL home = URL::fromPath(std::filesystem::canonical(folder).native(), true);
    ::setenv("HOME", home.path().c_str(), 1);  // NOLINT(concurrency-mt-unsafe): no second thread yet
    ::setenv("XDG_DATA_HOME", (home.path() + "/.local/share").c_str(), 1);  // NOLINT(concurrency-mt-unsafe)
    return home;
}

bool somethingAt(const URL& url) {
    std::error_code error;
    return std::filesystem::symlink_status(url.path(), error).type() > std::filesystem::file_type::not_found;
}

/// The original location that the Trash's own note gives for `entry`, as every desktop reads it; nil without a note.
std::optional<URL> originalInTrashNote(const TrashedEntry& entry) {
    const URL folder = entry.trashed.deletingLastPathComponent().deletingLastPathComponent();
    const std::string note = std::string(entry.trashed.lastPathComponent()) + ".trashinfo";
    std::ifstream file(folder.appendingPathComponent("info").appendingPathComponent(note).path());
    for (std::string line; std::getline(file, line);)
        if (line.starts_with("Path=")) return URL::fromAbsoluteString("file://" + line.substr(5));
    return std::nullopt;
}

// The steps.

std::vector<CleanableItem> scan() {
    headline("1. Scanning: " + title(ModuleKind::systemJunk));
    const auto scanner = ScannerFactory::makeScanner(ModuleKind::systemJunk);
    ProgressLines lines;
    return scanner->scan([&](const ScanProgress& progress) { lines(progress); });
}

void list(const std::vector<CleanableItem>& items, const URL& home) {
    constexpr std::size_t kShown = 12;
    headline("2. Found " + counted(items.size(), "things, the largest first:"));
    for (std::size_t i = 0; i < std::min(kShown, items.size()); ++i)
        std::cout << "  " << items[i].detail.value_or("") << "\t~"
                  << terminalText(items[i].url.path().substr(home.path().size()), kNameLength) << '\n';
    if (items.size() > kShown) std::cout << "  and " << counted(items.size() - kShown, "more") << '\n';

    std::map<ScanCategory, std::int64_t> byCategory;
    for (const CleanableItem& item : items)
        byCategory[item.category] += item.size;
    for (const auto& [category, size] : byCategory)
        std::cout << "  " << displayName(category) << ": " << ByteFormatter::string(size) << '\n';
}

CleanResult clean(const std::vector<CleanableItem>& items, Claims& claims) {
    std::vector<CleanableItem> selected;
    std::ranges::copy_if(items, std::back_inserter(selected), &CleanableItem::isSelected);
    headline("3. Cleaning the " + counted(selected.size(), "that are selected"));
    ProgressLines lines;
    CleanResult result = Cleaner().clean(
        selected, [&](const ScanProgress& progress) { lines(progress); }, neverCancelled);

    std::cout << "  " << result.removedItems << " moved to the Trash, " << ByteFormatter::string(result.reclaimedBytes)
              << '\n';
    const std::size_t apart = static_cast<std::size_t>(result.removedItems) + result.failures.size();
    if (apart < selected.size())
        std::cout << "  " << counted(selected.size() - apart, "went along with the folder that held them") << '\n';
    for (const CleanFailure& failure : result.failures)
        std::cout << "  refused: " << terminalText(failure.url.path()) << ": " << failure.reason << '\n';
    claims.check(result.removedItems > 0, "something was cleaned");
    claims.check(result.failures.empty(), "nothing was refused");
    claims.check(std::ranges::none_of(selected, [](const CleanableItem& item) { return somethingAt(item.url); }),
                 "nothing that was selected stands at its place any more");
    return result;
}

/// What this clean may have changed: the paths that it moved, and the times of the folders that lost or regained one.
ExpectedChanges changesOf(const CleanResult& result, const URL& home) {
    std::vector<URL> originals;
    std::ranges::transform(result.restorable, std::back_inserter(originals), &TrashedEntry::original);
    ExpectedChanges changes = changesOfMoving(originals, home);
    changes.touchedFolders.insert(".local/share");  // the program's own two folders were made there
    return changes;
}

void showTrash(const std::vector<TrashedEntry>& entries, Claims& claims) {
    headline("4. The Trash, as every desktop lists it");
    constexpr std::size_t kShown = 5;
    for (std::size_t i = 0; i < std::min(kShown, entries.size()); ++i)
        std::cout << "  " << terminalText(entries[i].trashed.lastPathComponent(), kNameLength) << "\tfrom "
                  << terminalText(entries[i].original.path(), kNameLength) << '\n';
    claims.check(std::ranges::all_of(entries, [](const TrashedEntry& entry) { return somethingAt(entry.trashed); }),
                 "all " + std::to_string(entries.size()) + " lie in the Trash");
    claims.check(std::ranges::all_of(entries,
                                     [](const TrashedEntry& entry) {
                                         const auto original = originalInTrashNote(entry);
                                         return original && original->path() == entry.original.path();
                                     }),
                 "each has the Trash's own note, with the path from which it came");
}

/// Writes the record, then reads the file again as the next start of the program would.
CleanupRecord remember(const CleanResult& result, Claims& claims) {
    headline("5. The history");
    HistoryStore store;
    std::vector<CleanupRecord> records = store.load();
    addRecord(records, {.module = title(ModuleKind::systemJunk),
                        .moduleKey = std::string(rawValue(ModuleKind::systemJunk)),
                        .removedItems = result.removedItems,
                        .reclaimedBytes = result.reclaimedBytes,
                        .restorable = result.restorable});
    claims.check(store.save(records), "written to " + terminalText(store.fileURL().path()));

    const std::vector<CleanupRecord> loaded = HistoryStore().load();
    claims.check(loaded == records, "read again, it says the same");
    if (loaded.empty()) throw std::runtime_error("there is no record to put back from");
    std::cout << "  " << loaded.front().displayName() << ": " << counted(loaded.front().entries.size(), "paths") << ", "
              << ByteFormatter::string(loaded.front().reclaimedBytes) << '\n';
    return loaded.front();
}

void putBack(const CleanupRecord& record, Claims& claims) {
    headline("6. Putting everything back, from the history");
    const RestoreResult result = Cleaner().restore(record.entries);
    std::cout << "  " << result.restored << " put back\n";
    for (const CleanFailure& failure : result.failures)
        std::cout << "  stays in the Trash: " << terminalText(failure.url.path()) << ": " << failure.reason << '\n';
    claims.check(result.failures.empty() && result.pending.empty(), "nothing is left in the Trash");
    claims.check(std::ranges::none_of(record.entries,
                                      [](const TrashedEntry& entry) {
                                          return somethingAt(entry.trashed) || originalInTrashNote(entry).has_value();
                                      }),
                 "nor any note of it");

    HistoryStore store;
    std::vector<CleanupRecord> records = store.load();
    settleRestore(records, record.id, result.pending);
    store.save(records);
    const std::vector<CleanupRecord> loaded = HistoryStore().load();
    claims.check(std::ranges::none_of(loaded, [&](const CleanupRecord& r) { return r.id == record.id; }),
                 "a clean that is undone leaves the history");
}

void compare(const TreeManifest& before, const URL& home, const ExpectedChanges& expected, const std::string& claim,
             Claims& claims) {
    const std::vector<std::string> found = differences(before, manifestOf(home, kOwnFolders), expected);
    for (const std::string& difference : found)
        std::cout << "  " << difference << '\n';
    claims.check(found.empty(), claim);
}

bool demonstrate(const URL& home) {
    Claims claims;
    const TreeManifest before = manifestOf(home, kOwnFolders);
    std::cout << "The home " << terminalText(home.path()) << " holds " << counted(before.size(), "entries.") << '\n';

    const std::vector<CleanableItem> items = scan();
    compare(before, home, {}, "the scan changed nothing", claims);
    list(items, home);

    const CleanResult result = clean(items, claims);
    ExpectedChanges changes = changesOf(result, home);
    compare(before, home, changes, "all the rest of the home is as it was, to the byte", claims);

    showTrash(result.restorable, claims);
    const CleanupRecord record = remember(result, claims);
    putBack(record, claims);

    headline("7. Is every byte where it was?");
    changes.gone.clear();
    compare(before, home, changes, "contents, modes, times, links, attributes: all as before", claims);
    return claims.allTrue();
}

}  // namespace

int main(int argc, char** argv) {
    if (argc != 2) {
        std::cerr << "usage: clean-and-put-back HOME\n";
        return 2;
    }
    try {
        const bool allTrue = demonstrate(moveInto(argv[1]));
        std::cout << '\n' << (allTrue ? "All of it is true." : "Not all of it is true.") << '\n';
        return allTrue ? 0 : 1;
    } catch (const std::exception& problem) {
        std::cerr << "clean-and-put-back: " << problem.what() << '\n';
        return 1;
    }
}
