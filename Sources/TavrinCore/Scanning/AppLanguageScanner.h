// The language folders inside apps: all of them are listed, grouped by language, and those that the user doesn't work
// in start selected.
#pragma once

#include "TavrinCore/Scanning/Scanner.h"

#include <functional>
#include <optional>
#include <set>
#include <string>
#include <string_view>
#include <vector>

namespace tavrin {

class AppLanguageScanner final : public Scanner {
  public:
    using Languages = std::set<std::string, std::less<>>;

    /// Nil `searchDirectories`, whose direct children are the apps: /Applications and ~/Applications, those that exist.
    /// Nil `keepLanguages`, the codes that are never preselected: "Base", "en", and the user's own languages without
    /// their regions. Case counts.
    explicit AppLanguageScanner(std::optional<std::vector<URL>> searchDirectories = std::nullopt,
                                std::optional<Languages> keepLanguages = std::nullopt);

    [[nodiscard]] ModuleKind kind() const override { return ModuleKind::appLanguages; }

    using Scanner::scan;
    /// Findings come largest first. A cancel is noticed before each app; after the last one it comes too late.
    ///
    /// System apps are not left out: the receipt of the app store is what protects a bundle here. An app with one is
    /// listed and never preselected, since it may not start once its bundle has changed.
    [[nodiscard]] std::vector<CleanableItem> scan(const ProgressCallback& progress,
                                                  const CancellationCallback& isCancelled) const override;

    /// What the group of the language folder "de.lproj" ("de") is called, in the running language; the code as it
    /// stands where nobody knows it.
    [[nodiscard]] static std::string languageName(std::string_view code);

  private:
    class Run;

    [[nodiscard]] bool keeps(std::string_view code) const;

    std::vector<URL> searchDirectories_;
    Languages keepLanguages_;
};

}  // namespace tavrin
