#include "Support/OrdinaryUser.h"
#include "Support/TestFolder.h"
#include "TavrinCore/Platform/AppUsage.h"

#include <gtest/gtest.h>
#include <sys/xattr.h>

#include <cstdint>
#include <string>
#include <string_view>

namespace tavrin {
namespace {

using test::TestFolder;

std::string leastSignificantFirst(std::uint64_t value) {
    std::string bytes;
    for (int i = 0; i < 8; ++i, value >>= 8U)
        bytes.push_back(static_cast<char>(value & 0xFFU));
    return bytes;
}

void mark(const URL& app, std::string_view value) {
    ASSERT_EQ(::setxattr(app.path().c_str(), "user.com.apple.lastuseddate#PS", value.data(), value.size(), 0), 0);
}

void mark(const URL& app, std::uint64_t seconds, std::uint64_t nanoseconds = 0) {
    mark(app, leastSignificantFirst(seconds) + leastSignificantFirst(nanoseconds));
}

TEST(LastUsedDate, isWhatTheIndexWroteOnTheApp) {
    const TestFolder world;
    const URL app = world.folder("Foo.app");
    mark(app, 1'700'000'000, 500'000'000);
    EXPECT_EQ(lastUsedDate(app), Date::fromUnix(1'700'000'000, 500'000'000));
    EXPECT_EQ(lastUsedDate(world.link("Linked.app", "Foo.app")), Date::fromUnix(1'700'000'000, 500'000'000));
}

TEST(LastUsedDate, ofAnAppThatIsAPlainFileIsToldToo) {
    const TestFolder world;
    const URL app = world.file("Foo.app");
    mark(app, 1);
    EXPECT_EQ(lastUsedDate(app), Date::fromUnix(1));
}

TEST(LastUsedDate, isUnknownWhereNothingIsWritten) {
    const TestFolder world;
    EXPECT_EQ(lastUsedDate(world.folder("Foo.app")), std::nullopt);
    EXPECT_EQ(lastUsedDate(world / "missing.app"), std::nullopt);
}

TEST(LastUsedDate, isUnknownWhereTheValueIsNoTime) {
    const TestFolder world;
    const URL app = world.folder("Foo.app");
    const auto isUnknown = [&] { return lastUsedDate(app) == std::nullopt; };
    mark(app, "");
    EXPECT_TRUE(isUnknown());
    mark(app, "yesterday");
    EXPECT_TRUE(isUnknown());
    mark(app, leastSignificantFirst(1'700'000'000) + leastSignificantFirst(0) + "x");
    EXPECT_TRUE(isUnknown()) << "seventeen bytes";
    mark(app, 0);
    EXPECT_TRUE(isUnknown());
    mark(app, 1, 1'000'000'000);
    EXPECT_TRUE(isUnknown());
    mark(app, ~std::uint64_t{0});
    EXPECT_TRUE(isUnknown()) << "before 1970";
}

TEST(LastUsedDate, isUnknownOfAnAppThatMayNotBeRead) {
    const TestFolder world;
    const URL app = world.folder("Foo.app");
    mark(app, 1'700'000'000);
    test::setMode(app, 0000);
    {
        const test::OrdinaryUser user;
        EXPECT_EQ(lastUsedDate(app), std::nullopt);
    }
    test::setMode(app, 0700);
}

}  // namespace
}  // namespace tavrin
