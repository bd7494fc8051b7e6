// The walker at its bounds, and between it and the kernel: what it asks for, and what it makes of any answer.
#include "Support/OrdinaryUser.h"
#include "Support/TestFolder.h"
#include "TavrinCore/Platform/Linux/DirectoryWalker.h"
#include "WalkSupport.h"

#include <dirent.h>
#include <fcntl.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <filesystem>
#include <map>
#include <random>
#include <string>

namespace tavrin {
namespace {

using namespace test;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::UnorderedElementsAre;

/// So small that every folder of some size is listed in parts, and few stay open.
constexpr WalkLimits kTight{.descriptors = 4, .listingBytes = 1024, .arenaBytes = 2048};

/// Counts, and fails on demand.
class TestCalls final : public WalkCalls {
  public:
    int opens = 0;
    int lists = 0;
    int seeks = 0;
    int closes = 0;
    std::map<std::string, int> statuses;
    int open_ = 0;
    int mostOpen = 0;
    /// How often in a row each call is interrupted before it is let through.
    int interruptions = 0;
    /// Names whose opening fails, and how.
    std::map<std::string, int> openErrors;
    int listError = 0;
    int seekError = 0;
    bool hidesTypes = false;
    std::function<ssize_t(char* buffer, std::size_t size)> inPlaceOfList;
    std::vector<std::string> waiting;
    int looksAtMounts = 0;

    int open(int folder, const char* name, int flags) override {
        if (interrupted()) return -1;
        ++opens;
        EXPECT_NE(flags & O_DIRECTORY, 0);
        EXPECT_NE(flags & O_CLOEXEC, 0);
        if (const auto error = openErrors.find(name); error != openErrors.end()) return fails(error->second);
        const int opened = WalkCalls::open(folder, name, flags);
        if (opened >= 0) mostOpen = std::max(mostOpen, ++open_);
        return opened;
    }
    ssize_t list(int folder, char* buffer, std::size_t size) override {
        if (interrupted()) return -1;
        ++lists;
        if (listError != 0) return fails(listError);
        if (inPlaceOfList) return inPlaceOfList(buffer, size);
        const ssize_t count = WalkCalls::list(folder, buffer, size);
        if (hidesTypes) hideTypes(buffer, count);
        return count;
    }
    off_t seek(int folder, off_t position) override {
        ++seeks;
        if (seekError != 0) return fails(seekError);
        return WalkCalls::seek(folder, position);
    }
    int status(int folder, const char* name, int flags, unsigned fields, struct statx& result) override {
        if (interrupted()) return -1;
        ++statuses[name];
        return WalkCalls::status(folder, name, flags, fields, result);
    }
    int close(int folder) override {
        ++closes;
        --open_;
        return WalkCalls::close(folder);
    }

    std::vector<std::string> waitingMounts(int /*folder*/) override {
        ++looksAtMounts;
        return waiting;
    }

  private:
    bool interrupted() {
        if (interruptedSoFar_ < interruptions) {
            ++interruptedSoFar_;
            errno = EINTR;
            return true;
        }
        interruptedSoFar_ = 0;
        return false;
    }
    static int fails(int error) {
        errno = error;
        return -1;
    }
    static void hideTypes(char* buffer, ssize_t count) {
        for (ssize_t at = 0; at < count;) {
            auto* record = reinterpret_cast<dirent64*>(buffer + at);
            record->d_type = DT_UNKNOWN;
            at += record->d_reclen;
        }
    }

