#include "TavrinClean/Kit/ModuleServices.h"

#include "TavrinClean/Kit/InstallDate.h"
#include "TavrinClean/Platform/FileBrowser.h"
#include "TavrinClean/Platform/Notifier.h"
#include "TavrinClean/Platform/RunningApps.h"
#include "TavrinCore/DockCleaner.h"
#include "TavrinCore/ScannerFactory.h"

namespace tavrin {

ModuleServices ModuleServices::real() {
    return {
        .background = std::make_shared<Background>(),
        .makeScanner = ScannerFactory::makeScanner,
        .clean =
            [](std::span<const CleanableItem> items, const ProgressCallback& progress,
               const CancellationCallback& isCancelled,
               const TrashedCallback& onTrashed) { return Cleaner().clean(items, progress, isCancelled, onTrashed); },
        .restore = [](std::span<const TrashedEntry> entries) { return Cleaner().restore(entries); },
        .notify = Notifier::notify,
        .requestNotifications = Notifier::requestAuthorization,
        .runningBundleIDs = RunningApps::bundleIDs,
        .tidyDock = [](const std::set<std::string>& paths) { (void)DockCleaner::removeEntries(paths); },
        .installDate = tavrin::installDate,
        .showInFileBrowser = tavrin::showInFileBrowser,
        .openAccessSettings = tavrin::openAccessSettings,
    };
}

}  // namespace tavrin
