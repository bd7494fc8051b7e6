// Banners of the desktop.
#pragma once

#include <string>

namespace tavrin {

/// No state. From the main thread. Nothing is reported: a desktop that shows no banners, or a user who wants none,
/// makes no difference to anybody here.
class Notifier {
  public:
    Notifier() = delete;

    /// Asks for leave to show banners, on systems that ask.
    static void requestAuthorization();
    /// Shows a banner at once, beside those that are shown already. Returns without waiting for anybody.
    static void notify(const std::string& title, const std::string& body);
};

}  // namespace tavrin
