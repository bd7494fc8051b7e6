// The paths that no clean may touch. The last line of defence against a scanner that is wrong.
#include "TavrinCore/Cleaning/Protection.h"

#include "TavrinCore/Cleaning/Cleaner.h"
#include "TavrinCore/Scanning/FileSystemUtils.h"
#include "TavrinCore/Scanning/SystemAppGuard.h"
#include "TavrinCore/Scanning/TextCase.h"
#include "TavrinCore/Strings.h"

#include <algorithm>
#include <array>
#include <string_view>

namespace tavrin {
namespace {

/// With all that lies in them.
constexpr std::array<std::string_view, 12> kProtectedTrees{"/system/",      "/usr/",         "/bin/",   "/sbin/",
                                                           "/private/var/", "/private/etc/", "/cores/", "/library/",
                                                           "/var/",         "/etc/",         "/tmp/",   "/private/"};

/// Only the folder itself; what lies in it can go.
constexpr std::array<std::string_view, 5> kProtectedFolders{"/", "/users", "/applications", "/volumes",
                                                            "/opt/homebrew"};

/// The same, below the home.
constexpr std::array<std::string_view, 15> kProtectedInHome{"/documents",
                                                            "/desktop",
                                                            "/downloads",
                                                            "/pictures",
                                                            "/movies",
                                                            "/music",
                                                            "/public",
                                                            "/library",
                                                            "/library/containers",
                                                            "/library/group containers",
                                                            "/library/keychains",
                                                            "/library/application support",
                                                            "/library/preferences",
                                                            "/library/mail",
                                                            "/library/caches"};

bool isProtectedApp(const URL& url) {
    return lowercased(url.pathExtension()) == "app" && SystemAppGuard::isProtectedApp(url);
}

bool liesInTree(std::string_view path, std::string_view tree) {
    return path.starts_with(tree) || path == tree.substr(0, tree.size() - 1);
}

bool isHomeOrFolderOfIt(std::string_view path) {
    const std::string home = lowercased(FileSystemUtils::home().standardizedFileURL().path());
    if (!path.starts_with(home)) return false;
    const std::string_view rest = path.substr(home.size());
    return rest.empty() || std::ranges::find(kProtectedInHome, rest) != kProtectedInHome.end();
}

bool isProtectedPath(const URL& url) {
    const std::string path = lowercased(url.standardizedFileURL().path());
    return std::ranges::any_of(kProtectedTrees, [&](std::string_view tree) { return liesInTree(path, tree); }) ||
           std::ranges::find(kProtectedFolders, path) != kProtectedFolders.end() || isHomeOrFolderOfIt(path);
}

}  // namespace

const std::string* protectionReason(const URL& url) {
    if (isProtectedApp(url)) return &S::scanSystemAppProtected();
    return isProtectedPath(url) ? &S::scanProtectedPath() : nullptr;
}

bool Cleaner::isProtected(const URL& url) {
    return protectionReason(url) != nullptr;
}

}  // namespace tavrin
