#include "TavrinClean/Kit/InstallDate.h"

#include "TavrinCore/Platform/FileStatus.h"

namespace tavrin {

std::optional<Date> installDate(const URL& url) {
    // None of the systems served so far tells when a file was added to its folder.
    const Result<FileStatus> status = fileStatus(url);
    if (!status) return std::nullopt;
    return status->modified ? status->modified : status->created;
}

}  // namespace tavrin
