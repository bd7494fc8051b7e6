// The system's own programs, asked to show something.
#pragma once

#include "TavrinCore/Models/URL.h"

namespace tavrin {

/// Shows `url` in its folder, picked out where the file browser can do that. From the main thread; waits for nobody,
/// and nothing is told of a desktop that has no such program.
void showInFileBrowser(const URL& url);

/// Opens the place where this program is given access to protected folders, as far as the system has one.
void openAccessSettings();

}  // namespace tavrin