    int interruptedSoFar_ = 0;
};

/// Folders and files at random, the same in every run; some folders large enough for several listings.
void makeForest(const TestFolder& world) {
    constexpr int folderCount = 90;
    std::mt19937 random(20'011'001);  // NOLINT(cert-msc51-cpp): the same in every run
    std::vector<std::string> folders{"r"};
    for (int i = 0; i < folderCount; ++i) {
        // Two of three lie in the one before them, so that the forest is deep as well.
        const std::string& parent = i % 3 != 0 ? folders.back() : folders[random() % folders.size()];
        const URL url = world.folder(parent + "/" + std::to_string(i));
        folders.push_back(parent + "/" + std::to_string(i));
        const int folder = ::open(url.path().c_str(), O_PATH | O_DIRECTORY);
        const unsigned files = i % 20 == 0 ? 50 : static_cast<unsigned>(random() % 4);
        for (unsigned file = 0; file < files; ++file)
            touch(folder, std::string(random() % 100 + 1, 'f') + std::to_string(file));
        ::close(folder);
    }
}
constexpr int kForestFolders = 91;

TEST(DirectoryWalker, aFolderCostsFourCallsAndAFileOneRequestForItsStatus) {
    const TestFolder world;
    for (int folder = 0; folder < 30; ++folder) {
        for (int file = 0; file < 10; ++file)
            world.file("sub/" + std::to_string(folder) + "/" + std::to_string(folder * 10 + file));
    }
    world.link("sub/link", "nowhere");
    TestCalls calls;
    WalkRecorder recorder(world.url());
    recorder.onVisit = [](WalkEntry& entry) {
        // Asking again costs nothing.
        for (int i = 0; i < 2 && entry.type() == FileType::regular; ++i)
            EXPECT_NE(entry.status(), nullptr);
        return WalkStep::goOn;
    };
    EXPECT_TRUE(DirectoryWalker(world.url(), {}, recorder, calls).run());
    constexpr int folders = 32;
    EXPECT_EQ(calls.opens, folders);
    EXPECT_EQ(calls.lists, 2 * folders);
    EXPECT_EQ(calls.closes, folders);
    EXPECT_EQ(calls.seeks, 0);
    EXPECT_EQ(calls.statuses.size(), 300U);
    EXPECT_TRUE(std::ranges::all_of(calls.statuses, [](const auto& asked) { return asked.second == 1; }));
}

TEST(DirectoryWalker, aWalkThatAsksForNoStatusMakesNoRequestForAny) {
    const TestFolder world;
    makeForest(world);
    TestCalls calls;
    WalkRecorder recorder(world.url());
    DirectoryWalker(world.url(), {}, recorder, calls).run();
    EXPECT_THAT(calls.statuses, IsEmpty());
}

TEST(DirectoryWalker, aChainCostsFourCallsAFolderHoweverDeep) {
    const TestFolder world;
    (void)makeChain(world.url(), 300, "d");
    TestCalls calls;
    WalkRecorder recorder(world.url());
    DirectoryWalker(world.url(), {}, recorder, calls).run();
    EXPECT_EQ(recorder.paths.size(), 300U);
    EXPECT_LE(calls.opens + calls.lists + calls.closes + calls.seeks, 4 * 301);
    EXPECT_THAT(calls.statuses, IsEmpty());
    EXPECT_LE(calls.mostOpen, 3);
}

TEST(DirectoryWalker, atItsBoundsAWalkFindsTheSame) {
    const TestFolder world;
    makeForest(world);
    const std::vector<std::string> expected = pathsBelow(world.url());
    for (const WalkLimits& limits :
         {WalkLimits{}, kTight, WalkLimits{.descriptors = 4}, WalkLimits{.listingBytes = 1024, .arenaBytes = 1024},
          WalkLimits{.descriptors = 6, .listingBytes = 1500, .arenaBytes = 10'000}}) {
        TestCalls calls;
        WalkRecorder recorder(world.url());
        recorder.onVisit = [](WalkEntry& entry) {
            EXPECT_NE(entry.status(), nullptr);
            return WalkStep::goOn;
        };
        EXPECT_TRUE(DirectoryWalker(world.url(), {}, recorder, calls, limits).run());
        EXPECT_EQ(recorder.sortedPaths(), expected);
        EXPECT_THAT(recorder.failures, IsEmpty());
        EXPECT_LE(calls.mostOpen, static_cast<int>(limits.descriptors));
        EXPECT_EQ(calls.open_, 0);
    }
}

TEST(DirectoryWalker, withoutTypesInTheListingItFindsTheSameByOneRequestEach) {
    const TestFolder world;
    makeForest(world);
    world.link("link", "r");
    TestCalls calls;
    calls.hidesTypes = true;
    std::size_t links = 0;
    WalkRecorder recorder(world.url());
    recorder.onVisit = [&](WalkEntry& entry) {
        EXPECT_NE(entry.type(), FileType::unknown);
        EXPECT_NE(entry.status(), nullptr);
        if (entry.type() == FileType::symbolicLink) ++links;
        return WalkStep::goOn;
    };
    DirectoryWalker(world.url(), {}, recorder, calls).run();
    std::vector<std::string> expected = pathsBelow(world.url());
    EXPECT_EQ(recorder.sortedPaths(), expected);
    EXPECT_EQ(links, 1U);
    int requests = 0;
    for (const auto& [name, count] : calls.statuses)
        requests += count;
    EXPECT_EQ(requests, static_cast<int>(expected.size()));
}

TEST(DirectoryWalker, interruptedCallsAreMadeAgain) {
    const TestFolder world;
    makeForest(world);
    TestCalls calls;
    calls.interruptions = 2;
    WalkRecorder recorder(world.url());
    recorder.onVisit = [](WalkEntry& entry) {
        EXPECT_NE(entry.status(), nullptr);
        return WalkStep::goOn;
    };
    DirectoryWalker(world.url(), {}, recorder, calls, kTight).run();
    EXPECT_EQ(recorder.sortedPaths(), pathsBelow(world.url()));
    EXPECT_THAT(recorder.failures, IsEmpty());
}

TEST(DirectoryWalker, whatCanNotBeOpenedIsToldUnlessItVanished) {
    const TestFolder world;
    for (const char* name : {"broken", "forbidden", "gone", "file", "loop", "fine"})
        world.file(std::string(name) + "/inside");
    TestCalls calls;
    calls.openErrors = {{"broken", EIO}, {"forbidden", EPERM}, {"gone", ENOENT}, {"file", ENOTDIR}, {"loop", ELOOP}};
    WalkRecorder recorder(world.url());
    EXPECT_TRUE(DirectoryWalker(world.url(), {}, recorder, calls).run());
    EXPECT_THAT(recorder.failures,
                UnorderedElementsAre("broken " + std::to_string(EIO), "forbidden " + std::to_string(EPERM)));
    EXPECT_EQ(std::ranges::count(recorder.paths, "fine/inside"), 1);
    EXPECT_EQ(recorder.paths.size(), 7U);
}

TEST(DirectoryWalker, aListingThatFailsIsToldAndEndsItsFolderOnly) {
    const TestFolder world;
    world.file("a/inside");
    TestCalls calls;
    WalkRecorder recorder(world.url());
    recorder.onVisit = [&](WalkEntry&) {
        calls.listError = EIO;
        return WalkStep::goOn;
    };
    EXPECT_TRUE(DirectoryWalker(world.url(), {}, recorder, calls).run());
    EXPECT_THAT(recorder.paths, ElementsAre("a"));
    EXPECT_THAT(recorder.failures, ElementsAre("a " + std::to_string(EIO)));
}

TEST(DirectoryWalker, aListingThatCanNotGoOnWhereItStoodIsTold) {
    const TestFolder world;
    makeForest(world);
    TestCalls calls;
    calls.seekError = EINVAL;
    WalkRecorder recorder(world.url());
    EXPECT_TRUE(DirectoryWalker(world.url(), {}, recorder, calls, kTight).run());
    EXPECT_FALSE(recorder.failures.empty());
    EXPECT_EQ(calls.open_, 0);
}

TEST(DirectoryWalker, whenDescriptorsRunOutItMakesDoWithFewer) {
    const TestFolder world;
    world.file("a/b/c/d/e/f");
    for (const char* folder : {"a", "a/b", "a/b/c", "a/b/c/d"}) {
        for (int i = 0; i < 3; ++i)
            world.file(std::string(folder) + "/" + std::to_string(i));
    }
    class Scarce final : public WalkCalls {
      public:
        int open(int folder, const char* name, int flags) override {
            if (inUse >= 4) {
                errno = EMFILE;
                return -1;
            }
            const int opened = WalkCalls::open(folder, name, flags);
            if (opened >= 0) ++inUse;
            return opened;
        }
        int close(int folder) override {
            --inUse;
            return WalkCalls::close(folder);
        }
        int inUse = 0;
    };
    Scarce calls;
    WalkRecorder recorder(world.url());
    EXPECT_TRUE(DirectoryWalker(world.url(), {}, recorder, calls).run());
    EXPECT_EQ(recorder.sortedPaths(), pathsBelow(world.url()));
    EXPECT_THAT(recorder.failures, IsEmpty());
}

TEST(DirectoryWalker, aMalformedListingIsAFailureOfItsFolder) {
    const TestFolder world;
    TestCalls calls;
    calls.inPlaceOfList = [](char* buffer, std::size_t) {
        std::memset(buffer, 0, 48);
        return ssize_t{48};
    };
    WalkRecorder recorder(world.url());
    EXPECT_TRUE(DirectoryWalker(world.url(), {}, recorder, calls).run());
    EXPECT_THAT(recorder.paths, IsEmpty());
    EXPECT_THAT(recorder.failures, ElementsAre(" " + std::to_string(EIO)));
}

TEST(DirectoryWalker, aListingOfNothingButDotsComesToAnEnd) {
    const TestFolder world;
    TestCalls calls;
    calls.inPlaceOfList = [](char* buffer, std::size_t) {
        std::memset(buffer, 0, 24);
        auto* record = reinterpret_cast<dirent64*>(buffer);
        record->d_reclen = 24;
        record->d_name[0] = '.';
        return ssize_t{24};
    };
    WalkRecorder recorder(world.url());
    EXPECT_TRUE(DirectoryWalker(world.url(), {}, recorder, calls).run());
    EXPECT_THAT(recorder.paths, IsEmpty());
    EXPECT_THAT(recorder.failures, ElementsAre(" " + std::to_string(EIO)));
}

TEST(DirectoryWalker, aTreeMovedAwayMeanwhileLeadsNowhereElse) {
    const TestFolder world;
    const TestFolder outside;
    outside.file("elsewhere/secret");
    for (const char* folder : {"a", "a/b", "a/b/c", "a/b/c/d", "a/b/c/d/e"}) {
        for (int i = 0; i < 20; ++i)
            world.file(std::string(folder) + "/" + std::to_string(i));
    }
    const std::vector<std::string> below = pathsBelow(world.url());
    TestCalls calls;
    WalkRecorder recorder(world.url());
    bool moved = false;
    recorder.onVisit = [&](WalkEntry& entry) {
        if (entry.depth() == 6 && !moved) {
            moved = true;
            std::filesystem::rename(world.path() + "/a/b/c", outside.path() + "/elsewhere/c");
        }
        return WalkStep::goOn;
    };
    EXPECT_TRUE(DirectoryWalker(world.url(), {}, recorder, calls, kTight).run());
    EXPECT_TRUE(moved);
    EXPECT_TRUE(std::ranges::includes(below, recorder.sortedPaths()));
    // What stayed in its place is walked to the end: "a/b" and "a" by their names from the root.
    for (const char* folder : {"a", "a/b"}) {
        for (int i = 0; i < 20; ++i)
            EXPECT_EQ(std::ranges::count(recorder.paths, std::string(folder) + "/" + std::to_string(i)), 1);
    }
    EXPECT_EQ(calls.open_, 0);
}

/// Removes a tree while it is walked, as the permanent removal does.
class Remover final : public WalkRecorder {
  public:
    using WalkRecorder::WalkRecorder;

    WalkStep visit(WalkEntry& entry) override {
        if (entry.type() == FileType::directory) return WalkStep::goOn;
        EXPECT_EQ(::unlinkat(folderDescriptor(entry), entry.name().data(), 0), 0);
        return WalkStep::goOn;
    }
    LeaveStep left(WalkEntry& folder) override {
        ++foldersLeft;
        if (onLeft) onLeft(folder);
        if (::unlinkat(folderDescriptor(folder), folder.name().data(), AT_REMOVEDIR) == 0) return LeaveStep::goOn;
        ++again;
        return errno == ENOTEMPTY ? LeaveStep::again : LeaveStep::stop;
    }

    int foldersLeft = 0;
    int again = 0;
    std::function<void(WalkEntry&)> onLeft;
};

TEST(DirectoryWalker, aTreeCanBeRemovedWhileItIsWalked) {
    for (const WalkLimits& limits : {WalkLimits{}, kTight}) {
        const TestFolder world;
        makeForest(world);
        Remover remover(world.url());
        EXPECT_TRUE(DirectoryWalker(world.url(), {.wantsLeft = true}, remover, walkCalls(), limits).run());
        EXPECT_THAT(pathsBelow(world.url()), IsEmpty());
        EXPECT_EQ(remover.foldersLeft - remover.again, kForestFolders);
    }
}

TEST(DirectoryWalker, aFolderIsWalkedAgainWhenItsVisitorAsksForIt) {
    const TestFolder world;
    world.folder("a/b");
    Remover remover(world.url());
    bool added = false;
    remover.onLeft = [&](WalkEntry& folder) {
        if (folder.name() != "b" || added) return;
        added = true;
        world.file("a/b/late");
    };
    EXPECT_TRUE(DirectoryWalker(world.url(), {.wantsLeft = true}, remover).run());
    EXPECT_EQ(remover.again, 1);
    EXPECT_THAT(pathsBelow(world.url()), IsEmpty());
}

TEST(DirectoryWalker, aFolderThatCouldNotBeEnteredIsNotLeft) {
    const TestFolder world;
    setMode(world.folder("locked"), 0000);
    world.folder("fine");
    const OrdinaryUser user;
    Remover remover(world.url());
    DirectoryWalker(world.url(), {.wantsLeft = true}, remover).run();
    EXPECT_EQ(remover.foldersLeft, 1);
    EXPECT_THAT(remover.failures, ElementsAre("locked " + std::to_string(EACCES)));
}

TEST(DirectoryWalker, aMountThatMayWaitIsVisitedAndNeitherEnteredNorAskedAnything) {
    const TestFolder world;
    world.file("far/file");
    world.file("near/far/file");
    world.file("near/far more/file");
    world.file("near/fa/r");
    world.file("a far/far/file");
    TestCalls calls;
    calls.waiting = {"far", "near/far"};
    WalkRecorder recorder(world.url());
    (void)DirectoryWalker(world.url(), {}, recorder, calls, kTight).run();
    EXPECT_THAT(recorder.sortedPaths(), ElementsAre("a far", "a far/far", "a far/far/file", "far", "near", "near/fa",
                                                    "near/fa/r", "near/far", "near/far more", "near/far more/file"));
    EXPECT_THAT(recorder.failures, IsEmpty());
    EXPECT_EQ(calls.statuses.count("far"), 0U);
    EXPECT_EQ(calls.looksAtMounts, 1) << "once for a walk";
}

TEST(DirectoryWalker, mountsAreLookedUpOnlyWhereThereIsAFolderToEnter) {
    const TestFolder world;
    world.file("one");
    world.folder("two");
    TestCalls calls;
    WalkRecorder recorder(world.url());
    recorder.onVisit = [](WalkEntry&) { return WalkStep::skip; };
    (void)DirectoryWalker(world.url(), {}, recorder, calls).run();
    EXPECT_EQ(calls.looksAtMounts, 0);
}

}  // namespace
}  // namespace tavrin
