#include "TavrinCore/Scanning/AppMatching.h"

#include "TavrinCore/Scanning/TextCase.h"

#include <algorithm>
#include <array>
#include <span>
#include <unordered_map>
#include <unordered_set>

namespace tavrin {
namespace {

/// A few of them take microseconds, some thousands what a user would notice.
constexpr std::size_t kCandidatesPerPoll = 256;

constexpr std::array<std::string_view, 56> kSharedVendorFolders{
    "google",        "adobe",
    "microsoft",     "mozilla",
    "apple",         "oracle",
    "java",          "jetbrains",
    "logitech",      "logi",
    "intel",         "nvidia",
    "amd",           "autodesk",
    "corel",         "avid",
    "citrix",        "cisco",
    "vmware",        "unity",
    "epic games",    "blackmagic design",
    "steam",         "wondershare",
    "elgato",        "razer",
    "roblox",        "mail",
    "music",         "tv",
    "photos",        "safari",
    "notes",         "reminders",
    "calendar",      "calendars",
    "contacts",      "addressbook",
    "messages",      "facetime",
    "books",         "maps",
    "podcasts",      "news",
    "freeform",      "shortcuts",
    "preview",       "finder",
    "dock",          "siri",
    "spotlight",     "icloud",
    "mobilesync",    "syncservices",
    "crashreporter", "knowledge",
};

bool isShared(std::string_view comparisonForm) {
    static const std::unordered_set<std::string_view> folders(kSharedVendorFolders.begin(), kSharedVendorFolders.end());
    return folders.contains(comparisonForm);
}

/// The piece of `text` before its first dot, dots at the start passed over.
std::string_view firstPiece(std::string_view text) {
    text.remove_prefix(std::min(text.find_first_not_of('.'), text.size()));
    return text.substr(0, text.find('.'));
}

bool isOrExtends(std::string_view text, std::string_view stem) {
    return text.starts_with(stem) && (text.size() == stem.size() || text[stem.size()] == '.');
}

/// Whether a name may be claimed by what stands before one of its dots: "foo.plist" may not, nor what begins with the
/// name of a shared folder.
bool allowsLooseMatch(std::string_view candidate) {
    return std::ranges::count(candidate, '.') >= 2 && !isShared(firstPiece(candidate));
}

/// An app in the form in which names are compared.
struct PreparedApp {
    explicit PreparedApp(std::string_view appName, const std::optional<std::string>& identifier)
        : name(comparisonForm(appName)), bundleID(identifier ? comparisonForm(*identifier) : std::string()) {}

    std::string name;
    /// Empty where there is none.
    std::string bundleID;

    /// Whether the name, letters and digits alone, is one of the pieces of the identifier.
    [[nodiscard]] bool nameStandsInBundleID() const {
        const std::string wanted = lettersAndDigits(name);
        if (wanted.empty()) return false;
        for (std::string_view rest = bundleID; !rest.empty();) {
            const std::size_t dot = std::min(rest.find('.'), rest.size());
            if (lettersAndDigits(rest.substr(0, dot)) == wanted) return true;
            rest.remove_prefix(std::min(dot + 1, rest.size()));
        }
        return false;
    }
};

AppMatching::MatchStrength strengthOf(std::string_view candidate, const PreparedApp& app) {
    using enum AppMatching::MatchStrength;
    if (candidate.empty() || app.name.empty()) return none;
    if (!app.bundleID.empty() && isOrExtends(candidate, app.bundleID)) return byBundleID;
    if (isShared(candidate)) return none;
    if (candidate == app.name) return byName;
    if (!app.bundleID.empty() || !isOrExtends(candidate, app.name)) return none;
    return allowsLooseMatch(candidate) ? byName : none;
}

/// The apps by the texts under which `strengthOf` finds them, so that a candidate meets only those that can match.
class AppIndex {
  public:
    explicit AppIndex(std::span<const AppMatching::AppIdentity> apps) {
        apps_.reserve(apps.size());
        for (const AppMatching::AppIdentity& app : apps)
            apps_.emplace_back(app.name, app.bundleID);
        for (std::size_t i = 0; i < apps_.size(); ++i)
            add(i);
    }

