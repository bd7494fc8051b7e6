// An empty run is a failure: a filter with a typing error must not look like success.
#include <gtest/gtest.h>

#include <iostream>

int main(int argc, char** argv) {
    testing::InitGoogleTest(&argc, argv);
    const int result = RUN_ALL_TESTS();
    if (testing::GTEST_FLAG(list_tests)) return result;
    if (testing::UnitTest::GetInstance()->test_to_run_count() == 0) {
        std::cerr << "No test was run.\n";
        return 1;
    }
    return result;
}
