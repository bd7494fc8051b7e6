#include "TavrinClean/Kit/ModuleScreenTexts.h"

#include "TavrinCore/Scanning/ByteFormatter.h"
#include "TavrinCore/Strings.h"

namespace tavrin {

const std::string& moduleNote(ModuleKind kind) {
    static const std::string none;
    switch (kind) {
        case ModuleKind::uninstaller:
            return S::moduleNoteUninstaller();
        case ModuleKind::appLanguages:
            return S::moduleNoteAppLanguages();
        case ModuleKind::mailAttachments:
            return S::moduleNoteMail();
        case ModuleKind::screenshots:
        case ModuleKind::downloadsJunk:
            return S::moduleNoteYourFiles();
        default:
            return none;
    }
}

std::string confirmMessage(ModuleKind kind, std::int64_t paths, std::int64_t bytes, std::int64_t runningApps) {
    std::string message = S::moduleConfirmMove(paths, ByteFormatter::string(bytes));
    if (kind == ModuleKind::mailAttachments) message += S::moduleConfirmMailWarning();
    if (runningApps > 0) message += S::moduleConfirmRunningApps(runningApps);
    return message;
}

std::string doneSummary(ModuleKind kind, std::int64_t removed, std::int64_t reclaimed) {
    const std::string size = ByteFormatter::string(reclaimed);
    return kind == ModuleKind::mailAttachments ? S::moduleDoneMail(size, removed) : S::smartDoneSummary(size, removed);
}

}  // namespace tavrin