    [[nodiscard]] std::optional<std::size_t> owner(std::string_view candidate) const {
        const std::vector<std::size_t> best = strongest(candidate);
        if (best.size() == 1) return best.front();
        std::optional<std::size_t> decided;
        for (std::size_t i : best) {
            if (!nameStandsInBundleID_[i]) continue;
            if (decided) return std::nullopt;
            decided = i;
        }
        return decided;
    }

  private:
    /// Keys lie in `apps_`.
    using Indices = std::unordered_map<std::string_view, std::vector<std::size_t>>;

    void add(std::size_t i) {
        const PreparedApp& app = apps_[i];
        nameStandsInBundleID_.push_back(app.nameStandsInBundleID());
        if (app.name.empty()) return;
        byName_[app.name].push_back(i);
        if (!app.bundleID.empty()) byBundleID_[app.bundleID].push_back(i);
    }

    /// The apps that reach the highest strength above none.
    [[nodiscard]] std::vector<std::size_t> strongest(std::string_view candidate) const {
        std::vector<std::size_t> best;
        auto highest = AppMatching::MatchStrength::none;
        const auto meet = [&](const Indices& apps, std::string_view stem) {
            const auto found = apps.find(stem);
            if (found == apps.end()) return;
            for (std::size_t i : found->second) {
                const auto strength = strengthOf(candidate, apps_[i]);
                if (strength == AppMatching::MatchStrength::none || strength < highest) continue;
                if (strength > highest) best.clear();
                highest = strength;
                best.push_back(i);
            }
        };
        // An app has one identifier and one name, so each way meets it once; where it is met on both, by its identifier
        // it is stronger, and that way comes first.
        forEachStem(candidate, [&](std::string_view stem) { meet(byBundleID_, stem); });
        if (!best.empty()) return best;
        forEachStem(candidate, [&](std::string_view stem) { meet(byName_, stem); });
        return best;
    }

    /// The candidate itself, and what stands before each of its dots.
    template <class Visit>
    static void forEachStem(std::string_view candidate, const Visit& visit) {
        for (std::size_t dot = candidate.find('.'); dot != std::string_view::npos; dot = candidate.find('.', dot + 1))
            visit(candidate.substr(0, dot));
        visit(candidate);
    }

    std::vector<PreparedApp> apps_;
    std::vector<bool> nameStandsInBundleID_;
    Indices byName_;
    Indices byBundleID_;
};

}  // namespace

bool AppMatching::isSharedVendorFolder(std::string_view name) {
    return isShared(comparisonForm(name));
}

AppMatching::MatchStrength AppMatching::strength(std::string_view candidate, std::string_view appName,
                                                 const std::optional<std::string>& bundleID) {
    return strengthOf(comparisonForm(candidate), PreparedApp(appName, bundleID));
}

bool AppMatching::matchesApp(std::string_view candidate, std::string_view appName,
                             const std::optional<std::string>& bundleID) {
    return strength(candidate, appName, bundleID) != MatchStrength::none;
}

std::vector<std::optional<std::size_t>> AppMatching::assignOwners(const std::vector<std::string>& candidates,
                                                                  const std::vector<AppIdentity>& apps,
                                                                  const CancellationCallback& isCancelled) {
    const AppIndex index(apps);
    std::vector<std::optional<std::size_t>> owners(candidates.size());
    for (std::size_t i = 0; i < candidates.size(); ++i) {
        if (i % kCandidatesPerPoll == 0 && isCancelled()) break;
        owners[i] = index.owner(comparisonForm(candidates[i]));
    }
    return owners;
}

}  // namespace tavrin
