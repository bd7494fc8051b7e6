#include "EndToEndTests/SampleHome.h"

#include <gtest/gtest.h>

#include <utility>

namespace tavrin::test {

CommandResult runAsSeen(const std::vector<std::string>& command) {
    return run(command, Complaints::inTheOutput);
}

void makeSampleHome(const URL& folder, const std::vector<std::string>& options) {
    std::vector<std::string> arguments{TAVRIN_SCRIPTS "/make-sample-home", folder.path()};
    arguments.insert(arguments.end(), options.begin(), options.end());
    const CommandResult made = runAsSeen(arguments);
    ASSERT_EQ(made.status, 0) << made.output;
}

std::string homeManifest(const URL& folder, const std::vector<std::string>& options) {
    std::vector<std::string> arguments{TAVRIN_SCRIPTS "/home-manifest", folder.path(), "--without",
                                       ".local/share/Tavrin Clean"};
    arguments.insert(arguments.end(), options.begin(), options.end());
    CommandResult read = runAsSeen(arguments);
    EXPECT_EQ(read.status, 0) << read.output;
    return std::move(read.output);
}

}  // namespace tavrin::test
