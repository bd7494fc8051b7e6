#include "Support/OrdinaryUser.h"
#include "Support/OwnMounts.h"
#include "Support/TestFolder.h"
#include "TavrinCore/Platform/AtomicFile.h"
#include "TavrinCore/Platform/Linux/AtomicFileCalls.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <filesystem>
#include <functional>
#include <string>
#include <utility>
#include <vector>

namespace tavrin {
namespace {

using test::contentsOf;
using test::TestFolder;
using testing::ElementsAre;
using testing::IsEmpty;

std::vector<std::string> namesIn(const URL& folder) {
    std::vector<std::string> names;
    for (const auto& entry : std::filesystem::directory_iterator(folder.path()))
        names.push_back(entry.path().filename().native());
    std::ranges::sort(names);
    return names;
}

unsigned modeOf(const URL& url) {
    struct stat status {};
    EXPECT_EQ(::lstat(url.path().c_str(), &status), 0);
    return status.st_mode & 07777U;
}

/// The real calls, written down, of which one fails with `error`, the first `times` times.
class FailingCalls : public AtomicFileCalls {
  public:
    FailingCalls() = default;
    FailingCalls(std::string name, int error, int times = 1'000'000)
        : failing_(std::move(name)), error_(error), times_(times) {}

    int openFolder(const char* path) override {
        return call("openFolder", [&] { return AtomicFileCalls::openFolder(path); });
    }
    int createFile(int folder, const char* name, mode_t mode) override {
        return call("createFile", [&] { return AtomicFileCalls::createFile(folder, name, mode); });
    }
    ssize_t write(int file, const char* bytes, std::size_t count) override {
        return call("write", [&] {
            return static_cast<int>(AtomicFileCalls::write(file, bytes, std::min<std::size_t>(count, 5)));
        });
    }
    int sync(int descriptor) override {
        struct stat status {};
        EXPECT_EQ(::fstat(descriptor, &status), 0);
        return call(S_ISDIR(status.st_mode) ? "syncFolder" : "syncFile",
                    [&] { return AtomicFileCalls::sync(descriptor); });
    }
    int close(int descriptor) override {
        const int closed = AtomicFileCalls::close(descriptor);
        return call("close", [&] { return closed; });
    }
    int rename(int folder, const char* from, const char* to) override {
        return call("rename", [&] { return AtomicFileCalls::rename(folder, from, to); });
    }
    int remove(int folder, const char* name) override {
        return call("remove", [&] { return AtomicFileCalls::remove(folder, name); });
    }

    std::vector<std::string> asked;

  protected:
    virtual int call(const std::string& name, const std::function<int()>& real) {
        asked.push_back(name);
        if (name != failing_ || times_ == 0) return real();
        --times_;
        errno = error_;
        return error_ == 0 ? 0 : -1;
    }

