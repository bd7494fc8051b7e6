#include "Support/RecordedScan.h"

#include "TavrinCore/Strings.h"

#include <gtest/gtest.h>

#include <algorithm>

namespace tavrin::test {

std::vector<std::string> RecordedScan::paths(const TestFolder& world) const {
    std::vector<std::string> paths;
    for (const CleanableItem& item : items)
        paths.push_back(item.url.path().substr(world.path().size() + 1));
    return paths;
}

std::vector<std::string> RecordedScan::names() const {
    std::vector<std::string> names;
    for (const CleanableItem& item : items)
        names.emplace_back(item.name());
    return names;
}

std::vector<std::string> RecordedScan::details() const {
    std::vector<std::string> details;
    for (const CleanableItem& item : items)
        details.push_back(item.detail.value_or("nil"));
    return details;
}

CleanableItem RecordedScan::named(std::string_view name) const {
    const auto found = std::ranges::find(items, name, &CleanableItem::name);
    if (found != items.end()) return *found;
    ADD_FAILURE() << "no finding is called " << name;
    return {.id = UUID::random(), .url = URL(), .category = ScanCategory::systemCache};
}

std::vector<std::string> RecordedScan::phasesBeforeTheEnd() const {
    std::vector<std::string> phases;
    for (std::size_t i = 0; i + 1 < reports.size(); ++i)
        phases.push_back(reports[i].phase);
    return phases;
}

ScanProgress doneReport(std::int64_t itemsFound, std::int64_t bytesFound) {
    return {.phase = S::scanDone(), .itemsFound = itemsFound, .bytesFound = bytesFound, .fractionCompleted = 1.0};
}

RecordedScan record(const Scanner& scanner, const CancellationCallback& isCancelled) {
    return record(scanner, isCancelled, [](const ScanProgress&) {});
}

RecordedScan record(const Scanner& scanner, const CancellationCallback& isCancelled, const ProgressCallback& onReport) {
    RecordedScan scan;
    const auto note = [&](const ScanProgress& report) {
        // A report may be sent once more where the machine was slow; that depends on the clock, and is tested by
        // itself.
        if (scan.reports.empty() || scan.reports.back() != report) scan.reports.push_back(report);
        onReport(report);
    };
    try {
        scan.items = scanner.scan(note, isCancelled);
    } catch (const ScanError& error) {
        scan.failure = error;
    }
    return scan;
}

void expectCancellableAtEveryPoll(const Scanner& scanner) {
    int polls = 0;
    const auto count = [&polls] {
        ++polls;
        return false;
    };
    ASSERT_EQ(record(scanner, count).failure, std::nullopt);
    const int all = polls;
    // Outside the loop: g++ 12 takes a temporary one for uninitialised where it is optimised with the sanitizers.
    const ScanError cancelled = ScanError::cancelled();
    ASSERT_GT(all, 0) << "the scan never asks";
    for (int stopAt = 1; stopAt <= all; ++stopAt) {
        polls = 0;
        const RecordedScan scan = record(scanner, [&polls, stopAt] { return ++polls >= stopAt; });
        ASSERT_EQ(scan.failure, cancelled) << "stopped at poll " << stopAt << " of " << all;
        EXPECT_LE(polls, stopAt + 2) << "it went on asking";
        for (const ScanProgress& report : scan.reports)
            EXPECT_NE(report.fractionCompleted, 1.0) << "a last report at poll " << stopAt;
    }
}

}  // namespace tavrin::test
