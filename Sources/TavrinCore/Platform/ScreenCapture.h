// Where the system keeps pictures of the screen.
#pragma once

#include <optional>
#include <string>

namespace tavrin {

/// The folder that the user set for screen captures, as a path; it may begin with a tilde. Nil where the user set none.
/// Read each time; nothing says that the folder exists.
[[nodiscard]] std::optional<std::string> screenCaptureLocation();

}  // namespace tavrin
