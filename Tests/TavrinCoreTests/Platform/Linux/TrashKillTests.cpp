// The process is killed before each of its system calls in turn. At no instant is an item nowhere, twice, or in the
// Trash without the note that tells its origin. What may stay behind is a note without an item, which desktops pass
// over.
#include "Support/InterceptedCalls.h"
#include "Support/OrdinaryUser.h"
#include "Support/OwnMounts.h"
#include "Support/TrashWorld.h"
#include "TavrinCore/Platform/Linux/SystemFileEffects.h"

#include <gtest/gtest.h>
#include <sys/wait.h>
#include <unistd.h>

#include <filesystem>
#include <functional>
#include <string>

namespace tavrin {
namespace {

using test::contentsOf;
using test::InterceptedCalls;
using test::somethingAt;
using test::TrashWorld;

constexpr int kKilled = 9;

/// True when the work was killed before its call number `index`, false when it came to its end first.
bool killedBeforeCall(int index, const std::function<void(FileEffects&)>& work) {
    const pid_t child = ::fork();
    if (child == 0) {
        InterceptedCalls calls([index](InterceptedCalls::Call, int number) {
            if (number == index) ::_exit(kKilled);
            return 0;
        });
        SystemFileEffects effects(calls);
        const test::OrdinaryUser user;
        work(effects);
        ::_exit(0);
    }
    int status = 0;
    EXPECT_EQ(::waitpid(child, &status, 0), child);
    EXPECT_TRUE(WIFEXITED(status) && (WEXITSTATUS(status) == kKilled || WEXITSTATUS(status) == 0));
    return WEXITSTATUS(status) == kKilled;
}

void expectWholeAtOnePlace(const TrashWorld& world, int index) {
    const bool isAtItsPlace = somethingAt(world / "item");
    const bool isInTrash = somethingAt(world.file("item"));
    EXPECT_NE(isAtItsPlace, isInTrash) << "call " << index;
    const URL folder = isInTrash ? world.file("item") : world / "item";
    EXPECT_EQ(contentsOf(folder.appendingPathComponent("inner")), "bytes") << "call " << index;
    if (isInTrash) {
        EXPECT_EQ(world.notedOrigin("item"), (world / "item").path()) << "call " << index;
    }
}

/// `work` from the beginning for each call; `prepare` makes what it starts from.
void killBeforeEachCall(const std::function<void(const TrashWorld&)>& prepare,
                        const std::function<void(const TrashWorld&, FileEffects&)>& work) {
    const TrashWorld world;
    test::withOwnMounts([&] {
        test::mountTmpfs(world.home().url());
        int index = 0;
        for (bool wasKilled = true; wasKilled; ++index) {
            world.home().file("item/inner", "bytes");
            test::setMode(world / "item", 0555);
            prepare(world);
            wasKilled = killedBeforeCall(index, [&](FileEffects& effects) { work(world, effects); });
            expectWholeAtOnePlace(world, index);
            for (const auto& entry : std::filesystem::directory_iterator(world.home().path()))
                std::filesystem::remove_all(entry.path());
        }
        EXPECT_GT(index, 10) << "hardly a call was met";
    });
}

void trash(const TrashWorld& world, FileEffects& effects) {
    Result<std::unique_ptr<HeldItem>> held = effects.hold(world / "item");
    if (held) (void)effects.trashItem(**held).ok();
}

TEST(TrashKill, onTheWayIntoTheTrashLosesNothing) {
    killBeforeEachCall([](const TrashWorld&) {}, trash);
}

TEST(TrashKill, onTheWayBackLosesNothing) {
    killBeforeEachCall([](const TrashWorld& world) { trash(world, systemFileEffects()); },
                       [](const TrashWorld& world, FileEffects& effects) {
                           (void)effects.putBack(world.file("item"), world / "item").ok();
                       });
}

}  // namespace
}  // namespace tavrin
