// The extensions are those that the program's home system registers as packages; a Linux disk meets them on a backup,
// on a shared volume, or in a tree of sources.
#include "TavrinCore/Platform/Packages.h"

#include <algorithm>
#include <array>

namespace tavrin {
namespace {

// Sorted, lower case.
constexpr auto kExtensions = std::to_array<std::string_view>({
    "action",        "app",        "appex",         "band",         "bundle",      "component",   "docset",
    "download",      "fcpbundle",  "imovielibrary", "kext",         "key",         "lbdb",        "logicx",
    "mbox",          "mdimporter", "mpkg",          "musiclibrary", "numbers",     "pages",       "photolibrary",
    "photoslibrary", "pkg",        "playground",    "plugin",       "prefpane",    "qlgenerator", "rtfd",
    "saver",         "scptd",      "service",       "sparsebundle", "tvlibrary",   "vst",         "vst3",
    "wdgt",          "workflow",   "xcarchive",     "xcodeproj",    "xcworkspace", "xpc",
});
static_assert(std::ranges::is_sorted(kExtensions));

char lower(char c) {
    return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
}

}  // namespace

bool isPackageName(std::string_view name) {
    const std::size_t dot = name.rfind('.');
    if (dot == std::string_view::npos || dot == 0) return false;
    const std::string_view extension = name.substr(dot + 1);
    return std::ranges::any_of(kExtensions,
                               [&](std::string_view known) { return std::ranges::equal(extension, known, {}, lower); });
}

}  // namespace tavrin
