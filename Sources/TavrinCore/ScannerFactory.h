// Which scanner serves which module, and with which parameters (Scanning/ScannerDefaults.h).
#pragma once

#include "TavrinCore/Scanning/Scanner.h"

#include <memory>

namespace tavrin {

class ScannerFactory {
  public:
    ScannerFactory() = delete;

    /// A new scanner with the default parameters; scanners hold configuration only, so one per scan is cheap.
    [[nodiscard]] static std::unique_ptr<Scanner> makeScanner(ModuleKind kind);
};

}  // namespace tavrin
