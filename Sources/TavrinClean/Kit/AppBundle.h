// The application that a file lies in.
#pragma once

#include "TavrinCore/Models/URL.h"

#include <optional>

namespace tavrin {

/// `url` itself or the nearest folder above it whose extension is exactly "app"; nil for none. By the text of the path.
[[nodiscard]] std::optional<URL> appBundle(const URL& url);

/// Whether the application at `bundle` came from the store, by the receipt that it carries. Asks the disk.
[[nodiscard]] bool isStoreBought(const URL& bundle);

}  // namespace tavrin
