#include "TavrinCore/Models/Models.h"
#include "TavrinCore/Scanning/AccessDenials.h"
#include "TavrinCore/Strings.h"

#include <gtest/gtest.h>

#include <cerrno>
#include <memory>
#include <thread>
#include <vector>

namespace tavrin {
namespace {

TEST(AccessDenials, theSamePathTwiceIsOneEntry) {
    AccessDenials denials;
    denials.record(URL::fromPath("/b"));
    denials.record(URL::fromPath("/a/"));
    denials.record(URL::fromPath("/b/"));
    denials.record(URL::fromPath("/a"));
    EXPECT_EQ(denials.all(), (std::vector<URL>{URL::fromPath("/b"), URL::fromPath("/a/")}));
    EXPECT_EQ(denials.first(), URL::fromPath("/b"));
    EXPECT_FALSE(denials.isEmpty());
}

TEST(AccessDenials, withoutARefusalNothingIsThrownAndThePhaseIsDone) {
    const AccessDenials denials;
    EXPECT_TRUE(denials.isEmpty());
    EXPECT_EQ(denials.first(), std::nullopt);
    EXPECT_NO_THROW(denials.throwIfNothingFound(0));
    EXPECT_EQ(denials.finalPhase(), S::scanDone());
}

TEST(AccessDenials, aRefusalWithFindingsDoesNotFailAndTellsWhatIsNeeded) {
    AccessDenials denials;
    denials.record(URL::fromPath("/a"));
    EXPECT_NO_THROW(denials.throwIfNothingFound(1));
    EXPECT_EQ(denials.finalPhase(), S::fdaTitle());
}

TEST(AccessDenials, aRefusalWithoutFindingsThrowsTheFirstRoot) {
    AccessDenials denials;
    denials.record(URL::fromPath("/first"));
    denials.record(URL::fromPath("/second"));
    try {
        denials.throwIfNothingFound(0);
        FAIL() << "nothing was thrown";
    } catch (const ScanError& error) {
        EXPECT_EQ(error, ScanError::accessDenied(URL::fromPath("/first")));
    }
}

TEST(AccessDenials, permissionIsToldByDomainAndCodeOrByTheCodeOfTheErrorBehind) {
    const auto error = [](const char* domain, int code) { return SystemError{domain, code, ""}; };
    const auto behind = [&](const char* domain, int code) {
        SystemError outer = error("NSSomeDomain", 7);
        outer.underlying = std::make_shared<const SystemError>(error(domain, code));
        return outer;
    };
    EXPECT_TRUE(AccessDenials::isPermissionError(error(SystemError::cocoaDomain, 257)));
    EXPECT_TRUE(AccessDenials::isPermissionError(SystemError::posix(EPERM)));
    EXPECT_TRUE(AccessDenials::isPermissionError(SystemError::posix(EACCES)));
    EXPECT_TRUE(AccessDenials::isPermissionError(behind(SystemError::posixDomain, 13)));
    EXPECT_TRUE(AccessDenials::isPermissionError(behind("NSAnyDomain", 1)));

    EXPECT_FALSE(AccessDenials::isPermissionError(error(SystemError::cocoaDomain, 13)));
    EXPECT_FALSE(AccessDenials::isPermissionError(error(SystemError::posixDomain, 257)));
    EXPECT_FALSE(AccessDenials::isPermissionError(error("NSAnyDomain", 13)));
    EXPECT_FALSE(AccessDenials::isPermissionError(SystemError::posix(ENOENT)));
    EXPECT_FALSE(AccessDenials::isPermissionError(behind(SystemError::cocoaDomain, 257)));
}

TEST(AccessDenials, helpersOnManyThreadsShareOneRecord) {
    AccessDenials denials;
    std::vector<std::thread> helpers;
    for (int helper = 0; helper < 4; ++helper) {
        helpers.emplace_back([&denials] {
            for (int i = 0; i < 100; ++i)
                denials.record(URL::fromPath("/" + std::to_string(i % 10)));
        });
    }
    for (std::thread& helper : helpers)
        helper.join();
    EXPECT_EQ(denials.all().size(), 10U);
}

TEST(AccessDenials, onlyAMissingPermissionIsRecordedAsARefusal) {
    AccessDenials denials;
    const URL folder = URL::fromPath("/folder", true);
    denials.recordIfRefused(folder, SystemError::posix(ENOENT));
    EXPECT_TRUE(denials.isEmpty());
    denials.recordIfRefused(folder, SystemError::posix(EACCES));
    denials.recordIfRefused(folder, SystemError::posix(EPERM));
    EXPECT_EQ(denials.all(), std::vector{folder});
}

}  // namespace
}  // namespace tavrin
