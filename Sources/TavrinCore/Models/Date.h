// A point in time: seconds with a fraction, counted from 2001-01-01 00:00:00 UTC as Foundation counts them.
//
// A double carries it, so the extreme dates stand far outside what a 64-bit count of nanoseconds can hold, and a date
// written to JSON comes back equal. At today's dates its step is about a tenth of a microsecond.
#pragma once

#include <chrono>
#include <compare>
#include <cstdint>

namespace tavrin {

class Date {
  public:
    /// 2001-01-01 00:00:00 UTC.
    constexpr Date() = default;

    [[nodiscard]] static constexpr Date fromReference(double seconds) { return Date(seconds); }
    /// From a POSIX time: seconds since 1970 and nanoseconds within the second.
    [[nodiscard]] static constexpr Date fromUnix(std::int64_t seconds, std::int64_t nanoseconds = 0) {
        return Date(static_cast<double>(seconds - kUnixToReference) + static_cast<double>(nanoseconds) / 1e9);
    }
    [[nodiscard]] static Date now();

    /// Before and after every date that a file can bear.
    static const Date distantPast;
    static const Date distantFuture;

    [[nodiscard]] constexpr double secondsSinceReference() const { return seconds_; }
    [[nodiscard]] constexpr double secondsSinceUnix() const { return seconds_ + static_cast<double>(kUnixToReference); }
    [[nodiscard]] constexpr Date adding(std::chrono::duration<double> interval) const {
        return Date(seconds_ + interval.count());
    }
    [[nodiscard]] constexpr std::chrono::duration<double> since(Date other) const {
        return std::chrono::duration<double>(seconds_ - other.seconds_);
    }

    friend constexpr bool operator==(Date, Date) = default;
    friend constexpr auto operator<=>(Date, Date) = default;  // NOLINT(modernize-use-nullptr): no pointer is near

  private:
    /// Seconds from 1970-01-01 to 2001-01-01.
    static constexpr std::int64_t kUnixToReference = 978'307'200;

    explicit constexpr Date(double seconds) : seconds_(seconds) {}

    double seconds_ = 0;
};

/// 0001-01-01 and 4001-01-01, the values that Foundation gives these two.
inline constexpr Date Date::distantPast = Date(-63'114'076'800.0);
inline constexpr Date Date::distantFuture = Date(63'113'904'000.0);

}  // namespace tavrin
