// proc(5). A process may end, and may refuse, between any two looks at it.
#include "TavrinClean/Platform/RunningApps.h"

#include "TavrinClean/Kit/AppBundle.h"
#include "TavrinClean/Platform/Linux/ProcessIdentifiers.h"
#include "TavrinCore/Models/PercentEncoding.h"
#include "TavrinCore/Platform/Bundle.h"
#include "TavrinCore/Platform/ReadFile.h"
#include "TavrinCore/Scanning/FileSystemUtils.h"
#include "TavrinCore/Scanning/TextCase.h"

#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <climits>
#include <map>

namespace tavrin {
namespace {

constexpr std::size_t kMaxFile = std::size_t{64} * 1024;

bool isProcess(std::string_view name) {
    return !name.empty() && std::ranges::all_of(name, [](char c) { return c >= '0' && c <= '9'; });
}

bool belongsTo(uid_t user, const URL& process) {
    struct stat status {};
    return ::stat(process.path().c_str(), &status) == 0 && status.st_uid == user;
}

std::optional<URL> executable(const URL& process) {
    std::array<char, PATH_MAX> target{};
    const std::string link = process.appendingPathComponent("exe").path();
    const ssize_t length = ::readlink(link.c_str(), target.data(), target.size());
    // Relative is what no kernel gives; it would be taken below the current folder.
    if (length <= 0 || target[0] != '/') return std::nullopt;
    return URL::fromPath({target.data(), static_cast<std::size_t>(length)});
}

/// "\x2d" is "-": systemd escapes what would have a meaning in the name of a unit (systemd.unit(5)).
std::string unescaped(std::string_view text) {
    std::string result;
    for (std::size_t i = 0; i < text.size(); ++i) {
        const bool escape = text.substr(i).starts_with("\\x") && i + 3 < text.size() &&
                            hexDigitValue(text[i + 2]) >= 0 && hexDigitValue(text[i + 3]) >= 0;
        if (!escape) {
            result.push_back(text[i]);
            continue;
        }
        result.push_back(static_cast<char>(hexDigitValue(text[i + 2]) * 16 + hexDigitValue(text[i + 3])));
        i += 3;
    }
    return result;
}

bool cut(std::string_view& text, std::string_view suffix) {
    if (!text.ends_with(suffix)) return false;
    text.remove_suffix(suffix.size());
    return true;
}

/// The name= of the section [Application] in a .flatpak-info.
std::optional<std::string> flatpakName(std::string_view info) {
    bool inApplication = false;
    while (!info.empty()) {
        const std::string_view line = info.substr(0, info.find('\n'));
        info.remove_prefix(std::min(info.size(), line.size() + 1));
        if (line.starts_with('[')) inApplication = line == "[Application]";
        if (inApplication && line.starts_with("name=")) return std::string(line.substr(5));
    }
    return std::nullopt;
}

/// Many processes share an executable, and a bundle is read once for all of them.
class Bundles {
  public:
    [[nodiscard]] const std::optional<std::string>& identifierAt(const URL& executable) {
        const auto [place, isNew] = known_.try_emplace(executable.path());
        if (isNew) {
            const std::optional<URL> bundle = appBundle(executable);
            if (bundle) place->second = bundleIdentifier(*bundle);
        }
        return place->second;
    }

  private:
    std::map<std::string, std::optional<std::string>> known_;
};

}  // namespace

std::optional<std::string> applicationOfUnit(std::string_view unit) {
    constexpr std::string_view prefix = "app-";
    if (!unit.starts_with(prefix)) return std::nullopt;
    unit.remove_prefix(prefix.size());
    if (cut(unit, ".scope")) {
        const std::size_t random = unit.rfind('-');
        if (random == std::string_view::npos) return std::nullopt;
        unit = unit.substr(0, random);
    } else if (cut(unit, ".service")) {
        unit = unit.substr(0, unit.find('@'));
    } else {
        return std::nullopt;
    }
    // A dash of the identifier itself is escaped, so what stands before one is the launcher.
    std::string id = unescaped(unit.substr(unit.rfind('-') + 1));
    return id.empty() ? std::nullopt : std::optional(std::move(id));
}

std::optional<std::string> applicationOfCgroup(std::string_view text) {
    while (!text.empty()) {
        std::string_view line = text.substr(0, text.find('\n'));
        text.remove_prefix(std::min(text.size(), line.size() + 1));
        for (; !line.empty(); line = line.substr(0, line.rfind('/'))) {
            const std::size_t slash = line.rfind('/');
            if (slash == std::string_view::npos) break;
            if (std::optional<std::string> id = applicationOfUnit(line.substr(slash + 1))) return id;
        }
    }
    return std::nullopt;
}

std::set<std::string> identifiersOfProcesses(const URL& proc, uid_t user) {
    std::set<std::string> identifiers;
    Bundles bundles;
    for (const URL& process : FileSystemUtils::children(proc, true)) {
        if (!isProcess(process.lastPathComponent()) || !belongsTo(user, process)) continue;
        if (const std::optional<URL> file = executable(process)) {
            if (const auto& id = bundles.identifierAt(*file)) identifiers.insert(lowercased(*id));
        }
        if (const auto cgroup = readSmallFile(process.appendingPathComponent("cgroup"), kMaxFile)) {
            if (const auto id = applicationOfCgroup(*cgroup)) identifiers.insert(lowercased(*id));
        }
        if (const auto info = readSmallFile(process.appendingPathComponent("root/.flatpak-info"), kMaxFile)) {
            if (const auto id = flatpakName(*info)) identifiers.insert(lowercased(*id));
        }
    }
    return identifiers;
}

std::set<std::string> RunningApps::bundleIDs() {
    return identifiersOfProcesses(URL::fromPath("/proc", true), ::geteuid());
}

}  // namespace tavrin
