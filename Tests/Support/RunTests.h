// The end of every main() of ours that runs tests.
#pragma once

namespace tavrin::test {

/// Runs the tests that InitGoogleTest was asked for. The exit status: an empty run is a failure, since a filter with a
/// typing error must not look like success.
[[nodiscard]] int runTests();

}  // namespace tavrin::test
