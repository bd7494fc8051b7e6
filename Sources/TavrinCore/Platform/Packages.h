// Folders that people see as one file: applications, libraries of photos, documents made of parts.
#pragma once

#include <string_view>

namespace tavrin {

/// Whether a folder of this name is a package. By the extension, whatever its case.
[[nodiscard]] bool isPackageName(std::string_view name);

}  // namespace tavrin