  private:
    std::string failing_;
    int error_ = 0;
    int times_ = 0;
};

TEST(AtomicFile, whatIsWrittenStandsAloneAndIsTheUsersOnly) {
    const TestFolder world;
    const URL file = world / "history.json";
    ASSERT_TRUE(writeAtomically(file, "first", 0600));
    EXPECT_EQ(contentsOf(file), "first");
    EXPECT_EQ(modeOf(file), 0600U);
    ASSERT_TRUE(writeAtomically(file, "", 0600));
    EXPECT_EQ(contentsOf(file), "");
    EXPECT_THAT(namesIn(world.url()), ElementsAre("history.json"));
}

TEST(AtomicFile, aReaderOfTheOldFileKeepsIt) {
    const TestFolder world;
    const URL file = world.file("history.json", "old");
    std::filesystem::create_hard_link(file.path(), (world / "held").path());
    ASSERT_TRUE(writeAtomically(file, "new", 0600));
    EXPECT_EQ(contentsOf(world / "held"), "old");
    EXPECT_EQ(contentsOf(file), "new");
}

TEST(AtomicFile, aLinkIsReplacedAndWhatItLedToIsUntouched) {
    const TestFolder world;
    const URL target = world.file("target", "theirs");
    const URL file = world.link("history.json", target.path());
    ASSERT_TRUE(writeAtomically(file, "ours", 0600));
    EXPECT_EQ(contentsOf(file), "ours");
    EXPECT_EQ(contentsOf(target), "theirs");
}

TEST(AtomicFile, theBytesAreOnTheDiskBeforeTheNameIsAndTheNameBeforeItEnds) {
    const TestFolder world;
    FailingCalls calls;
    ASSERT_TRUE(writeAtomically(world / "f", "twelve bytes", 0600, calls));
    EXPECT_THAT(calls.asked, ElementsAre("openFolder", "createFile", "write", "write", "write", "syncFile", "close",
                                         "rename", "syncFolder", "close"));
    EXPECT_EQ(contentsOf(world / "f"), "twelve bytes");
}

TEST(AtomicFile, anyFailureLeavesTheOldFileAndNothingElse) {
    for (const std::string call : {"openFolder", "createFile", "write", "syncFile", "close", "rename"}) {
        for (int error : {ENOSPC, EIO, EACCES, EROFS, EDQUOT}) {
            const TestFolder world;
            const URL file = world.file("history.json", "old");
            FailingCalls calls(call, error);
            const Outcome outcome = writeAtomically(file, "new and longer", 0600, calls);
            ASSERT_FALSE(outcome.ok()) << call;
            EXPECT_TRUE(outcome.error().isPosix(error)) << call << ": " << outcome.error().code;
            EXPECT_EQ(contentsOf(file), "old") << call;
            EXPECT_THAT(namesIn(world.url()), ElementsAre("history.json")) << call;
        }
    }
}

TEST(AtomicFile, aFailureOnTheWayLeavesNothingAfterPartOfItWasWritten) {
    const TestFolder world;
    class FullAfterFive : public AtomicFileCalls {
      public:
        ssize_t write(int file, const char* bytes, std::size_t count) override {
            if (std::exchange(full_, true)) {
                errno = ENOSPC;
                return -1;
            }
            return AtomicFileCalls::write(file, bytes, std::min<std::size_t>(count, 5));
        }

      private:
        bool full_ = false;
    } calls;
    const Outcome outcome = writeAtomically(world / "f", "more than five", 0600, calls);
    ASSERT_FALSE(outcome.ok());
    EXPECT_TRUE(outcome.error().isPosix(ENOSPC));
    EXPECT_THAT(namesIn(world.url()), IsEmpty());
}

TEST(AtomicFile, aDiskThatTakesNothingIsAFailureAndNoEndlessLoop) {
    const TestFolder world;
    FailingCalls calls("write", 0);
    const Outcome outcome = writeAtomically(world / "f", "x", 0600, calls);
    ASSERT_FALSE(outcome.ok());
    EXPECT_TRUE(outcome.error().isPosix(EIO));
    EXPECT_THAT(namesIn(world.url()), IsEmpty());
}

TEST(AtomicFile, anInterruptedCallIsMadeAgain) {
    for (const std::string call : {"openFolder", "createFile", "write", "syncFile", "close", "syncFolder"}) {
        const TestFolder world;
        const URL file = world.file("f", "old");
        FailingCalls calls(call, EINTR, call == "close" ? 1 : 3);
        EXPECT_TRUE(writeAtomically(file, "the new one", 0600, calls)) << call;
        EXPECT_EQ(contentsOf(file), "the new one") << call;
        // The descriptor is gone after the first close, so a second one could hit somebody else's.
        EXPECT_EQ(std::ranges::count(calls.asked, std::string("close")), 2) << call;
        EXPECT_THAT(namesIn(world.url()), ElementsAre("f"));
    }
}

/// Ends the process, as the power does, instead of the call of this number.
class DyingCalls : public FailingCalls {
  public:
    explicit DyingCalls(std::size_t lastCall) : lastCall_(lastCall) {}

  protected:
    int call(const std::string& name, const std::function<int()>& real) override {
        if (asked.size() == lastCall_) ::_exit(0);
        return FailingCalls::call(name, real);
    }

