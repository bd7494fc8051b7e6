// Pictures and films of the screen, known by how the system names them in English and in Spanish, on the Desktop and in
// the folder that is set for them. They are the user's own files: nothing starts selected.
#pragma once

#include "TavrinCore/Scanning/Scanner.h"

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace tavrin {

class ScreenshotsScanner final : public Scanner {
  public:
    /// Nil `locations` are looked up when the scan begins.
    explicit ScreenshotsScanner(std::optional<std::vector<URL>> locations = std::nullopt);

    /// The Desktop below `home`, and the folder that the user set, where there is one. A tilde at its beginning is the
    /// home.
    [[nodiscard]] static std::vector<URL> locations(const URL& home, const std::optional<std::string>& setting);
    /// Whether a file of this name is one.
    [[nodiscard]] static bool isScreenshotName(std::string_view name);

    [[nodiscard]] ModuleKind kind() const override { return ModuleKind::screenshots; }

    using Scanner::scan;
    /// Findings come largest first; equal ones in the order they were found in.
    [[nodiscard]] std::vector<CleanableItem> scan(const ProgressCallback& progress,
                                                  const CancellationCallback& isCancelled) const override;

  private:
    class Run;

    std::optional<std::vector<URL>> injectedLocations_;
};

}  // namespace tavrin
