// Cleaner::isProtected with its reason.
#pragma once

#include "TavrinCore/Models/URL.h"

#include <string>

namespace tavrin {

/// What people are told when a path may not be touched; null when it may.
[[nodiscard]] const std::string* protectionReason(const URL& url);

}  // namespace tavrin
