#include "TavrinCore/Models/Date.h"

namespace tavrin {

Date Date::now() {
    const auto sinceUnix = std::chrono::system_clock::now().time_since_epoch();
    const auto seconds = std::chrono::floor<std::chrono::seconds>(sinceUnix);
    const auto rest = std::chrono::duration_cast<std::chrono::nanoseconds>(sinceUnix - seconds);
    return fromUnix(seconds.count(), rest.count());
}

}  // namespace tavrin
