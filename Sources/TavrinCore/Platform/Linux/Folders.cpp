// HOME, else the password database; XDG Base Directory Specification 0.8 for the rest. A relative XDG path is ignored,
// as that standard asks.
#include "TavrinCore/Platform/Folders.h"

#include <pwd.h>
#include <unistd.h>

#include <cstddef>
#include <cstdlib>
#include <string_view>
#include <vector>

namespace tavrin {
namespace {

/// An absolute path from the environment; empty otherwise.
std::string_view absolutePathVariable(const char* name) {
    const char* value = std::getenv(name);  // NOLINT(concurrency-mt-unsafe): the program never writes its environment
    const std::string_view path = value != nullptr ? value : std::string_view();
    return path.starts_with('/') ? path : std::string_view();
}

URL homeFromPasswordDatabase() {
    std::vector<char> buffer(std::size_t{16} * 1024);
    passwd entry{};
    passwd* found = nullptr;
    if (getpwuid_r(geteuid(), &entry, buffer.data(), buffer.size(), &found) != 0 || found == nullptr) return {};
    return URL::fromPath(found->pw_dir, true);
}

URL baseFolder(const char* variable, std::string_view belowHome) {
    const std::string_view path = absolutePathVariable(variable);
    return path.empty() ? homeFolder().appendingPathComponent(belowHome, true) : URL::fromPath(path, true);
}

}  // namespace

URL homeFolder() {
    const std::string_view home = absolutePathVariable("HOME");
    return home.empty() ? homeFromPasswordDatabase() : URL::fromPath(home, true);
}

URL applicationSupportFolder() {
    return baseFolder("XDG_DATA_HOME", ".local/share");
}

URL configurationFolder() {
    return baseFolder("XDG_CONFIG_HOME", ".config");
}

/// The Trash of the home's own disk (freedesktop.org Trash specification 1.0); the notes beside it are not its
/// children.
std::optional<URL> trashFolder() {
    return applicationSupportFolder().appendingPathComponent("Trash/files", true);
}

}  // namespace tavrin
