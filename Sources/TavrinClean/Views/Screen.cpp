#include "Screen.h"

#include "TavrinCore/Strings.h"

#include <algorithm>
#include <array>

namespace tavrin {
namespace {

struct Entry {
    Screen::Case which;
    std::string_view key;
    const std::string& (*title)();
    std::string_view symbol;
};

constexpr std::array entries{
    Entry{Screen::Case::smartScan, "smartScan", &S::navSmartScan, "sparkles"},
    Entry{Screen::Case::dashboard, "dashboard", &S::navDashboard, "square.grid.2x2"},
    Entry{Screen::Case::performance, "performance", &S::navPerformance, "bolt.fill"},
    Entry{Screen::Case::history, "history", &S::navHistory, "clock.arrow.circlepath"},
    Entry{Screen::Case::diskMap, "diskMap", &S::navDiskMap, "chart.pie.fill"},
    Entry{Screen::Case::trash, "trash", &S::navEmptyTrash, "trash.slash"},
};

const Entry& entryOf(Screen::Case which) {
    return *std::ranges::find(entries, which, &Entry::which);
}

}  // namespace

std::string_view Screen::key() const {
    return case_ == Case::module ? rawValue(kind_) : entryOf(case_).key;
}

std::optional<Screen> Screen::fromKey(std::string_view key) {
    if (const auto kind = moduleKindFromRawValue(key)) return module(*kind);
    const auto* entry = std::ranges::find(entries, key, &Entry::key);
    if (entry == entries.end()) return std::nullopt;
    return Screen(entry->which);
}

std::string Screen::title() const {
    return case_ == Case::module ? tavrin::title(kind_) : entryOf(case_).title();
}

std::string Screen::subtitle() const {
    return case_ == Case::module ? tavrin::subtitle(kind_) : std::string();
}

std::string_view Screen::symbol() const {
    return case_ == Case::module ? tavrin::symbol(kind_) : entryOf(case_).symbol;
}

}  // namespace tavrin
