#include "Support/RunTests.h"

#include <gtest/gtest.h>

int main(int argc, char** argv) {
    testing::InitGoogleTest(&argc, argv);
    return tavrin::test::runTests();
}
