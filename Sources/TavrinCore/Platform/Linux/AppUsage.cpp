// The attribute holds a time as macOS has it in memory: seconds since 1970, then nanoseconds, each in eight bytes with
// the least significant first.
#include "TavrinCore/Platform/AppUsage.h"

#include "TavrinCore/Platform/Linux/HarmlessOpen.h"

#include <sys/xattr.h>

#include <array>
#include <cstddef>
#include <cstdint>
#include <span>

namespace tavrin {
namespace {

constexpr const char* kAttribute = "user.com.apple.lastuseddate#PS";
constexpr std::size_t kHalf = 8;

std::uint64_t leastSignificantFirst(std::span<const unsigned char, kHalf> bytes) {
    std::uint64_t value = 0;
    for (std::size_t i = kHalf; i > 0; --i)
        value = value << 8U | bytes[i - 1];
    return value;
}

/// Nil for what no clock has shown: an index that knows nothing writes zero, and anybody may write anything.
std::optional<Date> dateOf(std::uint64_t seconds, std::uint64_t nanoseconds) {
    constexpr std::uint64_t most = std::uint64_t{1} << 52U;
    if (seconds == 0 || seconds > most || nanoseconds >= 1'000'000'000) return std::nullopt;
    return Date::fromUnix(static_cast<std::int64_t>(seconds), static_cast<std::int64_t>(nanoseconds));
}

}  // namespace

std::optional<Date> lastUsedDate(const URL& app) {
    std::array<unsigned char, 2 * kHalf> value{};
    const Result<HarmlessFile> opened = openHarmless(app);
    if (!opened) return std::nullopt;
    const ssize_t size = ::fgetxattr(opened->descriptor.number(), kAttribute, value.data(), value.size());
    if (size != static_cast<ssize_t>(value.size())) return std::nullopt;
    const std::span<const unsigned char, 2 * kHalf> bytes(value);
    return dateOf(leastSignificantFirst(bytes.first<kHalf>()), leastSignificantFirst(bytes.last<kHalf>()));
}

}  // namespace tavrin
