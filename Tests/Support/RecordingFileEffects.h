// The file effects without a disk: a set of paths, and a list of what was asked of it. Refuses what it is told to.
#pragma once

#include "TavrinCore/Platform/FileEffects.h"

#include <map>
#include <set>
#include <string>
#include <vector>

namespace tavrin::test {

/// Not for use from two threads.
class RecordingFileEffects final : public FileEffects {
  public:
    /// What stands on this disk. A path in here stands for all that lies in it.
    std::set<std::string> standing;
    /// The errno with which acts on a path are refused: its move, its deletion, its making, its return.
    std::map<std::string, int> refusals;
    /// The same, for taking hold of it.
    std::map<std::string, int> holdRefusals;
    /// Where links lead that lie on the way to a path.
    std::map<std::string, URL> realPlaces;
    /// The Trash takes things and doesn't say where.
    bool tellsNoLocation = false;
    /// Every act in its order: "trash /a", "remove /a", "make /a", "return /Trash/a to /a".
    std::vector<std::string> acts;

    [[nodiscard]] bool exists(const URL& url) override;
    [[nodiscard]] bool itemExists(const URL& url) override;
    [[nodiscard]] Result<std::unique_ptr<HeldItem>> hold(const URL& url) override;
    [[nodiscard]] Result<std::optional<URL>> trashItem(HeldItem& item) override;
    [[nodiscard]] Outcome removeItem(HeldItem& item) override;
    [[nodiscard]] Outcome createDirectory(const URL& url) override;
    [[nodiscard]] Outcome putBack(const URL& trashed, const URL& original) override;

  private:
    [[nodiscard]] Outcome allowed(const URL& url) const;
};

}  // namespace tavrin::test
