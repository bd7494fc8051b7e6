#include "TavrinCore/Platform/CoarseClock.h"

#include <ctime>

namespace tavrin {

std::chrono::steady_clock::time_point coarseNow() {
    timespec now{};
    // Can't fail: the clock is in every kernel since 2.6.32, and `now` is ours.
    ::clock_gettime(CLOCK_MONOTONIC_COARSE, &now);
    return std::chrono::steady_clock::time_point(std::chrono::seconds(now.tv_sec) +
                                                 std::chrono::nanoseconds(now.tv_nsec));
}

}  // namespace tavrin
