// This system knows no bundles: here a bundle is a folder with a dictionary in Contents/Info.plist.
#include "TavrinCore/Platform/Bundle.h"

namespace tavrin {

std::optional<PropertyList> bundleInfo(const URL& url) {
    std::optional<PropertyList> info = PropertyList::fromFile(url.appendingPathComponent("Contents/Info.plist"));
    return info && info->dictionary() != nullptr ? info : std::nullopt;
}

std::optional<std::string> bundleIdentifier(const URL& url) {
    const std::optional<PropertyList> info = bundleInfo(url);
    const std::string* identifier = info ? info->string("CFBundleIdentifier") : nullptr;
    return identifier != nullptr && !identifier->empty() ? std::optional(*identifier) : std::nullopt;
}

}  // namespace tavrin
