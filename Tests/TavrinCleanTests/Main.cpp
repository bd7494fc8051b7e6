// The flows without a window: an event loop is all they need.
#include "Support/RunTests.h"

#include <gtest/gtest.h>

#include <QCoreApplication>

int main(int argc, char** argv) {
    testing::InitGoogleTest(&argc, argv);
    const QCoreApplication application(argc, argv);
    return tavrin::test::runTests();
}
