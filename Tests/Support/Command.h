// Other programs, run by a test that needs to know what they do.
#pragma once

#include <string>
#include <vector>

namespace tavrin::test {

struct CommandResult {
    /// Of the exit; 127 where there is no such program, -1 where it was ended from outside.
    int status = 0;
    std::string output;
};

/// Where its standard error goes.
enum class Complaints {
    leftOut,
    inTheOutput,
};

/// Waits for the end. `command` is looked up in PATH, and its words reach it as they are: no shell reads them. Ended
/// after five minutes, that nothing hangs.
[[nodiscard]] CommandResult run(const std::vector<std::string>& command, Complaints complaints = Complaints::leftOut);

}  // namespace tavrin::test
