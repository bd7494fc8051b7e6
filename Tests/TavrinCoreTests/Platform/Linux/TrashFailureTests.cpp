// Every system call of a move fails once, in turn, with everything that it can fail with. Whatever happens, the item is
// whole at one place, a note stands beside it while it is in the Trash, and none stands alone.
#include "Support/InterceptedCalls.h"
#include "Support/OrdinaryUser.h"
#include "Support/OwnMounts.h"
#include "Support/Snapshot.h"
#include "Support/TrashWorld.h"
#include "TavrinCore/Platform/Linux/SystemFileEffects.h"
#include "TavrinCore/Platform/Linux/TrashInfo.h"

#include <gtest/gtest.h>
#include <unistd.h>

#include <cctype>
#include <cerrno>
#include <filesystem>
#include <functional>
#include <optional>
#include <ostream>
#include <string>
#include <vector>

namespace tavrin {
namespace {

using test::entryAt;
using test::InterceptedCalls;
using test::OrdinaryUser;
using test::SnapshotEntry;
using test::somethingAt;
using test::TrashWorld;
using Call = InterceptedCalls::Call;

constexpr int kErrors[] = {ENOSPC, EROFS, EACCES, ENOENT, EXDEV,        EEXIST,
                           EINTR,  EIO,   EPERM,  EINVAL, ENAMETOOLONG, ESTALE};

struct Scenario {
    std::string_view name;
    /// Makes the world's "item" and whatever is in its way.
    std::function<void(const TrashWorld&)> prepare;
    bool knowsNoReplace = true;

    /// A test's name must not depend on where things lie in memory.
    friend void PrintTo(const Scenario& scenario, std::ostream* stream) { *stream << scenario.name; }
};

const std::vector<Scenario>& scenarios() {
    static const std::vector<Scenario> all{
        {"a file", [](const TrashWorld& world) { world.home().file("item", "bytes"); }},
        {"a folder", [](const TrashWorld& world) { world.home().file("item/inner", "bytes"); }},
        {"a link", [](const TrashWorld& world) { world.home().link("item", "nowhere"); }},
        {"a read-only folder", [](const TrashWorld& world) { test::setMode(world.home().folder("item"), 0555); }},
        {"a name that is taken",
         [](const TrashWorld& world) {
             world.home().file("item", "bytes");
             world.home().file("data/Trash/files/item", "other");
             world.home().file("data/Trash/info/item.trashinfo", "[Trash Info]\nPath=/other\n");
         }},
        {"an orphan in the Trash",
         [](const TrashWorld& world) {
             world.home().file("item", "bytes");
             world.home().file("data/Trash/files/item", "orphan");
         }},
        {"a file where names can't be guarded", [](const TrashWorld& world) { world.home().file("item", "bytes"); },
         false},
        {"a folder where names can't be guarded",
         [](const TrashWorld& world) { world.home().file("item/inner", "bytes"); }, false},
    };
    return all;
}

/// Fails the n-th call and remembers which it was.
struct OneFailure {
    int index;
    int error;
    std::optional<Call> failed;

