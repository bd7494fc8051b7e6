// Which scanner serves which module, and with which parameters (Scanning/ScannerDefaults.h).
//
// A module whose scanner isn't built yet can't be asked for: makeScanner<kind>() doesn't compile, and hasScanner says
// so where the kind is known at run time only.
#pragma once

#include "TavrinCore/Scanning/Scanner.h"

#include <memory>

namespace tavrin {

class ScannerFactory {
  public:
    ScannerFactory() = delete;

    /// Whether the module's scanner is built: all fifteen are. A module that is added says so here once its own stands.
    [[nodiscard]] static constexpr bool hasScanner(ModuleKind kind) {
        switch (kind) {
            case ModuleKind::systemJunk:
            case ModuleKind::duplicates:
            case ModuleKind::largeFiles:
            case ModuleKind::uninstaller:
            case ModuleKind::similarImages:
            case ModuleKind::appLanguages:
            case ModuleKind::loginItems:
            case ModuleKind::developerJunk:
            case ModuleKind::mailAttachments:
            case ModuleKind::screenshots:
            case ModuleKind::downloadsJunk:
            case ModuleKind::browserCaches:
            case ModuleKind::iosBackups:
            case ModuleKind::messagesAttachments:
            case ModuleKind::unusedApps:
                return true;
        }
        return false;
    }

    /// A new scanner with the default parameters; scanners hold configuration only, so one per scan is cheap.
    template <ModuleKind kind>
    [[nodiscard]] static std::unique_ptr<Scanner> makeScanner() {
        static_assert(hasScanner(kind), "this module's scanner isn't built yet");
        return makeScanner(kind);
    }

    /// The same for a kind known at run time. To ask for a module of which hasScanner says no is a programming fault
    /// and throws std::logic_error.
    [[nodiscard]] static std::unique_ptr<Scanner> makeScanner(ModuleKind kind);
};

}  // namespace tavrin
