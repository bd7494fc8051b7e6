#include "FileThreads.h"

#include <gtest/gtest.h>

#include <latch>

namespace tavrin {
namespace {

using namespace std::chrono_literals;

TEST(FileThreads, aFileThatIsNeverReadIsNotWaitedForAtTheEnd) {
    std::latch answers(1);
    fileThreads().start([&answers] { answers.wait(); });
    EXPECT_FALSE(finishReadingFiles(10ms));
    answers.count_down();
    EXPECT_TRUE(finishReadingFiles(1h));
}

}  // namespace
}  // namespace tavrin
