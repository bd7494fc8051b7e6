#include "KitWorld.h"
#include "TavrinClean/Kit/ItemFacts.h"

#include <gtest/gtest.h>

#include <QCoreApplication>
#include <atomic>

namespace tavrin::test {
namespace {

TEST(ItemFacts, aFileThatAnswersSlowlyIsAskedOnceAndHoldsUpNoOther) {
    KitWorld world;
    Gate gate;
    std::atomic<int> askedTheSlowOne = 0;
    world.services.installDate = [&](const URL& url) -> std::optional<Date> {
        if (url.lastPathComponent() != "slow") return {};
        ++askedTheSlowOne;
        gate.pass();
        return Date::fromUnix(1'700'000'000);
    };
    ItemFacts facts(world.services, true);
    facts.reset(std::make_shared<Findings>(ModuleKind::largeFiles,
                                           std::vector{finding("slow", 9), finding("b", 8), finding("c", 7)}));
    EXPECT_EQ(facts.find(0), nullptr);
    QCoreApplication::processEvents();
    for (const std::uint32_t item : {1U, 2U}) {
        EXPECT_EQ(facts.find(item), nullptr);
        world.waitUntil([&] { return facts.find(item) != nullptr; });
    }
    EXPECT_EQ(facts.find(0), nullptr);
    gate.open();
    world.settle();
    EXPECT_EQ(askedTheSlowOne, 1);
    ASSERT_NE(facts.find(0), nullptr);
    EXPECT_NE(facts.find(0)->dateText, "");
}

}  // namespace
}  // namespace tavrin::test