  private:
    std::size_t lastCall_;
};

TEST(AtomicFile, anEndAtAnyMomentLeavesTheOldFileOrTheNewOne) {
    for (std::size_t lastCall = 0; lastCall <= 10; ++lastCall) {
        const TestFolder world;
        const URL file = world.file("f", "old");
        const pid_t child = ::fork();
        ASSERT_GE(child, 0);
        if (child == 0) {
            DyingCalls calls(lastCall);
            (void)writeAtomically(file, "twelve bytes", 0600, calls);
            ::_exit(0);
        }
        ASSERT_EQ(::waitpid(child, nullptr, 0), child);
        EXPECT_EQ(contentsOf(file), lastCall <= 7 ? "old" : "twelve bytes") << lastCall;
        // What it leaves behind is in nobody's way.
        EXPECT_EQ(namesIn(world.url()).size(), lastCall >= 2 && lastCall <= 7 ? 2U : 1U) << lastCall;
        EXPECT_TRUE(writeAtomically(file, "the next", 0600)) << lastCall;
        EXPECT_EQ(contentsOf(file), "the next") << lastCall;
    }
}

TEST(AtomicFile, whenTheFolderCannotBeSyncedTheNewFileStandsAndTheCallerIsTold) {
    const TestFolder world;
    const URL file = world.file("f", "old");
    FailingCalls calls("syncFolder", EIO);
    const Outcome outcome = writeAtomically(file, "new", 0600, calls);
    ASSERT_FALSE(outcome.ok());
    EXPECT_TRUE(outcome.error().isPosix(EIO));
    EXPECT_EQ(contentsOf(file), "new");
    EXPECT_THAT(namesIn(world.url()), ElementsAre("f"));
}

TEST(AtomicFile, aNameThatIsTakenIsNeitherUsedNorRemoved) {
    class TakenName : public AtomicFileCalls {
      public:
        int createFile(int folder, const char* name, mode_t mode) override {
            taken = name;
            const int theirs = AtomicFileCalls::createFile(folder, name, mode);
            EXPECT_EQ(AtomicFileCalls::write(theirs, "theirs", 6), 6);
            AtomicFileCalls::close(theirs);
            return AtomicFileCalls::createFile(folder, name, mode);
        }
        std::string taken;
    } calls;
    const TestFolder world;
    const Outcome outcome = writeAtomically(world / "f", "x", 0600, calls);
    ASSERT_FALSE(outcome.ok());
    EXPECT_TRUE(outcome.error().isPosix(EEXIST));
    EXPECT_THAT(namesIn(world.url()), ElementsAre(calls.taken));
    EXPECT_EQ(contentsOf(world / calls.taken), "theirs");
}

TEST(AtomicFile, theTemporaryNameIsAnotherEachTime) {
    class Names : public AtomicFileCalls {
      public:
        int createFile(int folder, const char* name, mode_t mode) override {
            names.emplace_back(name);
            return AtomicFileCalls::createFile(folder, name, mode);
        }
        std::vector<std::string> names;
    } calls;
    const TestFolder world;
    ASSERT_TRUE(writeAtomically(world / "f", "x", 0600, calls));
    ASSERT_TRUE(writeAtomically(world / "f", "x", 0600, calls));
    EXPECT_NE(calls.names.at(0), calls.names.at(1));
}

TEST(AtomicFile, aNameAsLongAsTheFileSystemAllowsIsWritten) {
    const TestFolder world;
    const std::string name(255, 'n');
    EXPECT_TRUE(writeAtomically(world / name, "x", 0600));
    EXPECT_THAT(namesIn(world.url()), ElementsAre(name));
}

TEST(AtomicFile, aFolderThatForbidsWritingKeepsItsOldFile) {
    const TestFolder world;
    const URL file = world.file("locked/f", "old");
    test::setMode(world / "locked", 0500);
    {
        const test::OrdinaryUser user;
        const Outcome outcome = writeAtomically(file, "new", 0600);
        ASSERT_FALSE(outcome.ok());
        EXPECT_TRUE(outcome.error().isPosix(EACCES));
    }
    test::setMode(world / "locked", 0700);
    EXPECT_EQ(contentsOf(file), "old");
    EXPECT_THAT(namesIn(world / "locked"), ElementsAre("f"));
}

TEST(AtomicFile, aMissingFolderAndOneInTheFilesPlaceAreErrors) {
    const TestFolder world;
    EXPECT_TRUE(writeAtomically(world / "no/f", "x", 0600).error().isPosix(ENOENT));
    world.folder("taken");
    EXPECT_FALSE(writeAtomically(world / "taken", "x", 0600).ok());
    EXPECT_THAT(namesIn(world.url()), ElementsAre("taken"));
}

TEST(AtomicFile, aFullDiskKeepsItsOldFile) {
    const TestFolder world;
    const URL disk = world.folder("disk");
    test::withOwnMounts([&] {
        test::mountTmpfs(disk, 1);
        const URL file = world.file("disk/f", "old");
        const Outcome outcome = writeAtomically(file, std::string(std::size_t{2} << 20U, 'x'), 0600);
        ASSERT_FALSE(outcome.ok());
        EXPECT_TRUE(outcome.error().isPosix(ENOSPC));
        EXPECT_EQ(contentsOf(file), "old");
        EXPECT_THAT(namesIn(disk), ElementsAre("f"));
        EXPECT_TRUE(writeAtomically(file, "the next one fits", 0600));
    });
}

TEST(AtomicFile, aReadOnlyDiskKeepsItsOldFile) {
    const TestFolder world;
    const URL disk = world.folder("disk");
    test::withOwnMounts([&] {
        test::mountTmpfs(disk);
        const URL file = world.file("disk/f", "old");
        test::makeReadOnly(disk);
        EXPECT_TRUE(writeAtomically(file, "new", 0600).error().isPosix(EROFS));
        EXPECT_EQ(contentsOf(file), "old");
    });
}

}  // namespace
}  // namespace tavrin
