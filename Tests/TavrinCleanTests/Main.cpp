// The flows without a window: an event loop is all they need, and an empty run is a failure.
#include <gtest/gtest.h>

#include <QCoreApplication>
#include <iostream>

int main(int argc, char** argv) {
    testing::InitGoogleTest(&argc, argv);
    QCoreApplication application(argc, argv);
    const int result = RUN_ALL_TESTS();
    if (testing::GTEST_FLAG(list_tests)) return result;
    if (testing::UnitTest::GetInstance()->test_to_run_count() == 0) {
        std::cerr << "No test was run.\n";
        return 1;
    }
    return result;
}
