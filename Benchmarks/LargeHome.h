// A home in which each scanner has much to do.
#pragma once

#include <filesystem>

namespace tavrin::benchmarks {

/// Some 500,000 entries. Kept from one run to the next: made only when it isn't there whole.
void makeLargeHome(const std::filesystem::path& home);

inline constexpr int kApps = 300;
inline constexpr int kLanguages = 40;
inline constexpr int kLeftoverCandidates = 20'000;

}  // namespace tavrin::benchmarks
