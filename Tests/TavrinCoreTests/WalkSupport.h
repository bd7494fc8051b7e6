// What the tests of the walker share: a visitor that writes down what it is told, and trees that no path reaches.
#pragma once

#include "TavrinCore/Platform/DirectoryWalk.h"

#include <cstddef>
#include <functional>
#include <string>
#include <string_view>
#include <vector>

namespace tavrin::test {

/// Writes down every path below `root`, and every failure. `onVisit` may look and act first.
class WalkRecorder : public WalkVisitor {
  public:
    explicit WalkRecorder(const URL& root) : prefix_(root.path().size() + 1) {}

    WalkStep visit(WalkEntry& entry) override;
    void failed(const URL& folder, const SystemError& error) override;

    /// Relative to the root; in the order of the walk, and sorted.
    std::vector<std::string> paths;
    [[nodiscard]] std::vector<std::string> sortedPaths() const;
    /// Likewise, with the code behind: "locked 13". The root is "".
    std::vector<std::string> failures;

    std::function<WalkStep(WalkEntry&)> onVisit = [](WalkEntry&) { return WalkStep::goOn; };

  private:
    [[nodiscard]] std::string relative(const URL& url) const;

    std::size_t prefix_;
};

/// Only looks, and fails the test when a folder can't be listed.
class WalkWatcher final : public WalkVisitor {
  public:
    explicit WalkWatcher(std::function<WalkStep(WalkEntry&)> onVisit) : onVisit_(std::move(onVisit)) {}

    WalkStep visit(WalkEntry& entry) override { return onVisit_(entry); }
    void failed(const URL& folder, const SystemError& error) override;

  private:
    std::function<WalkStep(WalkEntry&)> onVisit_;
};

/// What std::filesystem finds below `root`, sorted: the truth to compare with.
[[nodiscard]] std::vector<std::string> pathsBelow(const URL& root);

/// `depth` folders one in the other, each with that name; in each, `inEach` makes what it likes by the folder's
/// descriptor before and after the folder below is made. Gives the path of the last one.
[[nodiscard]] URL makeChain(const URL& root, std::size_t depth, std::string_view name,
                            const std::function<void(int folder, std::size_t depth)>& inEach = {});

/// An empty file, by the descriptor of its folder.
void touch(int folder, std::string_view name);

}  // namespace tavrin::test
