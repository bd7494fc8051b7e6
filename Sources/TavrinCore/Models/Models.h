// The vocabulary of a scan: the finding, the progress report, the two ways in which a scan fails.
#pragma once

#include "TavrinCore/Models/Date.h"
#include "TavrinCore/Models/ModuleKind.h"
#include "TavrinCore/Models/ScanCategory.h"
#include "TavrinCore/Models/URL.h"
#include "TavrinCore/Models/UUID.h"

#include <cstdint>
#include <exception>
#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace tavrin {

/// One finding of a scanner: the unit that the user sees, selects and removes.
struct CleanableItem {
    /// Fresh for each finding of each scan; never stored.
    UUID id;
    /// The file, folder or bundle that is the finding. The cleaner moves it first.
    URL url;
    /// Bytes that removal frees. Whether `relatedURLs` are counted in is each scanner's word.
    std::int64_t size = 0;
    ScanCategory category;
    /// Ticked. The scanner decides the start, and only the flows change it afterwards.
    bool isSelected = false;
    /// One line under the name, in the running language. No logic reads it.
    std::optional<std::string> detail = std::nullopt;
    /// Findings with the same value stand in one group on screen. Means nothing from one scan to the next.
    std::optional<std::string> groupID = std::nullopt;
    /// The one member of a group that is proposed to stay. Bulk selection passes it over; nothing else does.
    bool isGroupKeeper = false;
    /// What goes with `url`, right after it: an app's leftovers, further copies of a language.
    std::vector<URL> relatedURLs = {};

    /// The last path component of `url`.
    [[nodiscard]] std::string_view name() const { return url.lastPathComponent(); }

    friend bool operator==(const CleanableItem&, const CleanableItem&) = default;
};

/// What a long operation reports: a whole snapshot each time, so that a lost report does no harm.
struct ScanProgress {
    /// The step in hand, in the running language.
    std::string phase;
    /// Findings so far, and their bytes; 0 where the operation isn't a search.
    std::int64_t itemsFound = 0;
    std::int64_t bytesFound = 0;
    /// The path or name in hand, as bytes; nil in the last report.
    std::optional<std::string> currentPath = std::nullopt;
    /// From 0 to 1, nil when no fraction is known. The last report has 1.0.
    std::optional<double> fractionCompleted = std::nullopt;
    /// Roots that couldn't be read for lack of permission; 0 until the last report.
    std::int64_t blockedFolders = 0;

    friend bool operator==(const ScanProgress&, const ScanProgress&) = default;
};

/// How a scan fails, the one exception that the core throws. It carries no words: the flows turn it into screens.
class ScanError : public std::exception {
  public:
    enum class Kind : std::uint8_t {
        /// Nothing was found, and a root was refused.
        accessDenied,
        cancelled,
    };

    [[nodiscard]] static ScanError accessDenied(URL root) { return {Kind::accessDenied, std::move(root)}; }
    [[nodiscard]] static ScanError cancelled() { return {Kind::cancelled, std::nullopt}; }

    [[nodiscard]] Kind kind() const { return kind_; }
    /// The first root that was refused; nil for a cancelled scan.
    [[nodiscard]] const std::optional<URL>& root() const { return root_; }
    /// For a debugger's eyes only.
    [[nodiscard]] const char* what() const noexcept override;

    friend bool operator==(const ScanError& a, const ScanError& b) { return a.kind_ == b.kind_ && a.root_ == b.root_; }

  private:
    ScanError(Kind kind, std::optional<URL> root) : kind_(kind), root_(std::move(root)) {}

    Kind kind_;
    std::optional<URL> root_;
};

/// Called from the thread that does the work, any number of times. Must be safe from any thread.
using ProgressCallback = std::function<void(const ScanProgress&)>;
/// Cheap, may be polled for every file, from any thread.
using CancellationCallback = std::function<bool()>;

/// For work that nobody cancels.
inline bool neverCancelled() {
    return false;
}

}  // namespace tavrin

template <>
struct std::hash<tavrin::CleanableItem> {
    std::size_t operator()(const tavrin::CleanableItem& item) const noexcept {
        return std::hash<tavrin::UUID>{}(item.id);
    }
};
