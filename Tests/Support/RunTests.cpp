#include "Support/RunTests.h"

#include <gtest/gtest.h>

#include <iostream>

namespace tavrin::test {

int runTests() {
    const int result = RUN_ALL_TESTS();
    if (testing::GTEST_FLAG(list_tests)) return result;
    if (testing::UnitTest::GetInstance()->test_to_run_count() == 0) {
        std::cerr << "No test was run.\n";
        return 1;
    }
    return result;
}

}  // namespace tavrin::test
