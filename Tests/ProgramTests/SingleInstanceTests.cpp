// Where no bus leads from one start to the other. The way over the bus is part of the tour.
#include "Support/TestFolder.h"
#include "TavrinClean/Platform/SingleInstance.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <optional>

namespace tavrin::test {
namespace {

using Start = SingleInstance::Start;

class SingleInstanceWithoutABus : public testing::Test {
  protected:
    TestFolder world;

  private:
    ScopedVariable address_{"DBUS_SESSION_BUS_ADDRESS", nullptr};
    ScopedVariable runtime_{"XDG_RUNTIME_DIR", world.path().c_str()};
    ScopedVariable home_{"HOME", world.path().c_str()};
    ScopedVariable dataHome_{"XDG_DATA_HOME", (world.path() + "/data").c_str()};
};

TEST_F(SingleInstanceWithoutABus, aSecondStartOnTheSameHistoryDoesNotGoOn) {
    SingleInstance one;
    SingleInstance other;
    EXPECT_EQ(one.claim(), Start::first);
    EXPECT_EQ(other.claim(), Start::otherIsStuck);
}

TEST_F(SingleInstanceWithoutABus, theNextStartAfterItsEndIsTheFirst) {
    std::optional<SingleInstance> one(std::in_place);
    EXPECT_EQ(one->claim(), Start::first);
    one.reset();
    EXPECT_EQ(SingleInstance().claim(), Start::first);
}

TEST_F(SingleInstanceWithoutABus, aStartOnAnotherHistoryIsAFirst) {
    SingleInstance one;
    EXPECT_EQ(one.claim(), Start::first);
    const ScopedVariable elsewhere("XDG_DATA_HOME", (world.path() + "/elsewhere").c_str());
    EXPECT_EQ(SingleInstance().claim(), Start::first);
}

TEST_F(SingleInstanceWithoutABus, whereNoHistoryCanLieEachStartIsAFirst) {
    world.file("file", "in the way");
    const ScopedVariable home("HOME", (world.path() + "/file").c_str());
    const ScopedVariable nowhere("XDG_DATA_HOME", (world.path() + "/file/data").c_str());
    SingleInstance one;
    EXPECT_EQ(one.claim(), Start::first);
    EXPECT_EQ(SingleInstance().claim(), Start::first);
}

}  // namespace
}  // namespace tavrin::test
