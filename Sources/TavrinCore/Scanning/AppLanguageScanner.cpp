#include "TavrinCore/Scanning/AppLanguageScanner.h"

#include "TavrinCore/Platform/Locale.h"
#include "TavrinCore/Scanning/DetailText.h"
#include "TavrinCore/Scanning/FileSystemUtils.h"
#include "TavrinCore/Scanning/InstalledApps.h"
#include "TavrinCore/Scanning/LanguageNames.h"
#include "TavrinCore/Scanning/ScanRun.h"
#include "TavrinCore/Scanning/ScannerDefaults.h"
#include "TavrinCore/Strings.h"

#include <unordered_map>
#include <utility>

namespace tavrin {
namespace {

constexpr std::string_view kLanguageSuffix = ".lproj";
/// What no language has of its own; without it no interface stands.
constexpr std::string_view kBase = "Base";

AppLanguageScanner::Languages defaultKeptLanguages() {
    AppLanguageScanner::Languages kept(scannerDefaults::AppLanguages::alwaysKept.begin(),
                                       scannerDefaults::AppLanguages::alwaysKept.end());
    for (const std::string& tag : preferredLanguages()) {
        if (const std::string_view language = primaryLanguage(tag); !language.empty()) kept.emplace(language);
    }
    return kept;
}

/// Nil for what is no language folder, and for the base.
std::optional<std::string_view> languageFolderCode(const URL& entry) {
    if (entry.pathExtension() != kLanguageSuffix.substr(1)) return std::nullopt;
    std::string_view code = entry.lastPathComponent();
    code.remove_suffix(kLanguageSuffix.size());
    return code == kBase ? std::nullopt : std::optional(code);
}

std::string detailOf(const URL& app, bool isFromStore) {
    const std::string name = detailName(appName(app));
    return isFromStore ? joinedDetail(name, S::moduleMASProtected()) : name;
}

}  // namespace

AppLanguageScanner::AppLanguageScanner(std::optional<std::vector<URL>> searchDirectories,
                                       std::optional<Languages> keepLanguages)
    : searchDirectories_(searchDirectories ? *std::move(searchDirectories) : defaultAppDirectories()),
      keepLanguages_(keepLanguages ? *std::move(keepLanguages) : defaultKeptLanguages()) {}

std::string AppLanguageScanner::languageName(std::string_view code) {
    return tavrin::languageName(code, runningLanguage());
}

/// As it stands, with dashes or by its old name, and without what follows the language.
bool AppLanguageScanner::keeps(std::string_view code) const {
    if (keepLanguages_.contains(code)) return true;
    const std::string normalized = languageCode(code);
    return keepLanguages_.contains(normalized) || keepLanguages_.contains(primaryLanguage(normalized));
}

/// One scan under way.
class AppLanguageScanner::Run {
  public:
    Run(const AppLanguageScanner& scanner, const ProgressCallback& progress, const CancellationCallback& isCancelled)
        : scanner_(scanner), run_(progress, isCancelled) {}

    std::vector<CleanableItem> overAllApps() {
        const std::vector<URL> apps = appsIn(scanner_.searchDirectories_, run_);
        for (std::size_t i = 0; i < apps.size(); ++i) {
            run_.throwIfCancelled();
            reportApp(run_, S::scanCheckingLanguages(), apps[i], i, apps.size());
            addLanguagesOf(apps[i]);
        }
        // Those to keep count too: it is what the languages of all apps occupy.
        return run_.finishLargestFirst(run_.bytes());
    }

  private:
    void addLanguagesOf(const URL& app) {
        const URL resources = app.appendingPathComponent("Contents/Resources", true);
        // A link leads out of the app, where language folders are somebody's work.
        if (!FileSystemUtils::isFolder(app.appendingPathComponent("Contents", true)) ||
            !FileSystemUtils::isFolder(resources))
            return;
        const bool isFromStore = FileSystemUtils::exists(app.appendingPathComponent("Contents/_MASReceipt"));
        const std::string detail = detailOf(app, isFromStore);
        // A cancel shortens listing and measuring, and is noticed at the next app.
        for (URL& entry : FileSystemUtils::children(resources, false, &run_.denials(), run_.isCancelled())) {
            const std::optional<std::string_view> code = languageFolderCode(entry);
            if (!code) continue;
            const std::int64_t size = FileSystemUtils::size(entry, &run_.denials(), run_.isCancelled());
            if (size <= 0) continue;
            const Language& language = languageOf(*code);
            run_.add({.id = UUID::random(),
                      .url = std::move(entry),
                      .size = size,
                      .category = ScanCategory::appLanguage,
                      .isSelected = !language.isKept && !isFromStore,
                      .detail = detail,
                      .groupID = language.name});
        }
    }

    struct Language {
        std::string name;
        bool isKept;
    };

    /// The same few codes stand in every app, and a name costs far more than looking it up here.
    const Language& languageOf(std::string_view code) {
        const auto found = languages_.find(std::string(code));
        if (found != languages_.end()) return found->second;
        return languages_.emplace(code, Language{languageName(code), scanner_.keeps(code)}).first->second;
    }

    const AppLanguageScanner& scanner_;
    ScanRun run_;
    std::unordered_map<std::string, Language> languages_;
};

std::vector<CleanableItem> AppLanguageScanner::scan(const ProgressCallback& progress,
                                                    const CancellationCallback& isCancelled) const {
    return Run(*this, progress, isCancelled).overAllApps();
}

}  // namespace tavrin
