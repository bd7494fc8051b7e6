// A home with an empty Trash of its own, for as long as this lives: HOME and XDG_DATA_HOME lead into it.
#pragma once

#include "Support/TestFolder.h"
#include "TavrinCore/Cleaning/Cleaner.h"

#include <string>
#include <vector>

namespace tavrin::test {

class TrashWorld {
  public:
    TrashWorld();

    /// The home. Below it lie what a test makes, and in `data` the Trash.
    [[nodiscard]] const TestFolder& home() const { return home_; }
    [[nodiscard]] URL operator/(std::string_view relative) const { return home_ / relative; }

    /// The names in the Trash's two folders, sorted; empty where there is none yet.
    [[nodiscard]] std::vector<std::string> files() const;
    [[nodiscard]] std::vector<std::string> notes() const;
    /// Where the note beside `name` says that it came from; fails the test when it doesn't.
    [[nodiscard]] std::string notedOrigin(std::string_view name) const;
    [[nodiscard]] URL file(std::string_view name) const { return home_ / ("data/Trash/files/" + std::string(name)); }
    [[nodiscard]] URL note(std::string_view name) const {
        return home_ / ("data/Trash/info/" + std::string(name) + ".trashinfo");
    }

  private:
    TestFolder home_;
    ScopedVariable homeVariable_;
    ScopedVariable dataVariable_;
};

/// The names in a folder, sorted; empty where it is missing.
[[nodiscard]] std::vector<std::string> namesIn(const URL& folder);

/// Findings as a scanner hands them over.
[[nodiscard]] CleanableItem finding(const URL& url, std::vector<URL> related = {});
[[nodiscard]] std::vector<CleanableItem> findings(const std::vector<URL>& urls);

/// Cleans without looking at the reports.
CleanResult clean(const std::vector<URL>& urls, const Cleaner& cleaner = Cleaner());

}  // namespace tavrin::test
