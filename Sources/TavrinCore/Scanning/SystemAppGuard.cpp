#include "TavrinCore/Scanning/SystemAppGuard.h"

#include "TavrinCore/Platform/Bundle.h"
#include "TavrinCore/Platform/SystemProtection.h"
#include "TavrinCore/Scanning/FileSystemUtils.h"
#include "TavrinCore/Scanning/TextCase.h"

#include <algorithm>
#include <array>
#include <string_view>

namespace tavrin {
namespace {

constexpr std::array<std::string_view, 6> kProtectedPrefixes{
    "/system/", "/usr/", "/bin/", "/sbin/", "/private/var/", "/library/apple/",
};

bool beginsWithProtectedPrefix(const URL& url) {
    const std::string path = lowercased(url.path());
    return std::ranges::any_of(kProtectedPrefixes, [&](std::string_view prefix) { return path.starts_with(prefix); });
}

bool isMakersIdentifier(std::string_view bundleID) {
    const std::string id = lowercased(bundleID);
    return id == "com.apple" || id.starts_with("com.apple.");
}

/// An app from the store is its user's to remove, the maker's own as well.
bool hasStoreReceipt(const URL& url) {
    return FileSystemUtils::exists(url.appendingPathComponent("Contents/_MASReceipt"));
}

}  // namespace

bool SystemAppGuard::isProtectedApp(const URL& url) {
    return isProtectedApp(url, bundleIdentifier(url));
}

bool SystemAppGuard::isProtectedApp(const URL& url, const std::optional<std::string>& bundleID) {
    if (bundleID && isMakersIdentifier(*bundleID) && !hasStoreReceipt(url)) return true;
    // On whichever spelling the system gives: as asked, and where links lead.
    if (beginsWithProtectedPrefix(url.standardizedFileURL())) return true;
    if (beginsWithProtectedPrefix(url.resolvingSymlinksInPath())) return true;
    return isSIPRestricted(url);
}

bool SystemAppGuard::isSIPRestricted(const URL& url) {
    return hasRestrictedFlag(url);
}

}  // namespace tavrin