    int operator()(Call call, int number) {
        if (number != index) return 0;
        failed = call;
        return error;
    }
};

std::vector<std::string> notesWithoutItem(const TrashWorld& world) {
    std::vector<std::string> alone;
    for (const std::string& note : world.notes()) {
        const std::string name = note.substr(0, note.size() - TrashInfo::suffix.size());
        if (!somethingAt(world.file(name))) alone.push_back(note);
    }
    return alone;
}

/// The one item of the Trash that is like `entry` and noted as coming from `origin`.
int itemsNotedFrom(const TrashWorld& world, const URL& origin, const SnapshotEntry& entry) {
    int count = 0;
    for (const std::string& name : world.files()) {
        if (!somethingAt(world.note(name))) continue;
        if (world.notedOrigin(name) != origin.path()) continue;
        EXPECT_EQ(entryAt(world.file(name)), entry) << name;
        ++count;
    }
    return count;
}

void expectWholeAtOnePlace(const TrashWorld& world, const URL& item, const SnapshotEntry& entry, bool inTrash,
                           bool notesMayStand) {
    EXPECT_EQ(somethingAt(item), !inTrash);
    if (!inTrash && somethingAt(item)) {
        EXPECT_EQ(entryAt(item), entry);
    }
    if (!notesMayStand) {
        EXPECT_EQ(itemsNotedFrom(world, item, entry), inTrash ? 1 : 0);
        EXPECT_EQ(notesWithoutItem(world), std::vector<std::string>());
    }
}

/// True while there was a call left to fail.
bool trashWithFailure(const TrashWorld& world, const Scenario& scenario, int index, int error) {
    scenario.prepare(world);
    const URL item = world / "item";
    const SnapshotEntry entry = entryAt(item);
    OneFailure failure{index, error, std::nullopt};
    InterceptedCalls calls(std::ref(failure));
    calls.knowsNoReplace = scenario.knowsNoReplace;
    SystemFileEffects effects(calls);

    bool moved = false;
    {
        const OrdinaryUser user;
        Result<std::unique_ptr<HeldItem>> held = effects.hold(item);
        if (held) {
            const Result<std::optional<URL>> trashed = effects.trashItem(**held);
            moved = trashed.ok();
            if (moved) {
                EXPECT_TRUE(somethingAt(**trashed));
            }
        }
    }
    // A note whose own removal fails is all that may be left over.
    expectWholeAtOnePlace(world, item, entry, moved, failure.failed == Call::unlink);
    if (!failure.failed) {
        EXPECT_TRUE(moved);
    }
    return failure.failed.has_value();
}

bool putBackWithFailure(const TrashWorld& world, const Scenario& scenario, int index, int error) {
    scenario.prepare(world);
    const URL item = world / "item";
    const SnapshotEntry entry = entryAt(item);
    OneFailure failure{index, error, std::nullopt};
    InterceptedCalls calls(std::ref(failure));
    calls.knowsNoReplace = scenario.knowsNoReplace;
    SystemFileEffects effects(calls);

    const OrdinaryUser user;
    Result<std::unique_ptr<HeldItem>> held = systemFileEffects().hold(item);
    const Result<std::optional<URL>> trashed = systemFileEffects().trashItem(**held);
    EXPECT_TRUE(trashed.ok());
    if (!trashed) return false;
    const bool back = effects.putBack(**trashed, item).ok();
    expectWholeAtOnePlace(world, item, entry, !back, failure.failed == Call::unlink);
    if (!failure.failed) {
        EXPECT_TRUE(back);
    }
    return failure.failed.has_value();
}

using Move = bool (*)(const TrashWorld&, const Scenario&, int, int);

void empty(const TrashWorld& world) {
    for (const auto& entry : std::filesystem::directory_iterator(world.home().path()))
        std::filesystem::remove_all(entry.path());
}

/// In memory: each of some hundred calls fails in a world that is made for it.
void failEachCallInTurn(const Scenario& scenario, Move move) {
    const TrashWorld world;
    test::withOwnMounts([&] {
        test::mountTmpfs(world.home().url());
        // No other Trash than the home's.
        const std::string other = ".Trash-" + std::to_string(::geteuid());
        for (const int error : kErrors) {
            world.home().file(other);
            int index = 0;
            for (; move(world, scenario, index, error); ++index) {
                if (testing::Test::HasFailure()) FAIL() << scenario.name << ", call " << index << ", error " << error;
                empty(world);
                world.home().file(other);
            }
            empty(world);
            EXPECT_GT(index, 10) << "hardly a call was met: " << scenario.name;
        }
    });
}

class TrashFailure : public testing::TestWithParam<Scenario> {};

TEST_P(TrashFailure, ofAnyCallOfAMoveLosesNothing) {
    failEachCallInTurn(GetParam(), trashWithFailure);
}

TEST_P(TrashFailure, ofAnyCallOfTheWayBackLosesNothing) {
    failEachCallInTurn(GetParam(), putBackWithFailure);
}

std::string parameterName(const testing::TestParamInfo<Scenario>& info) {
    std::string name(info.param.name);
    std::erase_if(name, [](char c) { return std::isalnum(static_cast<unsigned char>(c)) == 0; });
    return name;
}

INSTANTIATE_TEST_SUITE_P(Each, TrashFailure, testing::ValuesIn(scenarios()), parameterName);

TEST(TrashFailures, areToldPerPathInTheSystemsWords) {
    const TrashWorld world;
    bool isFirst = true;
    InterceptedCalls calls([&](Call call, int) {
        if (call != Call::rename || !isFirst) return 0;
        isFirst = false;
        return ENOSPC;
    });
    SystemFileEffects effects(calls);
    const CleanResult result = test::clean({world.home().file("a"), world.home().file("b")}, Cleaner(effects));
    EXPECT_EQ(result.failures,
              (std::vector<CleanFailure>{{world / "a", SystemError::posix(ENOSPC).localizedDescription}}));
    EXPECT_EQ(result.removedItems, 1);
    EXPECT_EQ(world.notes(), std::vector<std::string>{"b.trashinfo"});
}

TEST(TrashFailures, aMoveThatIsReportedAsFailedAndHappenedIsAMove) {
    const TrashWorld world;
    const URL file = world.home().file("item", "bytes");
    InterceptedCalls calls([&](Call call, int) {
        if (call != Call::rename || !somethingAt(file)) return 0;
        EXPECT_EQ(::rename(file.path().c_str(), world.file("item").path().c_str()), 0);
        return EIO;
    });
    SystemFileEffects effects(calls);
    const CleanResult result = test::clean({file}, Cleaner(effects));
    EXPECT_EQ(result.restorable, (std::vector<TrashedEntry>{{file, world.file("item")}}));
    EXPECT_EQ(world.notedOrigin("item"), file.path());
}

}  // namespace
}  // namespace tavrin
