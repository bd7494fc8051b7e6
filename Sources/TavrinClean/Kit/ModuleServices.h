// What the flows ask of the rest of the program and of the system, each by one function, so that tests put their own.
#pragma once

#include "TavrinClean/Kit/Background.h"
#include "TavrinClean/Kit/Findings.h"
#include "TavrinCore/Cleaning/Cleaner.h"
#include "TavrinCore/Scanning/Scanner.h"

#include <functional>
#include <memory>
#include <set>
#include <span>
#include <string>

namespace tavrin {

using CleanFunction = std::function<CleanResult(std::span<const CleanableItem>, const ProgressCallback&,
                                                const CancellationCallback&, const TrashedCallback&)>;

struct ModuleServices {
    /// Where all work is done that isn't done on the main thread. The last to hold it must be the main thread, so no
    /// work takes these services along, only the functions it needs.
    std::shared_ptr<Background> background;

    std::function<std::unique_ptr<Scanner>(ModuleKind)> makeScanner;
    /// Both are called off the main thread.
    CleanFunction clean;
    std::function<RestoreResult(std::span<const TrashedEntry>)> restore;

    /// A banner at once; asking for leave to show them. Neither ever waits for an answer.
    std::function<void(const std::string& title, const std::string& body)> notify;
    std::function<void()> requestNotifications;

    /// The identifiers of the running applications, lower-cased. Called off the main thread.
    std::function<std::set<std::string>()> runningBundleIDs;
    /// Called off the main thread after apps were uninstalled, with their paths.
    std::function<void(const std::set<std::string>& appPaths)> tidyDock;
    /// Called off the main thread.
    InstallDate installDate;

    std::function<void(const URL&)> showInFileBrowser;
    std::function<void()> openAccessSettings;

    /// Those of the program.
    [[nodiscard]] static ModuleServices real();
};

}  // namespace tavrin
