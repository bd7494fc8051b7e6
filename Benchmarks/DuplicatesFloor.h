// The funnel at its plainest: sizes, the hash of the first bytes, the hash of the whole, one file after the other.
#pragma once

#include <cstddef>
#include <string>

namespace tavrin::benchmarks {

/// Files below `folder` that are a copy of another one.
[[nodiscard]] std::size_t plainFunnel(const std::string& folder);

}  // namespace tavrin::benchmarks
