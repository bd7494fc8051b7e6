#include "TavrinClean/Kit/AppBundle.h"

#include "TavrinCore/Scanning/FileSystemUtils.h"

namespace tavrin {

std::optional<URL> appBundle(const URL& url) {
    for (URL place = url; place.path() != "/"; place = place.deletingLastPathComponent()) {
        if (place.pathExtension() == "app") return place;
    }
    return std::nullopt;
}

bool isStoreBought(const URL& bundle) {
    return FileSystemUtils::exists(bundle.appendingPathComponent("Contents/_MASReceipt"));
}

}  // namespace tavrin
