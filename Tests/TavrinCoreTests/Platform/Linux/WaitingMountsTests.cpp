// A folder of somebody's home may be a mount of which the server is down. Whoever asks it anything waits for ever.
#include "Support/OwnMounts.h"
#include "Support/RecordedScan.h"
#include "Support/TestFolder.h"
#include "TavrinCore/Platform/WaitingMounts.h"
#include "TavrinCore/Scanning/DeveloperJunkScanner.h"
#include "TavrinCore/Scanning/FileSystemUtils.h"
#include "TavrinCore/Scanning/MailAttachmentsScanner.h"
#include "TavrinCore/Scanning/SystemJunkScanner.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <vector>

namespace tavrin {
namespace {

using test::record;
using test::TestFolder;
using testing::ElementsAre;
using testing::IsEmpty;

TEST(WaitingMounts, areKnownByTheirPlaceWhateverLeadsThere) {
    const TestFolder world;
    const URL far = world.folder("disk/far");
    world.folder("disk/deep/far");
    world.folder("other/far");
    const URL link = world.link("link", "disk");
    const URL linkToIt = world.link("disk/link", "far");
    test::withOwnMounts([&] {
        EXPECT_FALSE(isWaitingMount(far));
        test::mountStalled(far);
        EXPECT_TRUE(isWaitingMount(far));
        EXPECT_TRUE(isWaitingMount(link.appendingPathComponent("far")));
        EXPECT_FALSE(isWaitingMount(linkToIt)) << "the link itself waits for nobody";
        EXPECT_FALSE(isWaitingMount(world / "disk/deep/far"));
        EXPECT_FALSE(isWaitingMount(world / "other/far"));
        EXPECT_FALSE(isWaitingMount(URL()));
        EXPECT_THAT(waitingMountsIn(link), ElementsAre("far"));
        EXPECT_THAT(waitingMountsIn(world / "missing"), IsEmpty());
    });
}

TEST(WaitingMounts, areNeitherListedNorMeasured) {
    const TestFolder world;
    const URL near = world.folder("near");
    const URL far = world.folder("far");
    test::withOwnMounts([&] {
        test::mountStalled(far);
        EXPECT_THAT(FileSystemUtils::children(world.url(), true), ElementsAre(near));
        EXPECT_EQ(FileSystemUtils::size(far), 0);
    });
}

TEST(WaitingMounts, amongWhatIsScannedHoldNobodyUp) {
    const TestFolder world;
    world.fileOfSize("Library/Caches/near/data", 10'000);
    world.fileOfSize("Projects/app/node_modules/data", 10'000);
    world.fileOfSize("Library/Mail/near/Attachments/data", 10'000);
    const std::vector<URL> mounts{world.folder("Library/Caches/far"), world.folder("Projects/far/node_modules"),
                                  world.folder("Library/Mail/far/Attachments")};
    test::withOwnMounts([&] {
        for (const URL& mount : mounts)
            test::mountStalled(mount);
        EXPECT_THAT(record(SystemJunkScanner(false, world / "Library")).paths(world),
                    ElementsAre("Library/Caches/near"));
        EXPECT_THAT(record(DeveloperJunkScanner(world.url(), std::nullopt, 6)).paths(world),
                    ElementsAre("Projects/app/node_modules"));
        EXPECT_THAT(record(MailAttachmentsScanner(world.url())).paths(world),
                    ElementsAre("Library/Mail/near/Attachments"));
    });
}

}  // namespace
}  // namespace tavrin
